#include "QkDlg/QkFlatToggleBtn.h"

#include <cstdlib>

#include "QkCustBtn/SwitchLayout.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"
#include "QkUtil/Resources.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNoFont{"src/QkCustBtn", 1100};

constexpr UINT kTextOff = 62107;
constexpr UINT kTextOn = 62108;

// Geometry
constexpr int kWidthInDialogUnits = 44;
constexpr int kHeightInDialogUnits = 8;
constexpr int kInset = 2;
constexpr int kFrame = 2;
constexpr int kFrameGap = 1;

// Colours
constexpr COLORREF kDisabledTrack = 0xE0E0E0;
constexpr COLORREF kDisabledThumb = 0xA6A6A6;
constexpr COLORREF kDraggedFill = 0xFF8080;
constexpr COLORREF kCheckedFill = 0xC0761B;
constexpr COLORREF kThumb = 0x000000;
constexpr COLORREF kColourBits = 0xFFFFFF;

/// Where the cursor last was over a switch; all switches share it.
int& lastCursorX() {
    static int x = -1;
    return x;
}

SwitchLayout layoutOf(HWND hwnd) {
    return SwitchLayout::of(fromWin32(clientRect(hwnd)), scaled(kInset));
}

/// Dialog units in pixels, also in a parent that is no dialog.
SIZE switchSize(HWND parent) {
    RECT units{0, 0, kWidthInDialogUnits, kHeightInDialogUnits};
    if (MapDialogRect(parent, &units) && !IsRectEmpty(&units))
        return {units.right, units.bottom};
    const LONG base = GetDialogBaseUnits();
    return {MulDiv(kWidthInDialogUnits, LOWORD(base), 4),
            MulDiv(kHeightInDialogUnits, HIWORD(base), 8)};
}

}  // namespace

struct QkFlatToggleBtn::Colours {
    COLORREF background;
    COLORREF frame;
    COLORREF track;
    COLORREF fill;
    COLORREF thumb;
};

QkFlatToggleBtn::QkFlatToggleBtn(UINT id) : QkFlatToggleBase(id) {
    m_clrText = GetUIColor(UICLR_DARK_GREY);
}

QkFlatToggleBtn::~QkFlatToggleBtn() {
    // The standard check box knows nothing of the press, and would keep the mouse for ever.
    if (m_hWnd && m_bMouseDown && GetCapture() == m_hWnd) {
        m_bMouseDown = false;
        ReleaseCapture();
    }
}

// Painting

QkFlatToggleBtn::Colours QkFlatToggleBtn::CurrentColours() const {
    Colours colours{GetParentBkColor(m_hWnd), GetUIColor(UICLR_GREY), GetUIColor(UICLR_GREY),
                    kCheckedFill, kThumb};
    if (IsHighContrast()) {
        const COLORREF window = GetSysColor(COLOR_WINDOW);
        colours = {window, window ^ kColourBits, window, kCheckedFill, window ^ kColourBits};
    }
    if (!IsWindowEnabled(m_hWnd)) {
        colours.fill = colours.track = kDisabledTrack;
        colours.thumb = kDisabledThumb;
    } else if (m_bMouseDown) {
        colours.fill = kDraggedFill;
    }
    return colours;
}

void QkFlatToggleBtn::Paint(HDC hdc) {
    if (!m_hWnd)
        return;
    MoveThumb();
    const Colours colours = CurrentColours();
    const RECT client = clientRect(m_hWnd);
    const Canvas canvas(hdc, m_hWnd, {client.right, client.bottom});
    fillRect(canvas.dc(), client, colours.background);
    PaintSwitch(canvas.dc(), colours);
    PaintCaption(canvas.dc(), toWin32(layoutOf(m_hWnd).caption), colours.background);
    DrawFocus(canvas.dc());
}

void QkFlatToggleBtn::PaintSwitch(HDC dc, const Colours& colours) const {
    RECT inside = frameRect(dc, m_rcTrack, colours.frame, scaled(kFrame));
    const int gap = scaled(kFrameGap);
    InflateRect(&inside, -gap, -gap);
    fillRect(dc, inside, colours.track);
    if (m_rcThumb.left > inside.left)
        fillRect(dc, {inside.left, inside.top, m_rcThumb.left, inside.bottom}, colours.fill);
    fillRect(dc, m_rcThumb, colours.thumb);
}

void QkFlatToggleBtn::PaintCaption(HDC dc, const RECT& area, COLORREF background) {
    const HFONT font = ControlFont();
    if (!font)
        QkLib::reportAssertFailure(kNoFont);
    GiveFont(font);
    useFont(dc, font);
    ::SetTextColor(dc, StateTextColor());
    ::SetBkColor(dc, background);
    const std::wstring text = GetText();
    TextOutW(dc, area.left, area.top, text.c_str(), static_cast<int>(text.size()));
}

void QkFlatToggleBtn::MoveThumb() {
    const SwitchLayout layout = layoutOf(m_hWnd);
    m_rcTrack = toWin32(layout.track);
    if (m_bMouseDown)
        DragThumb();
    else
        m_rcThumb = toWin32(layout.thumbAtRest(IsChecked()));
}

void QkFlatToggleBtn::DragThumb() {
    POINT cursor{};
    GetCursorPos(&cursor);
    MapWindowPoints(HWND_DESKTOP, m_hWnd, &cursor, 1);
    const int dx = m_nDragX == -1 ? 0 : cursor.x - m_nDragX;
    m_nDragX = cursor.x;
    const SwitchLayout layout = layoutOf(m_hWnd);
    const Rect thumb = layout.thumbDragged(fromWin32(m_rcThumb), dx);
    m_rcThumb = toWin32(thumb);
    // A hand that trembles during a click is not dragging.
    m_bDragged = m_bDragged || std::abs(cursor.x - m_nPressX) > GetSystemMetrics(SM_CXDRAG);
    if (m_bDragged)
        m_bPendingCheck = layout.checkedAt(thumb) ? 1 : 0;
}

void QkFlatToggleBtn::CalcFocusRect() {
    const int distance = scaled(kInset);
    m_rcFocus = m_rcTrack;
    InflateRect(&m_rcFocus, distance, distance);
}

// Mouse

void QkFlatToggleBtn::OnLButtonDown(int x, int) {
    MoveThumb();
    m_bMouseDown = true;
    m_bPendingCheck = IsChecked() ? 0 : 1;
    // Dragging counts from the press, so that a fast first move is not lost.
    m_nDragX = m_nPressX = x;
    m_bDragged = false;
    SetCapture(m_hWnd);
}

void QkFlatToggleBtn::OnMouseMove(int x, int) {
    int& lastX = lastCursorX();
    const bool overTrack = x >= m_rcTrack.left && x <= m_rcTrack.right;
    if (x == lastX || (!overTrack && !m_bMouseDown))
        return;
    Refresh();
    lastX = x;
}

void QkFlatToggleBtn::OnLButtonUp(int, int) {
    if (!m_bMouseDown)
        return;
    // The last move may not have been painted yet, and painting decides the side.
    UpdateWindow(m_hWnd);
    EndDrag();
    SendMessageW(m_hWnd, BM_SETCHECK, static_cast<WPARAM>(m_bPendingCheck), 0);
    Refresh();
}

void QkFlatToggleBtn::EndDrag() {
    m_bMouseDown = false;
    m_nDragX = -1;
    if (GetCapture() == m_hWnd)
        ReleaseCapture();
    Refresh();
}

// Messages

/// A click takes the focus, as on a check box. What the host does about the focus it loses
/// elsewhere may take the mouse, the focus or the control away; then there is no press.
bool QkFlatToggleBtn::TakeFocus(HWND hwnd, DWORD_PTR referenceData) {
    if (GetFocus() == hwnd)
        return true;
    const bool held = GetKeyState(VK_LBUTTON) < 0;
    SetFocus(hwnd);
    return livingControl<QkFlatToggleBtn>(hwnd, referenceData) && GetFocus() == hwnd &&
           IsWindowEnabled(hwnd) && (!held || GetKeyState(VK_LBUTTON) < 0);
}

/// A click by message comes from a program, not from the mouse: the standard check box does what
/// it does for the space bar, and tells the host.
LRESULT QkFlatToggleBtn::ClickByMessage(const Message& message, DWORD_PTR referenceData) {
    m_bClickedByMessage = true;
    const LRESULT result = message.passOn();
    if (auto* const toggle = livingControl<QkFlatToggleBtn>(message.hwnd, referenceData))
        toggle->m_bClickedByMessage = false;
    return result;
}

LRESULT CALLBACK QkFlatToggleBtn::ToggleProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                             UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    auto* const toggle = livingControl<QkFlatToggleBtn>(hwnd, referenceData);
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, ToggleProc, subclassId);
        if (toggle)
            toggle->Detach();
        return message.passOn();
    }
    const bool isMouse = id >= WM_MOUSEFIRST && id <= WM_MOUSELAST;
    if (!toggle || (isMouse && toggle->m_bClickedByMessage))
        return message.passOn();

    switch (id) {
        case BM_CLICK: return toggle->ClickByMessage(message, referenceData);
        // The mouse never reaches the standard check box.
        case WM_MOUSEMOVE: toggle->OnMouseMove(message.x(), message.y()); return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            if (TakeFocus(hwnd, referenceData))
                toggle->OnLButtonDown(message.x(), message.y());
            return 0;
        case WM_LBUTTONUP: toggle->OnLButtonUp(message.x(), message.y()); return 0;
        case WM_MOUSELEAVE: return 0;
        case WM_CAPTURECHANGED:
            // Taken away in the middle of a drag: the state stays as it was.
            if (toggle->m_bMouseDown)
                toggle->EndDrag();
            break;
        case WM_PAINT: {
            const PaintDc paint(hwnd);
            toggle->Paint(paint.get());
            return 1;
        }
        // Painting covers all of it.
        case WM_ERASEBKGND: return 1;
        case WM_PRINTCLIENT: toggle->Paint(reinterpret_cast<HDC>(wParam)); return 1;
        case WM_SETFONT: toggle->ForgetGivenFont(); break;
        case BM_SETSTYLE:
        case BM_SETIMAGE:
        case WM_SETTEXT:
        case WM_ENABLE:
        case WM_UPDATEUISTATE:
        case WM_THEMECHANGED: return passOnUnseen(message);
        case BM_SETCHECK: toggle->SetCaption(wParam != 0); return passOnAndRepaint(message);
        case BM_SETSTATE:
        case WM_SETFOCUS:
        case WM_KILLFOCUS: return passOnAndRepaint(message);
        default: break;
    }
    return message.passOn();
}

// Attach

void QkFlatToggleBtn::Attach(HWND hwnd) {
    QkCustomControl::Attach(hwnd);
    // Nothing is left of a drag in the last window. Whether this one holds the mouse is its matter.
    ResetEffects();
    m_nDragX = -1;
    m_bClickedByMessage = false;
    // Where it shows, size and caption are set under this object's procedure: a standard check box
    // would erase and paint itself at once, and ask a host for colours that may delete this object
    // meanwhile. Where it does not, each message on the way would only take longer.
    const bool shows = IsWindowVisible(hwnd) != FALSE;
    if (shows)
        installSubclass(hwnd, ToggleProc, *this);
    ResizeToSwitch();
    if (!livingControl<QkFlatToggleBtn>(hwnd, reinterpret_cast<DWORD_PTR>(this)))
        return;
    Refresh();
    SetCaption(IsChecked());
    if (!shows)
        installSubclass(hwnd, ToggleProc, *this);
}

void QkFlatToggleBtn::ResizeToSwitch() {
    const HWND parent = GetParent(m_hWnd);
    const SIZE size = switchSize(parent);
    const int border = 2 * scaled(kInset);
    const RECT place = windowRectIn(m_hWnd, parent);
    MoveWindow(m_hWnd, place.left, place.top, size.cx + border, size.cy + border, TRUE);
}

void QkFlatToggleBtn::SetCaption(bool checked) {
    SetWindowTextW(m_hWnd, LoadStringResource(checked ? kTextOn : kTextOff).c_str());
}

}  // namespace QkDlg

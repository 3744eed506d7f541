#include "QkDlg/QkFlatEdit.h"

#include <utility>

#include "QkCustCtrl/CachedBrush.h"
#include "QkCustCtrl/EditLayout.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/ParentColours.h"
#include "QkCustCtrl/StaticTextProc.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

/// Window property by which other code recognises frame windows.
constexpr wchar_t kFrameProperty[] = L"QK_EDIT_FRAME";

constexpr UINT kFrameChanged =
    SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED;

/// Clears bits of a window's style or extended style; returns which of them were set.
LONG_PTR takeStyle(HWND hwnd, int index, LONG_PTR bits) {
    const LONG_PTR style = GetWindowLongPtrW(hwnd, index);
    if ((style & bits) != 0)
        SetWindowLongPtrW(hwnd, index, style & ~bits);
    return style & bits;
}

void giveStyle(HWND hwnd, int index, LONG_PTR bits) {
    SetWindowLongPtrW(hwnd, index, GetWindowLongPtrW(hwnd, index) | bits);
}

/// Frames a rectangle with a brush, `times` times inwards.
void frameWith(HDC dc, RECT rect, HBRUSH brush, int times) {
    for (int i = 0; brush && i < times; ++i) {
        FrameRect(dc, &rect, brush);
        InflateRect(&rect, -1, -1);
    }
}

/// Takes the outermost pixels of the client area out of what waits to be painted.
void validateEdges(HWND hwnd) {
    const RECT client = clientRect(hwnd);
    const RECT edges[] = {{0, 0, client.right, 1},
                          {0, client.bottom - 1, client.right, client.bottom},
                          {0, 0, 1, client.bottom},
                          {client.right - 1, 0, client.right, client.bottom}};
    for (const RECT& edge : edges)
        ValidateRect(hwnd, &edge);
}

/// Whether the edit draws a border inside its client area, as those made with WS_BORDER alone do.
bool drawsOwnBorder(HWND hwnd) {
    if ((GetWindowLongPtrW(hwnd, GWL_STYLE) & WS_BORDER) != 0 ||
        (GetWindowLongPtrW(hwnd, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) != 0)
        return false;
    RECT text{};
    SendMessageW(hwnd, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&text));
    const int margin = LOWORD(SendMessageW(hwnd, EM_GETMARGINS, 0, 0));
    return text.left > margin;
}

/// Thickness of the border that these style bits give a window.
int borderThickness(LONG_PTR style, LONG_PTR exStyle) {
    return ((exStyle & WS_EX_CLIENTEDGE) ? GetSystemMetrics(SM_CXEDGE) : 0) +
           ((style & WS_BORDER) ? GetSystemMetrics(SM_CXBORDER) : 0);
}

/// The colour that a brush fills with in that DC.
COLORREF colourOf(HDC hdc, HBRUSH brush) {
    if (brush == GetStockObject(DC_BRUSH))
        return GetDCBrushColor(hdc);
    LOGBRUSH log{};
    return GetObjectW(brush, sizeof log, &log) ? log.lbColor : kNoColor;
}

/// The living edit of `referenceData` whose frame window is `frame`.
QkFlatEdit* editOfFrame(HWND frame, DWORD_PTR referenceData) {
    auto* const edit = dynamic_cast<QkFlatEdit*>(LiveControls::find(referenceData));
    return edit && edit->GetFrameWindow() == frame ? edit : nullptr;
}

}  // namespace

QkFlatEdit::QkFlatEdit(UINT id, std::wstring_view cueText)
    : QkCustomControl(id, nullptr, {}, 0), m_cueText(cueText) {}

QkFlatEdit::~QkFlatEdit() {
    DestroyFrame();
    Release();
}

// Painting

HBRUSH QkFlatEdit::OnCtlColor(HDC hdc, HWND hwnd) {
    if (IsHighContrast())
        return nullptr;
    static CachedBrush brush;
    const COLORREF ground = GetBkColor();
    // The standard edit draws each run of text on a ground of its own.
    ::SetBkColor(hdc, ground);
    ::SetTextColor(hdc, IsWindowEnabled(hwnd) ? GetTextColor() : GetDisabledTextColor());
    return brush.of(ground);
}

void QkFlatEdit::DrawFocus(HDC) {}

void QkFlatEdit::PaintFrame(HDC hdc) {
    const bool readOnly = (GetWindowLongPtrW(m_hWnd, GWL_STYLE) & ES_READONLY) != 0;
    const COLORREF colour = readOnly ? GetParentBkColor(m_hWnd) : GetUIColor(UICLR_LINE);
    const RECT client = clientRect(m_frameWindow);
    const int width = m_frameWidth;
    // This may ask the host, who may end the object.
    PaintFrameInside(hdc);
    frameRect(hdc, client, colour, width);
}

void QkFlatEdit::PaintFrameInside(HDC) {}

HBRUSH QkFlatEdit::GroundBrush(HDC hdc) const {
    const LONG_PTR asStatic = GetWindowLongPtrW(m_hWnd, GWL_STYLE) & (ES_READONLY | WS_DISABLED);
    const UINT question = asStatic ? WM_CTLCOLORSTATIC : WM_CTLCOLOREDIT;
    return reinterpret_cast<HBRUSH>(SendMessageW(GetParent(m_hWnd), question,
                                                 reinterpret_cast<WPARAM>(hdc),
                                                 reinterpret_cast<LPARAM>(m_hWnd)));
}

void QkFlatEdit::OnGround(QkCustomControl& control, HDC hdc, HBRUSH brush) {
    static_cast<QkFlatEdit&>(control).m_ground = {brush, colourOf(hdc, brush)};
}

// The margin stands where the standard edit had its border outside the client area.
void QkFlatEdit::PaintMargin() {
    if (m_margin == 0)
        return;
    const HWND edit = m_hWnd;
    const WholeWindowDc window(edit);
    m_ground = {};
    const HBRUSH brush = GroundBrush(window.get());
    // The host has answered, and may have ended the object.
    if (!IsBound(this, edit))
        return;
    FillMargin(window.get(), brush);
    m_marginGround = m_ground;
}

// Within a paint the edit itself has been told the ground just now. Most of the time that is what
// the margin shows already.
void QkFlatEdit::PaintMarginAsEdit() {
    if (!m_ground.brush) {
        PaintMargin();
        return;
    }
    if (m_margin == 0 || (!m_marginDue && m_ground == m_marginGround))
        return;
    const WholeWindowDc window(m_hWnd);
    SetDCBrushColor(window.get(), m_ground.colour);
    FillMargin(window.get(), m_ground.brush);
    m_marginGround = m_ground;
}

void QkFlatEdit::PrintMargin(HDC hdc) const {
    const HWND edit = m_hWnd;
    const HBRUSH brush = GroundBrush(hdc);
    if (IsBound(this, edit))
        FillMargin(hdc, brush);
}

void QkFlatEdit::FillMargin(HDC hdc, HBRUSH ground) const {
    RECT whole = windowRectIn(m_hWnd, HWND_DESKTOP);
    OffsetRect(&whole, -whole.left, -whole.top);
    frameWith(hdc, whole, ground, m_margin);
}

// Where the standard edit draws a border inside its client area: it does not get to.
void QkFlatEdit::CoverOwnBorder() {
    if (!m_drawsOwnBorder)
        return;
    const HWND edit = m_hWnd;
    const WindowDc window(edit);
    frameWith(window.get(), clientRect(edit), GroundBrush(window.get()), 1);
    validateEdges(edit);
}

void QkFlatEdit::RefreshFrame() {
    if (m_frameWindow)
        InvalidateRect(m_frameWindow, nullptr, TRUE);
}

// Following the edit

void QkFlatEdit::OnMove(int x, int y) {
    if (!m_frameWindow)
        return;
    SetWindowPos(m_frameWindow, nullptr, x - m_frameWidth, y - m_frameWidth, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    RefreshFrame();
    InvalidateRect(m_hWnd, nullptr, TRUE);
}

void QkFlatEdit::Place(HWND helper, const RECT& place) {
    const Rect wanted = fromWin32(place);
    if (!helper || fromWin32(windowRectIn(helper, GetParent(helper))) == wanted)
        return;
    SetWindowPos(helper, nullptr, wanted.left, wanted.top, wanted.width(), wanted.height(),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    InvalidateRect(helper, nullptr, TRUE);
}

// WM_MOVE tells where the client area has moved to, which need not begin at the window's corner.
POINT QkFlatEdit::WindowCorner(POINT moved) const {
    const HWND parent = GetParent(m_hWnd);
    RECT client = clientRect(m_hWnd);
    MapWindowPoints(m_hWnd, parent, reinterpret_cast<POINT*>(&client), 2);
    if (client.left != moved.x || client.top != moved.y)
        return moved;
    const RECT window = windowRectIn(m_hWnd, parent);
    return {window.left, window.top};
}

void QkFlatEdit::FollowEdit() {
    const Rect edit = fromWin32(windowRectIn(m_hWnd, GetParent(m_hWnd)));
    Place(m_frameWindow, toWin32(frameRectAround(edit, m_frameWidth, false)));
}

void QkFlatEdit::ShowFrame(WPARAM show) {
    if (m_frameWindow)
        ShowWindow(m_frameWindow, show != 0 ? SW_SHOW : SW_HIDE);
}

// Messages

LRESULT QkFlatEdit::HandleCommon(const Message& message) {
    switch (message.id) {
        case WM_MOVE: {
            const POINT corner = WindowCorner({message.x(), message.y()});
            OnMove(corner.x, corner.y);
            break;
        }
        case WM_SIZE: FollowEdit(); break;
        case WM_SHOWWINDOW: ShowFrame(message.wParam); break;
        case WM_WINDOWPOSCHANGED: {
            // Hosts that lay out many windows at once show and hide them without WM_SHOWWINDOW.
            const UINT flags = reinterpret_cast<const WINDOWPOS*>(message.lParam)->flags;
            if (flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW))
                ShowFrame((flags & SWP_SHOWWINDOW) ? 1 : 0);
            break;
        }
        case WM_ENABLE:
        case EM_SETREADONLY: {
            const LRESULT result = message.passOn();
            if (IsBound(this, message.hwnd))
                RefreshFrame();
            RedrawWindow(message.hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
            return result;
        }
        case WM_NCCALCSIZE:
            InflateRect(reinterpret_cast<RECT*>(message.lParam), -m_margin, -m_margin);
            break;
        case WM_NCPAINT: {
            // Beside the margin there may be scroll bars.
            const LRESULT result = isAllClient(message.hwnd, m_margin) ? 0 : message.passOn();
            if (!IsBound(this, message.hwnd))
                return result;
            // Within a paint the margin follows.
            if (m_painting)
                m_marginDue = true;
            else
                PaintMargin();
            return result;
        }
        case WM_PRINT: {
            const LRESULT result = message.passOn();
            const bool prints = (message.lParam & PRF_NONCLIENT) != 0 &&
                                ((message.lParam & PRF_CHECKVISIBLE) == 0 ||
                                 IsWindowVisible(message.hwnd) != FALSE);
            if (prints && IsBound(this, message.hwnd))
                PrintMargin(reinterpret_cast<HDC>(message.wParam));
            return result;
        }
        case WM_PAINT: {
            // A DC in wParam is somebody else's picture.
            if (message.wParam != 0)
                break;
            return PassPaintOn(message);
        }
        default: break;
    }
    return message.passOn();
}

LRESULT QkFlatEdit::PassPaintOn(const Message& message) {
    CoverOwnBorder();
    if (!IsBound(this, message.hwnd))
        return message.passOn();
    m_painting = true;
    m_marginDue = false;
    m_ground = {};
    const LRESULT result = message.passOn();
    if (IsBound(this, message.hwnd)) {
        m_painting = false;
        PaintMarginAsEdit();
    }
    return result;
}

LRESULT QkFlatEdit::PassOnLast(const Message& message) {
    // Kept as it has always been: this takes away a label's procedure, not the edit's own. The own
    // one goes with the window, and without a bound object it only passes messages on.
    RemoveWindowSubclass(message.hwnd, staticTextProc, kSubclassId);
    return message.passOn();
}

LRESULT CALLBACK QkFlatEdit::EditProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    auto* const edit = livingControl<QkFlatEdit>(hwnd, referenceData);
    if (id == WM_NCDESTROY) {
        if (edit) {
            edit->Detach();
            edit->DestroyFrame();
        }
        return PassOnLast(message);
    }
    return edit ? edit->HandleCommon(message) : message.passOn();
}

LRESULT CALLBACK QkFlatEdit::FrameProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    QkFlatEdit* const edit = editOfFrame(hwnd, referenceData);
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, FrameProc, subclassId);
        if (edit)
            edit->m_frameWindow = nullptr;
        return message.passOn();
    }
    if (!edit || !edit->m_hWnd)
        return message.passOn();

    switch (id) {
        case WM_PAINT: {
            const PaintDc paint(hwnd);
            edit->PaintFrame(paint.get());
            return 0;
        }
        case WM_PRINTCLIENT: edit->PaintFrame(reinterpret_cast<HDC>(wParam)); return 1;
        // There is nothing to paint but the frame.
        case WM_NCPAINT: return 0;
        case WM_ERASEBKGND: return 1;
        // The standard control would draw at once, over the edit.
        case WM_ENABLE:
        case WM_SETTEXT: return passOnUnseen(message);
        case WM_CLOSE: DestroyWindow(hwnd); break;
        default: break;
    }
    return message.passOn();
}

// Attach

void QkFlatEdit::Prepare(HWND hwnd) {
    m_drawsOwnBorder = drawsOwnBorder(hwnd);
    m_borderExStyle = takeStyle(hwnd, GWL_EXSTYLE, WS_EX_CLIENTEDGE);
    QkCustomControl::Attach(hwnd);
    m_painting = false;
    if (!m_cueText.empty())
        SendMessageW(hwnd, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(m_cueText.c_str()));
    m_frameRect = windowRectIn(hwnd, GetParent(hwnd));
    m_borderStyle = takeStyle(hwnd, GWL_STYLE, WS_BORDER);
    // The room of the border stays free: text that began at the frame would look cramped.
    m_margin = borderThickness(m_borderStyle, m_borderExStyle);
}

bool QkFlatEdit::IsBound(const QkFlatEdit* edit, HWND hwnd) {
    return livingControl<QkFlatEdit>(hwnd, reinterpret_cast<DWORD_PTR>(edit)) != nullptr;
}

void QkFlatEdit::Release() {
    if (!m_hWnd)
        return;
    // Unbound first: what follows is the standard edit's business.
    const HWND edit = m_hWnd;
    Detach();
    giveStyle(edit, GWL_STYLE, m_borderStyle);
    giveStyle(edit, GWL_EXSTYLE, m_borderExStyle);
    SetWindowPos(edit, nullptr, 0, 0, 0, 0, kFrameChanged);
    InvalidateRect(edit, nullptr, TRUE);
}

// As a rule the margin has just the room that the border had, and the client area stays.
bool QkFlatEdit::ClientHasMargin() const {
    RECT window{};
    POINT client{};
    GetWindowRect(m_hWnd, &window);
    ClientToScreen(m_hWnd, &client);
    return client.y - window.top == m_margin;
}

void QkFlatEdit::ShowNewLook() {
    const HWND edit = m_hWnd;
    answerColoursForParent(*this, OnGround);
    if (!ClientHasMargin())
        SetWindowPos(edit, nullptr, 0, 0, 0, 0, kFrameChanged);
    if (IsWindowVisible(edit))
        RedrawWindow(edit, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW);
}

bool QkFlatEdit::StartsShown() const {
    return !m_startHidden && isShown(m_hWnd);
}

HWND QkFlatEdit::CreateHelper(DWORD exStyle, const wchar_t* className, DWORD style,
                              const RECT& place, const wchar_t* property) {
    const Rect rect = fromWin32(place);
    const HWND helper =
        CreateWindowExW(exStyle, className, nullptr, style, rect.left, rect.top, rect.width(),
                        rect.height(), GetParent(m_hWnd), nullptr, GetModuleHandleW(nullptr), this);
    if (!helper)
        return nullptr;
    SetPropW(helper, property, reinterpret_cast<HANDLE>(1));
    return helper;
}

// Where a new window is anyway, unless the host has moved it when it heard of it.
void QkFlatEdit::PutBehind(HWND helper) {
    if (::GetWindow(helper, GW_HWNDNEXT))
        SetWindowPos(helper, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
}

// Switching its drawing on shows a hidden window, without erasing it: a standard control would do
// that in its own look, over the edit.
void QkFlatEdit::ShowHelper(HWND helper) {
    SendMessageW(helper, WM_SETREDRAW, TRUE, 0);
    if (IsWindowVisible(helper))
        InvalidateRect(helper, nullptr, FALSE);
}

// The host hears of a helper's end, and may delete the object meanwhile. A parent or owner that is
// being destroyed takes its helpers along.
void QkFlatEdit::DestroyHelper(HWND helper) {
    if (helper && !isParentGoing(GetParent(helper)))
        DestroyWindow(helper);
}

void QkFlatEdit::CreateFrame(bool withEye) {
    const Rect frame = frameRectAround(fromWin32(m_frameRect), m_frameWidth, withEye);
    // Disabled, it never takes the mouse.
    m_frameWindow =
        CreateHelper(0, WC_STATICW, WS_CHILD | WS_DISABLED, toWin32(frame), kFrameProperty);
    if (!m_frameWindow)
        return;
    PutBehind(m_frameWindow);
    if (StartsShown())
        ShowHelper(m_frameWindow);
    installSubclass(m_frameWindow, FrameProc, *this);
}

void QkFlatEdit::DestroyFrame() {
    DestroyHelper(std::exchange(m_frameWindow, nullptr));
}

void QkFlatEdit::Attach(HWND hwnd) {
    // An object may be bound again while its last window lives.
    DestroyFrame();
    Release();
    Prepare(hwnd);
    CreateFrame(false);
    installSubclass(hwnd, EditProc, *this);
    ShowNewLook();
}

}  // namespace QkDlg

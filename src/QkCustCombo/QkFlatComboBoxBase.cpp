#include "QkDlg/QkFlatComboBoxBase.h"

#include "QkCustCombo/ComboLayout.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkDlg/ColourFade.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Rects.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNoItemOrList{"src/QkCustCombo", 78};

constexpr LONG_PTR kEdges = WS_EX_CLIENTEDGE | WS_EX_DLGMODALFRAME;
constexpr LONG_PTR kComboStyles = CBS_SIMPLE | CBS_DROPDOWN | CBS_DROPDOWNLIST;

Size sizeOf(HWND hwnd) {
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

void drawBorderOn(HDC dc, HWND hwnd) {
    const Size size = sizeOf(hwnd);
    frameRect(dc, {0, 0, size.width, size.height}, GetUIColor(UICLR_LINE));
}

void drawBorder(HWND hwnd) {
    if (hwnd)
        drawBorderOn(WholeWindowDc(hwnd).get(), hwnd);
}

bool isOfStyle(HWND combo, LONG_PTR style) {
    return (GetWindowLongPtrW(combo, GWL_STYLE) & kComboStyles) == style;
}

void addStyle(HWND hwnd, LONG_PTR style) {
    SetWindowLongPtrW(hwnd, GWL_STYLE, GetWindowLongPtrW(hwnd, GWL_STYLE) | style);
}

/// Takes the 3-D edges off a window, which gets `styleInstead` for them.
void stripEdges(HWND hwnd, LONG_PTR styleInstead = 0) {
    const LONG_PTR style = GetWindowLongPtrW(hwnd, GWL_EXSTYLE);
    if ((style & kEdges) == 0)
        return;
    addStyle(hwnd, styleInstead);
    SetWindowLongPtrW(hwnd, GWL_EXSTYLE, style & ~kEdges);
    SetWindowPos(hwnd, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

// The class of every list in the process loses its shadow, and for good: the style belongs to the
// class, and a list with a shadow beside flat ones would look odd anyway.
void removeShadow(HWND list) {
    const ULONG_PTR style = GetClassLongPtrW(list, GCL_STYLE);
    SetClassLongPtrW(list, GCL_STYLE, static_cast<LONG_PTR>(style & ~ULONG_PTR{CS_DROPSHADOW}));
}

/// Fills a window that has no ground of its own with its parent's.
void eraseAsParent(HWND hwnd, HDC dc) {
    const HWND parent = GetParent(hwnd);
    POINT corner{0, 0};
    MapWindowPoints(hwnd, parent, &corner, 1);
    POINT origin{};
    // Window, not viewport coordinates: they need no sign of their own in a mirrored dialog.
    OffsetWindowOrgEx(dc, corner.x, corner.y, &origin);
    SendMessageW(parent, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    SetWindowOrgEx(dc, origin.x, origin.y, nullptr);
}

/// The living combo of a procedure's reference data. The object's own type is asked, since another
/// kind of control may have been made where a deleted combo was.
QkFlatComboBoxBase* livingCombo(DWORD_PTR referenceData) {
    return dynamic_cast<QkFlatComboBoxBase*>(LiveControls::find(referenceData));
}

/// Messages at which the standard combo draws item or button without waiting for WM_PAINT. Hosts
/// are told of most of them and must find a visible window, so the flat look is painted over.
bool drawsAtOnce(UINT message) {
    switch (message) {
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
        case WM_CHAR:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_LBUTTONUP:
        case WM_MOUSEWHEEL:
        case WM_CAPTURECHANGED:
        case WM_CANCELMODE:
        case WM_SETTEXT:
        case WM_SETFONT:
        case WM_UPDATEUISTATE:
        case WM_THEMECHANGED:
        case CB_SETCURSEL:
        case CB_SELECTSTRING:
        case CB_DELETESTRING:
        case CB_RESETCONTENT:
        case CB_SETITEMDATA:
        case CB_SHOWDROPDOWN: return true;
        default: return false;
    }
}

/// Whether the host gave an enabled edit colours of its own, which stand. What it answers for a
/// disabled one is meant for its labels: the edit looks like a static to it.
bool isHostsOwnAnswer(const Message& message, LRESULT answer) {
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    return message.id == WM_CTLCOLOREDIT &&
           (reinterpret_cast<HBRUSH>(answer) != GetSysColorBrush(COLOR_WINDOW) ||
            GetTextColor(dc) != GetSysColor(COLOR_WINDOWTEXT));
}

/// Passes a message on and paints over what the standard combo may have drawn. Edit and list
/// repaint themselves; flickering with the combo would help nobody.
LRESULT passOnAndRepaintFace(const Message& message) {
    const LRESULT result = message.passOn();
    RedrawWindow(message.hwnd, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_NOERASE | RDW_UPDATENOW | RDW_NOCHILDREN);
    return result;
}

}  // namespace

QkFlatComboBoxBase::QkFlatComboBoxBase(UINT id) : QkCustomControl(id, nullptr, {}, 0) {}

QkFlatComboBoxBase::~QkFlatComboBoxBase() {
    // The standard look comes back at once.
    if (m_hWnd)
        InvalidateRect(m_hWnd, nullptr, TRUE);
}

// Painting

void QkFlatComboBoxBase::Paint(HDC hdc) {
    if (!m_hWnd)
        return;
    frameRect(hdc, clientRect(m_hWnd), GetUIColor(UICLR_LINE));
}

void QkFlatComboBoxBase::DrawItemBorder() {
    drawBorder(m_comboInfo.hwndItem);
}

void QkFlatComboBoxBase::DrawListBorder() {
    drawBorder(m_listWindow);
}

void QkFlatComboBoxBase::DrawFocus(HDC) {}

// An edit without an edge has its text where the border would be drawn.
bool QkFlatComboBoxBase::ItemHasBorder() const {
    const RECT client = clientRect(m_comboInfo.hwndItem);
    return IsItsOwnItem() || sizeOf(m_comboInfo.hwndItem) != Size{client.right, client.bottom};
}

/// The edit shows on the combo's ground, enabled or not, in the combo's colours.
HBRUSH QkFlatComboBoxBase::ColourItem(HDC hdc) {
    const COLORREF background = GetBkColor();
    ::SetTextColor(hdc, StateTextColor());
    ::SetBkColor(hdc, background);
    SetDCBrushColor(hdc, background);
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

// Messages

void QkFlatComboBoxBase::OnSize() {
    // The standard combo put an open list back where it was made; one that drops down gets its
    // place from the standard combo each time.
    if (isOfStyle(m_hWnd, CBS_SIMPLE))
        AlignList(m_listOverhang, m_listGap);
}

LRESULT CALLBACK QkFlatComboBoxBase::ComboProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                               UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    const auto living = [hwnd, referenceData]() -> QkFlatComboBoxBase* {
        auto* const found = livingCombo(referenceData);
        return found && found->m_hWnd == hwnd ? found : nullptr;
    };
    auto* const combo = living();
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, ComboProc, subclassId);
        if (combo)
            combo->Detach();
        return message.passOn();
    }
    if (!combo)
        return message.passOn();

    switch (id) {
        case WM_PAINT: {
            // Behind a simple combo the host erases, and may end the object.
            const PaintDc paint(hwnd);
            if (auto* const still = living())
                still->Paint(paint.get());
            return 0;
        }
        case WM_PRINTCLIENT: combo->Paint(reinterpret_cast<HDC>(wParam)); return 1;
        case WM_ERASEBKGND:
            // The others paint all of their window; here the ground shows round edit and list.
            if (!isOfStyle(hwnd, CBS_SIMPLE))
                return 1;
            eraseAsParent(hwnd, reinterpret_cast<HDC>(wParam));
            return 1;
        case WM_NCPAINT:
            if (combo->ItemHasBorder())
                combo->DrawItemBorder();
            return 0;
        case WM_MOUSEMOVE: combo->OnMouseMove(message.x(), message.y()); break;
        case WM_MOUSELEAVE: combo->OnMouseLeave(); break;
        case WM_FADECOLOR: return combo->OnAnimateColor(static_cast<COLORREF>(lParam));
        case WM_SIZE: {
            const LRESULT result = message.passOn();
            if (auto* const still = living())
                still->OnSize();
            return result;
        }
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORSTATIC: {
            const LRESULT hostsBrush = message.passOn();
            auto* const still = living();
            if (!still || reinterpret_cast<HWND>(lParam) != still->GetItemWindow() ||
                isHostsOwnAnswer(message, hostsBrush))
                return hostsBrush;
            return reinterpret_cast<LRESULT>(still->ColourItem(reinterpret_cast<HDC>(wParam)));
        }
        case WM_ENABLE:
            // Under a disabled button there is no mouse any more that could leave it.
            if (!wParam)
                combo->OnMouseLeave();
            return passOnAndRepaintFace(message);
        case WM_COMMAND:
            if (reinterpret_cast<HWND>(lParam) != combo->m_listWindow)
                break;
            return passOnAndRepaintFace(message);
        default: break;
    }
    return drawsAtOnce(id) ? passOnAndRepaintFace(message) : message.passOn();
}

LRESULT CALLBACK QkFlatComboBoxBase::ListProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                              UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    const auto living = [hwnd, referenceData]() -> QkFlatComboBoxBase* {
        auto* const found = livingCombo(referenceData);
        return found && found->m_listWindow == hwnd ? found : nullptr;
    };
    switch (id) {
        case WM_NCPAINT: {
            if (!living())
                break;
            // The scroll bar is the standard list's; the border goes over the standard one.
            message.passOn();
            if (auto* const combo = living())
                combo->DrawListBorder();
            return 0;
        }
        case WM_PRINT: {
            // The list slides open as a picture of itself.
            const LRESULT result = message.passOn();
            if (living() && (lParam & PRF_NONCLIENT) != 0)
                drawBorderOn(reinterpret_cast<HDC>(wParam), hwnd);
            return result;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(hwnd, ListProc, subclassId);
            if (auto* const combo = living())
                combo->m_listWindow = nullptr;
            break;
        default: break;
    }
    return message.passOn();
}

// Attach

COMBOBOXINFO QkFlatComboBoxBase::ComboInfo(HWND combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    if (!info.hwndItem && isOfStyle(combo, CBS_DROPDOWNLIST))
        info.hwndItem = combo;
    return info;
}

void QkFlatComboBoxBase::Attach(HWND hwnd) {
    QkCustomControl::Attach(hwnd);
    m_innerControl.reset();
    m_listWindow = nullptr;
    stripEdges(hwnd);
    m_comboInfo = ComboInfo(hwnd);
    if (!m_comboInfo.hwndItem || !m_comboInfo.hwndList)
        QkLib::reportAssertFailure(kNoItemOrList);
    m_listWindow = m_comboInfo.hwndList;
    m_listProc = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(m_listWindow, GWLP_WNDPROC));
    stripEdges(m_listWindow, WS_BORDER);
    if (!IsItsOwnItem())
        addStyle(hwnd, WS_CLIPCHILDREN);  // the combo must not paint over its edit
    removeShadow(m_listWindow);
    AlignList(m_listOverhang, m_listGap);
    installSubclass(hwnd, ComboProc, *this);
    installSubclass(m_listWindow, ListProc, *this);
}

LRESULT QkFlatComboBoxBase::AskList(UINT message, WPARAM wParam, LPARAM lParam) const {
    return m_listWindow ? CallWindowProcW(m_listProc, m_listWindow, message, wParam, lParam) : 0;
}

void QkFlatComboBoxBase::AlignList(int overhang, int gap) {
    m_listOverhang = overhang;
    m_listGap = gap;
    const HWND parent = GetAncestor(m_listWindow, GA_PARENT);
    const Rect item = fromWin32(windowRectIn(m_comboInfo.hwndItem, parent));
    const Rect list = listUnderItem(item, sizeOf(m_listWindow).height, {overhang, gap});
    MoveWindow(m_listWindow, list.left, list.top, list.width(), list.height(), FALSE);
    if (IsWindowVisible(m_hWnd))
        RedrawWindow(m_hWnd, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

}  // namespace QkDlg

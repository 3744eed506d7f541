#include "QkCustScroll/HolderWindow.h"

#include <utility>

#include "QkCustCtrl/SubclassGlue.h"
#include "QkCustScroll/TargetScroll.h"
#include "QkUtil/Module.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

constexpr wchar_t kClassName[] = L"SCROLLBARHOLDER";
constexpr int kExtraBytes = 8;
// The id of windows that nobody looks up, so that a host's own 0 stays its own.
constexpr int kNoControl = -1;

/// The registered class of the windows, given back when the module goes.
class HolderClass {
public:
    explicit HolderClass(WNDPROC procedure) {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.style = CS_VREDRAW | CS_HREDRAW;
        windowClass.lpfnWndProc = procedure;
        windowClass.cbWndExtra = kExtraBytes;
        windowClass.hInstance = ownModule();
        windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        windowClass.hbrBackground =
            reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_WINDOW + 1));
        windowClass.lpszClassName = kClassName;
        m_atom = RegisterClassExW(&windowClass);
    }
    ~HolderClass() { UnregisterClassW(kClassName, ownModule()); }
    HolderClass(const HolderClass&) = delete;
    HolderClass& operator=(const HolderClass&) = delete;
    HolderClass(HolderClass&&) = delete;
    HolderClass& operator=(HolderClass&&) = delete;

    [[nodiscard]] bool registered() const { return m_atom != 0; }

private:
    ATOM m_atom = 0;
};

bool sameInfo(const SCROLLINFO& a, const SCROLLINFO& b) {
    return a.nMin == b.nMin && a.nMax == b.nMax && a.nPage == b.nPage && a.nPos == b.nPos;
}

void setEnabled(HWND hwnd, bool enabled) {
    if ((IsWindowEnabled(hwnd) != FALSE) != enabled)
        EnableWindow(hwnd, enabled);
}

HWND createChild(HWND parent, const wchar_t* className, DWORD style, void* parameter) {
    return CreateWindowExW(WS_EX_NOPARENTNOTIFY, className, nullptr, WS_CHILD | style, 0, 0, 0, 0,
                           parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kNoControl)),
                           ownModule(), parameter);
}

}  // namespace

HolderWindow::HolderWindow(std::shared_ptr<HolderGroup> group, HolderPart part)
    : m_group(std::move(group)), m_part(part) {}

bool HolderWindow::registerClass() {
    static const HolderClass holderClass(windowProc);
    return holderClass.registered();
}

bool HolderWindow::create(const std::shared_ptr<HolderGroup>& group, HolderPart part) {
    pinOwnModule();
    if (!registerClass())
        return false;
    // The window takes it over when it begins.
    auto object = std::make_unique<HolderWindow>(group, part);
    const HWND hwnd = createChild(GetAncestor(group->target, GA_PARENT), kClassName,
                                  WS_CLIPSIBLINGS | WS_CLIPCHILDREN, &object);
    return hwnd != nullptr;
}

HolderWindow* HolderWindow::of(HWND holder) {
    return holder ? reinterpret_cast<HolderWindow*>(GetWindowLongPtrW(holder, 0)) : nullptr;
}

// Life of the window

void HolderWindow::begin(HWND hwnd) {
    m_hwnd = hwnd;
    m_group->window(m_part) = hwnd;
    // Left and right are the target's, which need not be those of its parent.
    const LONG_PTR mirrored = GetWindowLongPtrW(m_group->target, GWL_EXSTYLE) & WS_EX_LAYOUTRTL;
    const LONG_PTR style = GetWindowLongPtrW(hwnd, GWL_EXSTYLE) & ~LONG_PTR{WS_EX_LAYOUTRTL};
    SetWindowLongPtrW(hwnd, GWL_EXSTYLE, style | mirrored);
}

bool HolderWindow::createBar() {
    if (m_part == HolderPart::Corner)
        return true;
    const DWORD direction = isVertical() ? SBS_VERT : SBS_HORZ;
    const HWND bar = createChild(m_hwnd, WC_SCROLLBARW, WS_VISIBLE | direction, nullptr);
    if (!bar)
        return false;
    m_bar.emplace(0, isVertical()).Attach(bar);
    return SetWindowSubclass(bar, barProc, kSubclassId, 0) != FALSE;
}

void HolderWindow::onSize() const {
    const RECT client = clientRect(m_hwnd);
    if (bar())
        MoveWindow(bar(), 0, 0, client.right, client.bottom, TRUE);
}

// Scrolling

void HolderWindow::synchronise() {
    const HWND flat = bar();
    if (!flat || m_group->scrolling > 0)
        return;
    const LONG_PTR style = GetWindowLongPtrW(m_group->target, GWL_STYLE);
    if ((style & (isVertical() ? WS_VSCROLL : WS_HSCROLL)) == 0)
        return;
    SCROLLINFO info = scrollInfoOf(m_group->target, isVertical());
    if (m_dragging) {
        info.fMask = SIF_RANGE | SIF_PAGE;
        info.nPos = m_copied.nPos;
    }
    if (m_copied.cbSize == 0 || !sameInfo(info, m_copied)) {
        m_copied = info;
        SetScrollInfo(flat, SB_CTL, &info, TRUE);
    }
    const UINT off = arrowsOff(m_group->target, isVertical());
    if (off != m_arrowsOff) {
        m_arrowsOff = off;
        SendMessageW(flat, SBM_ENABLE_ARROWS, off, 0);
    }
    followStyles();
}

void HolderWindow::followStyles() {
    const HWND holder = m_hwnd;
    const LONG_PTR style = GetWindowLongPtrW(holder, GWL_STYLE);
    const LONG_PTR group = GetWindowLongPtrW(m_group->target, GWL_STYLE) & WS_GROUP;
    if ((style & WS_GROUP) != group)
        SetWindowLongPtrW(holder, GWL_STYLE, (style & ~LONG_PTR{WS_GROUP}) | group);
    const bool enabled = IsWindowEnabled(m_group->target) != FALSE;
    setEnabled(holder, enabled);
    // A bar that is disabled ends its press, and the host that is told may end it all.
    if (of(holder) != this)
        return;
    // A drag that is under way is not taken from the user.
    if (bar() && !m_dragging)
        setEnabled(bar(), enabled && canScroll(m_group->target, isVertical(), m_copied));
}

// The target's procedure may destroy the target, and with it this window and object.
void HolderWindow::onScroll(UINT message, WPARAM wParam) {
    const auto group = m_group;
    const HWND hwnd = m_hwnd;
    m_dragging = LOWORD(wParam) == SB_THUMBTRACK;
    ++group->scrolling;
    forwardScroll(group->target, bar(), message, wParam);
    --group->scrolling;
    if (of(hwnd) != this || group->window(m_part) != hwnd)
        return;
    // A drag that left the target where it was has moved the thumb.
    if (LOWORD(wParam) == SB_THUMBPOSITION)
        m_copied.cbSize = 0;
    synchronise();
}

// Messages

LRESULT CALLBACK HolderWindow::windowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto& object = *static_cast<std::unique_ptr<HolderWindow>*>(creation->lpCreateParams);
        object->begin(hwnd);
        SetWindowLongPtrW(hwnd, 0, reinterpret_cast<LONG_PTR>(object.release()));
        return DefWindowProcW(hwnd, message, wParam, lParam);
    }
    HolderWindow* const self = of(hwnd);
    if (!self)
        return DefWindowProcW(hwnd, message, wParam, lParam);

    switch (message) {
        case WM_CREATE: return self->createBar() ? 0 : -1;
        case WM_NCDESTROY:
            self->m_group->window(self->m_part) = nullptr;
            SetWindowLongPtrW(hwnd, 0, 0);
            delete self;
            break;
        case WM_SIZE: self->onSize(); return 0;
        case WM_VSCROLL:
        case WM_HSCROLL: self->onScroll(message, wParam); return 0;
        // Arrow keys of a dialog walk over all windows of a group, this one included.
        case WM_SETFOCUS: SetFocus(self->m_group->target); return 0;
        // The dialog's menu is not this window's.
        case WM_CONTEXTMENU: return 0;
        default: break;
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

// Outside the flat bar's own procedure: the wheel scrolls the target as it does over the rest of
// it.
LRESULT CALLBACK HolderWindow::barProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR) {
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(hwnd, barProc, id);
    if (message != WM_MOUSEWHEEL && message != WM_MOUSEHWHEEL)
        return DefSubclassProc(hwnd, message, wParam, lParam);
    const HolderWindow* const holder = of(GetParent(hwnd));
    return holder ? SendMessageW(holder->m_group->target, message, wParam, lParam) : 0;
}

}  // namespace QkDlg

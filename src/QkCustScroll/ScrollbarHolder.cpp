#include "QkDlg/ScrollbarHolder.h"

#include <algorithm>
#include <set>

#include "QkCustScroll/HolderLayout.h"
#include "QkCustScroll/HolderWindow.h"
#include "QkUtil/Handles.h"
#include "QkUtil/Module.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

constexpr UINT kPlaceOnly = SWP_NOACTIVATE | SWP_NOOWNERZORDER;
constexpr HolderPart kParts[] = {HolderPart::Corner, HolderPart::Horizontal, HolderPart::Vertical};

/// The holders that exist; see LiveControls.
std::set<const ScrollbarHolder*>& liveHolders() {
    static auto& holders = *new std::set<const ScrollbarHolder*>;
    return holders;
}

UINT_PTR subclassIdOf(HWND target) {
    return reinterpret_cast<UINT_PTR>(target);
}

bool hasStyle(HWND hwnd, LONG_PTR style) {
    return (GetWindowLongPtrW(hwnd, GWL_STYLE) & style) != 0;
}

// A window scrolls in answer to messages of its own kind too, those of edits, list boxes and
// whatever begins at WM_USER, list views among them; nothing is repainted when rows are added
// below the last one that shows.
bool mayScroll(UINT message) {
    switch (message) {
        case WM_ERASEBKGND:
        case WM_PAINT:
        case WM_MOUSEWHEEL:
        case WM_MOUSEHWHEEL:
        case WM_KEYDOWN:
        case WM_CHAR:
        case WM_VSCROLL:
        case WM_HSCROLL:
        case WM_TIMER:
        case WM_SETTEXT:
        case WM_SETFONT:
        case WM_PASTE:
        case WM_CUT:
        case WM_CLEAR:
        case WM_UNDO: return true;
        default: break;
    }
    const bool ofEdit = message >= EM_GETSEL && message <= EM_SETLIMITTEXT;
    const bool ofListBox = message >= LB_ADDSTRING && message < LB_MSGMAX;
    return ofEdit || ofListBox || message >= WM_USER;
}

HolderLayout layoutOnScreen(HWND target, Size bars) {
    RECT window{};
    GetWindowRect(target, &window);
    RECT client = clientRect(target);
    MapWindowPoints(target, HWND_DESKTOP, reinterpret_cast<POINT*>(&client), 2);
    const BarStyles styles{hasStyle(target, WS_VSCROLL), hasStyle(target, WS_HSCROLL)};
    return holderLayout(fromWin32(window), fromWin32(client), styles, bars);
}

Rect partOf(const HolderLayout& layout, HolderPart part) {
    switch (part) {
        case HolderPart::Vertical: return layout.vertical;
        case HolderPart::Horizontal: return layout.horizontal;
        default: return layout.corner;
    }
}

void place(HWND holder, const Rect& onScreen, bool show) {
    if (!show || onScreen.width() <= 0 || onScreen.height() <= 0) {
        if (hasStyle(holder, WS_VISIBLE))
            ShowWindow(holder, SW_HIDE);
        return;
    }
    const HWND parent = GetAncestor(holder, GA_PARENT);
    RECT wanted = toWin32(onScreen);
    MapWindowPoints(HWND_DESKTOP, parent, reinterpret_cast<POINT*>(&wanted), 2);
    const RECT now = windowRectIn(holder, parent);
    if (EqualRect(&now, &wanted) && hasStyle(holder, WS_VISIBLE))
        return;
    SetWindowPos(holder, nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
                 wanted.bottom - wanted.top, kPlaceOnly | SWP_NOZORDER | SWP_SHOWWINDOW);
    // At once, before anybody sees what was there.
    RedrawWindow(holder, nullptr, nullptr, RDW_ERASENOW | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

/// Whether another window of the parent lies over the target: a group box or a tab control that
/// comes before it in its dialog. There, a window that leaves its siblings out is not drawn at all.
bool isCovered(const HolderGroup& group) {
    RECT target{};
    GetWindowRect(group.target, &target);
    HWND above = group.target;
    while ((above = GetWindow(above, GW_HWNDPREV)) != nullptr) {
        const bool ours = std::ranges::find(group.windows, above) != group.windows.end();
        const bool covers = (GetWindowLongPtrW(above, GWL_EXSTYLE) & WS_EX_TRANSPARENT) == 0;
        RECT rect{};
        GetWindowRect(above, &rect);
        if (!ours && covers && hasStyle(above, WS_VISIBLE) && IntersectRect(&rect, &rect, &target))
            return true;
    }
    return false;
}

void setClipSiblings(HWND hwnd, bool clip) {
    if (hasStyle(hwnd, WS_CLIPSIBLINGS) == clip)
        return;
    const LONG_PTR style = GetWindowLongPtrW(hwnd, GWL_STYLE) & ~LONG_PTR{WS_CLIPSIBLINGS};
    SetWindowLongPtrW(hwnd, GWL_STYLE, clip ? style | WS_CLIPSIBLINGS : style);
}

/// The window without its bars, as window regions are measured: from the window's upper left
/// corner, in a mirrored window from the upper right one.
UniqueRegion regionWithout(const HolderLayout& bars, const RECT& window, bool mirrored) {
    const int width = window.right - window.left;
    UniqueRegion region(CreateRectRgn(0, 0, width, window.bottom - window.top));
    for (const HolderPart part : kParts) {
        const Rect rect = partOf(bars, part);
        const int left = mirrored ? window.right - rect.right : rect.left - window.left;
        const UniqueRegion bar(CreateRectRgn(left, rect.top - window.top, left + rect.width(),
                                             rect.bottom - window.top));
        CombineRgn(region.get(), region.get(), bar.get(), RGN_DIFF);
    }
    return region;
}

}  // namespace

ScrollbarHolder::ScrollbarHolder(int verticalWidth, int horizontalHeight)
    : m_verticalWidth(verticalWidth), m_horizontalHeight(horizontalHeight) {
    liveHolders().insert(this);
}

ScrollbarHolder::~ScrollbarHolder() {
    liveHolders().erase(this);
    Leave();
}

// Beginning and end

bool ScrollbarHolder::Dresses(HWND target) const {
    return m_group && m_group->target == target;
}

bool ScrollbarHolder::Attach(HWND target) {
    if (m_group || !IsWindow(target) || !hasStyle(target, WS_CHILD) ||
        std::any_of(liveHolders().begin(), liveHolders().end(),
                    [target](const ScrollbarHolder* each) { return each->Dresses(target); }))
        return false;
    pinOwnModule();
    m_group = std::make_shared<HolderGroup>();
    m_group->target = target;
    m_parent = GetAncestor(target, GA_PARENT);
    m_hidden = !hasStyle(target, WS_VISIBLE);
    m_redrawOff = false;
    m_addedClip = !hasStyle(target, WS_CLIPSIBLINGS);
    if (!HolderWindow::create(m_group, HolderPart::Vertical) ||
        !HolderWindow::create(m_group, HolderPart::Horizontal) ||
        !SetWindowSubclass(target, TargetProc, subclassIdOf(target),
                           reinterpret_cast<DWORD_PTR>(this))) {
        Leave();
        return false;
    }
    Update();
    return true;
}

/// Gives the target its own bars back.
void ScrollbarHolder::Leave() {
    if (!m_group)
        return;
    const HWND target = m_group->target;
    CutOut({});
    End();
    if (m_addedClip)
        setClipSiblings(target, false);
    RedrawWindow(target, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
}

void ScrollbarHolder::End() {
    const auto group = std::move(m_group);
    RemoveWindowSubclass(group->target, TargetProc, subclassIdOf(group->target));
    for (const HolderPart part : kParts) {
        if (const HWND holder = group->window(part))
            DestroyWindow(holder);
    }
}

HWND ScrollbarHolder::GetBar(bool vertical) const {
    if (!m_group)
        return nullptr;
    const HWND holder = m_group->window(vertical ? HolderPart::Vertical : HolderPart::Horizontal);
    const HolderWindow* const object = HolderWindow::of(holder);
    return object ? object->bar() : nullptr;
}

// Following the target

void ScrollbarHolder::Update() {
    const auto* const self = this;
    Synchronise();
    // A bar that is disabled ends its press, and the host that is told may end it all.
    if (!liveHolders().contains(self) || !m_group)
        return;
    // Whoever takes the target's drawing away has it follow when the drawing is back.
    const bool drawn = m_hidden || hasStyle(m_group->target, WS_VISIBLE);
    if (drawn)
        LayOut();
}

void ScrollbarHolder::Synchronise() {
    if (m_redrawOff)
        return;
    const auto group = m_group;
    for (const HolderPart part : kParts) {
        if (HolderWindow* const holder = HolderWindow::of(group->window(part)))
            holder->synchronise();
    }
}

void ScrollbarHolder::LayOut() {
    const auto group = m_group;
    const HWND target = group->target;
    // First of all: the target may answer a new style with other bars.
    const bool clip = !m_addedClip || !isCovered(*group);
    setClipSiblings(target, clip);
    const HWND parent = GetAncestor(target, GA_PARENT);
    const bool moved = parent != m_parent;
    m_parent = parent;
    const HolderLayout layout = layoutOnScreen(target, {m_verticalWidth, m_horizontalHeight});
    if (layout.corner.width() > 0 && !group->window(HolderPart::Corner))
        HolderWindow::create(group, HolderPart::Corner);
    CutOut(clip ? HolderLayout{} : layout);

    HWND below = target;
    for (const HolderPart part : kParts) {
        const HWND holder = group->window(part);
        if (!holder)
            continue;
        if (moved)
            SetParent(holder, parent);
        if (const HWND above = GetWindow(below, GW_HWNDPREV); above != holder)
            SetWindowPos(holder, above ? above : HWND_TOP, 0, 0, 0, 0,
                         kPlaceOnly | SWP_NOMOVE | SWP_NOSIZE);
        below = holder;
        setClipSiblings(holder, clip);
        // A bar that is moved or disabled ends its press, and the host that is told may end it all.
        if (HolderWindow* const object = HolderWindow::of(holder))
            object->followStyles();
        if (!liveHolders().contains(this))
            return;
        place(holder, partOf(layout, part), !m_hidden);
    }
}

/// Keeps the bars of a target that does not leave out its siblings from being drawn over the
/// holders.
void ScrollbarHolder::CutOut(const HolderLayout& bars) {
    const HWND target = m_group->target;
    const bool cut = bars != HolderLayout{};
    if (!cut && !m_cut)
        return;
    RECT window{};
    GetWindowRect(target, &window);
    const bool mirrored = (GetWindowLongPtrW(target, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    UniqueRegion wanted = cut ? regionWithout(bars, window, mirrored) : nullptr;
    const UniqueRegion now(CreateRectRgn(0, 0, 0, 0));
    if (cut && m_cut && GetWindowRgn(target, now.get()) != ERROR &&
        EqualRgn(now.get(), wanted.get()))
        return;
    m_cut = cut;
    // The system owns the region from here on.
    SetWindowRgn(target, wanted.release(), FALSE);
}

void ScrollbarHolder::OnPosChanged(const WINDOWPOS& position) {
    constexpr UINT kSamePlace = SWP_NOMOVE | SWP_NOSIZE;
    if ((position.flags & SWP_HIDEWINDOW) != 0)
        m_hidden = true;
    else if ((position.flags & SWP_SHOWWINDOW) != 0)
        m_hidden = false;
    // Bars that come and go while nothing is drawn do so when drawing goes on.
    const bool frameOnly = (position.flags & kSamePlace) == kSamePlace && !m_hidden;
    if (!m_redrawOff || !frameOnly)
        Update();
}

// No standard bar is drawn where a holder stands or is about to stand.
LRESULT ScrollbarHolder::OnNcPaint(WPARAM update) {
    const HWND target = m_group->target;
    // 1 stands for all of it.
    const HRGN given = update > 1 ? reinterpret_cast<HRGN>(update) : nullptr;
    RECT window{};
    GetWindowRect(target, &window);
    UniqueRegion rest(CreateRectRgnIndirect(&window));
    if (given)
        CombineRgn(rest.get(), given, nullptr, RGN_COPY);
    const HolderLayout layout = layoutOnScreen(target, {m_verticalWidth, m_horizontalHeight});
    for (const HolderPart part : kParts) {
        const Rect rect = partOf(layout, part);
        if (!m_group->window(part) && part != HolderPart::Corner)
            continue;
        const UniqueRegion covered(CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom));
        CombineRgn(rest.get(), rest.get(), covered.get(), RGN_DIFF);
    }
    return DefSubclassProc(target, WM_NCPAINT, reinterpret_cast<WPARAM>(rest.get()), 0);
}

void ScrollbarHolder::OnBefore(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SETREDRAW && !wParam)
        m_redrawOff = true;
    // The bars first: what shows a moment too early is the better half of the window.
    if (message != WM_SHOWWINDOW || lParam != 0)
        return;
    m_hidden = !wParam;
    if (!m_hidden || !IsWindowVisible(m_parent))
        LayOut();
}

void ScrollbarHolder::OnAfter(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_WINDOWPOSCHANGED: OnPosChanged(*reinterpret_cast<const WINDOWPOS*>(lParam)); break;
        case WM_SETREDRAW:
            if (!wParam)
                break;
            // This shows a hidden window as well.
            m_redrawOff = false;
            m_hidden = !hasStyle(m_group->target, WS_VISIBLE);
            Update();
            break;
        case WM_STYLECHANGED: {
            const auto& styles = *reinterpret_cast<const STYLESTRUCT*>(lParam);
            if (static_cast<int>(wParam) == GWL_STYLE &&
                ((styles.styleOld ^ styles.styleNew) & WS_VISIBLE) != 0)
                m_hidden = (styles.styleNew & WS_VISIBLE) == 0;
            Update();
            break;
        }
        case WM_SIZE:
        case WM_ENABLE:
        case WM_THEMECHANGED: Update(); break;
        default:
            if (!m_painting && mayScroll(message))
                Synchronise();
            break;
    }
}

LRESULT CALLBACK ScrollbarHolder::TargetProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                             UINT_PTR id, DWORD_PTR reference) {
    auto* const holder = reinterpret_cast<ScrollbarHolder*>(reference);
    const auto lives = [&] { return liveHolders().contains(holder) && holder->Dresses(hwnd); };
    if (!lives()) {
        if (message == WM_NCDESTROY)
            RemoveWindowSubclass(hwnd, TargetProc, id);
        return DefSubclassProc(hwnd, message, wParam, lParam);
    }
    // The second for a host that keeps the first to itself.
    if (message == WM_DESTROY || message == WM_NCDESTROY) {
        holder->End();
        return DefSubclassProc(hwnd, message, wParam, lParam);
    }
    if (message == WM_NCPAINT)
        return holder->OnNcPaint(wParam);
    holder->OnBefore(message, wParam, lParam);
    if (message == WM_PAINT)
        holder->m_painting = true;
    const LRESULT result = DefSubclassProc(hwnd, message, wParam, lParam);
    // Code of the host has run.
    if (lives() && message == WM_PAINT)
        holder->m_painting = false;
    if (lives())
        holder->OnAfter(message, wParam, lParam);
    return result;
}

}  // namespace QkDlg

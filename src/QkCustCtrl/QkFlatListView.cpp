#include "QkDlg/QkFlatListView.h"

#include <utility>

#include "QkCustCtrl/ListViewActions.h"
#include "QkCustCtrl/ListViewPainter.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkDlg/ScrollbarHolder.h"
#include "QkUtil/ClassProcedure.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

constexpr UINT32 kFlatExStyle =
    LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE | LVS_EX_DOUBLEBUFFER | LVS_EX_TRANSPARENTBKGND;
static_assert(kFlatExStyle == 0x410060);

/// The three windows have the list as the id of their procedures: several lists share a parent.
UINT_PTR idOf(HWND list) {
    return reinterpret_cast<UINT_PTR>(list);
}

HIMAGELIST makeRowSpacer() {
    const int edge = ListLengths(screenDpi()).row;
    return ImageList_Create(edge, edge, ILC_COLOR, 0, 1);
}

std::unique_ptr<ScrollbarHolder> makeScrollHolder() {
    return std::make_unique<ScrollbarHolder>(GetSystemMetrics(SM_CXVSCROLL),
                                             GetSystemMetrics(SM_CYHSCROLL));
}

HWND headerOf(HWND list) {
    return reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
}

HIMAGELIST smallImagesOf(HWND list) {
    return reinterpret_cast<HIMAGELIST>(SendMessageW(list, LVM_GETIMAGELIST, LVSIL_SMALL, 0));
}

void setSmallImages(HWND list, HIMAGELIST images) {
    SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
}

UINT32 exStyleOf(HWND list) {
    return static_cast<UINT32>(SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0));
}

void setExStyle(HWND list, UINT32 exStyle) {
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(exStyle));
}

COLORREF groundOf(HWND list) {
    return static_cast<COLORREF>(SendMessageW(list, LVM_GETBKCOLOR, 0, 0));
}

/// A list lays its header out only when its size really changes. It shrinks for that moment: grown,
/// it would leave a line of its frame below itself.
void layOutAgain(HWND list) {
    constexpr UINT flags = SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW;
    const RECT now = windowRectIn(list, HWND_DESKTOP);
    const int width = now.right - now.left;
    const int height = now.bottom - now.top;
    SetWindowPos(list, nullptr, 0, 0, width, height > 0 ? height - 1 : 1, flags);
    SetWindowPos(list, nullptr, 0, 0, width, height, flags);
}

}  // namespace

QkFlatListView::QkFlatListView(UINT id)
    : QkCustomControl(id, nullptr, {}, 0),
      m_painter(std::make_shared<ListViewPainter>()),
      m_rowSpacerImages(makeRowSpacer()),
      m_scrollHolder(makeScrollHolder()) {}

QkFlatListView::~QkFlatListView() {
    if (m_hWnd)
        Release();
}

// Flat mode

bool QkFlatListView::IsReportView() const {
    if (m_knowsViews)
        return SendMessageW(m_hWnd, LVM_GETVIEW, 0, 0) == LV_VIEW_DETAILS;
    return (GetWindowLongPtrW(m_hWnd, GWL_STYLE) & LVS_TYPEMASK) == LVS_REPORT;
}

bool QkFlatListView::HasCheckBoxes() const {
    return (m_savedExStyle & LVS_EX_CHECKBOXES) != 0;
}

PaintedList QkFlatListView::Painted() const {
    return {m_hWnd,
            m_header,
            m_savedSmallImages,
            HasCheckBoxes(),
            m_hotRow,
            m_keyboard && GetFocus() == m_hWnd,
            askClass(m_hWnd, LVM_ISGROUPVIEWENABLED) != 0};
}

/// The control resets state images when its style changes, and some set a ground of their own.
void QkFlatListView::ChangeExStyle(UINT32 exStyle, StateImages& images) {
    m_quiet = true;
    setExStyle(m_hWnd, exStyle);
    if (exStyle == kFlatExStyle)
        images.WriteBackAsCheckBoxes();
    else
        images.WriteBack();
    m_quiet = false;
}

void QkFlatListView::EnterFlatMode() {
    m_savedSmallImages = smallImagesOf(m_hWnd);
    setSmallImages(m_hWnd, m_rowSpacerImages.get());
    setTheme(m_hWnd, nullptr);
    m_savedExStyle = exStyleOf(m_hWnd);
    m_savedGround = groundOf(m_hWnd);
    StateImages images(m_hWnd);
    ChangeExStyle(kFlatExStyle, images);
    m_flatMode = true;
    FollowHeader();
    FollowHeaderDrag(0);
    layOutAgain(m_hWnd);
    RedrawWindow(m_hWnd, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void QkFlatListView::LeaveFlatMode() {
    m_flatMode = false;
    m_hotRow = m_hotHeaderItem = -1;
    setSmallImages(m_hWnd, m_savedSmallImages);
    setTheme(m_hWnd, L"Explorer");
    StateImages images(m_hWnd);
    ChangeExStyle(m_savedExStyle, images);
    // A transparent ground can have taken the place of the list's own.
    if (groundOf(m_hWnd) == CLR_NONE && m_savedGround != CLR_NONE)
        SendMessageW(m_hWnd, LVM_SETBKCOLOR, 0, static_cast<LPARAM>(m_savedGround));
    m_savedSmallImages = nullptr;
    layOutAgain(m_hWnd);
    RedrawWindow(m_hWnd, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void QkFlatListView::FollowView() {
    if (m_ending)
        return;
    FollowHeader();
    const bool report = IsReportView();
    if (report && !m_flatMode)
        EnterFlatMode();
    else if (!report && m_flatMode)
        LeaveFlatMode();
}

/// A list makes its header when it first needs one.
void QkFlatListView::FollowHeader() {
    const HWND header = headerOf(m_hWnd);
    if (!header || header == m_header)
        return;
    if (installSubclass(header, HeaderProc, *this, idOf(m_hWnd)))
        m_header = header;
}

/// Without the list's own style, which flat mode takes away, the header lets its items be dragged
/// by a style of its own.
void QkFlatListView::FollowHeaderDrag(UINT32 savedBefore) {
    constexpr UINT32 drag = LVS_EX_HEADERDRAGDROP;
    if (!m_header || ((savedBefore ^ m_savedExStyle) & drag) == 0)
        return;
    const LONG_PTR style = GetWindowLongPtrW(m_header, GWL_STYLE) & ~LONG_PTR{HDS_DRAGDROP};
    const bool wanted = (m_savedExStyle & drag) != 0;
    SetWindowLongPtrW(m_header, GWL_STYLE, wanted ? style | HDS_DRAGDROP : style);
}

// What the application sets and asks for in flat mode

LRESULT QkFlatListView::SetImages(const Message& message) {
    if (message.wParam == LVSIL_STATE)
        return 0;
    if (message.wParam != LVSIL_SMALL)
        return message.passOn();
    const HIMAGELIST before = m_savedSmallImages;
    m_savedSmallImages = reinterpret_cast<HIMAGELIST>(message.lParam);
    Refresh();
    return reinterpret_cast<LRESULT>(before);
}

LRESULT QkFlatListView::SetSavedExStyle(const Message& message) {
    const UINT32 before = m_savedExStyle;
    m_savedExStyle = requestedExStyle(before, static_cast<UINT32>(message.wParam),
                                      static_cast<UINT32>(message.lParam));
    FollowHeaderDrag(before);
    Refresh();
    return 1;
}

// Attach

void QkFlatListView::Attach(HWND hwnd) {
    if (m_hWnd && m_hWnd != hwnd) {
        Release();
        m_scrollHolder = makeScrollHolder();
    }
    QkCustomControl::Attach(hwnd);
    m_ending = false;
    // Older common controls do not know views; newer ones take the one that they have.
    m_knowsViews = SendMessageW(hwnd, LVM_SETVIEW,
                                static_cast<WPARAM>(SendMessageW(hwnd, LVM_GETVIEW, 0, 0)), 0) == 1;
    installSubclass(hwnd, ListProc, *this, idOf(hwnd));
    m_parent = GetParent(hwnd);
    if (m_parent)
        installSubclass(m_parent, ParentProc, *this, idOf(hwnd));
    m_scrollHolder->Attach(hwnd);
    FollowView();
}

/// The list destroys its image lists as it ends: the application's, not the one that stands in.
void QkFlatListView::OnDestroy() {
    m_ending = true;
    if (std::exchange(m_flatMode, false))
        setSmallImages(m_hWnd, m_savedSmallImages);
}

/// Gives the list back to the application.
void QkFlatListView::Release() {
    const HWND list = m_hWnd;
    // Leaving changes styles, upon which a list in report view would become flat again.
    m_ending = true;
    if (m_flatMode)
        LeaveFlatMode();
    Unbind();
    RemoveWindowSubclass(list, ListProc, idOf(list));
    RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

/// The list is no longer this object's.
void QkFlatListView::Unbind() {
    if (m_parent)
        RemoveWindowSubclass(m_parent, ParentProc, idOf(m_hWnd));
    if (m_header)
        RemoveWindowSubclass(m_header, HeaderProc, idOf(m_hWnd));
    m_parent = m_header = nullptr;
    Detach();
}

}  // namespace QkDlg

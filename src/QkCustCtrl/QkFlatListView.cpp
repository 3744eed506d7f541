#include "QkDlg/QkFlatListView.h"

#include "QkCustCtrl/ListViewActions.h"
#include "QkCustCtrl/ListViewPainter.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkDlg/ScrollbarHolder.h"
#include "QkUtil/Canvas.h"
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

void redrawItem(HWND list, int item) {
    if (item >= 0)
        SendMessageW(list, LVM_REDRAWITEMS, static_cast<WPARAM>(item), item);
}

void redrawFocusedItem(HWND list) {
    redrawItem(list, static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1),
                                                   LVNI_FOCUSED)));
}

void redrawHeaderItem(HWND header, int item) {
    RECT rect{};
    if (item >= 0 && SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(item),
                                  reinterpret_cast<LPARAM>(&rect)) != 0)
        InvalidateRect(header, &rect, FALSE);
}

void awaitLeave(HWND hwnd) {
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof track;
    track.dwFlags = TME_LEAVE;
    track.hwndTrack = hwnd;
    TrackMouseEvent(&track);
}

/// Custom draw of something that is neither the list nor an item, which only newer controls have.
bool isOfGroup(HWND list, const NMLVCUSTOMDRAW& draw) {
    // A list without groups may come from a version whose record ends before the type.
    return SendMessageW(list, LVM_ISGROUPVIEWENABLED, 0, 0) != 0 && draw.dwItemType == LVCDI_GROUP;
}

/// Wine's list paints a mirrored window into a buffer that is not mirrored, and so copies it out
/// the wrong way round.
void mirrorBuffer(HDC dc, HWND list) {
    const bool mirrored = (GetWindowLongPtrW(list, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    if (mirrored && GetLayout(dc) == 0)
        SetLayout(dc, LAYOUT_RTL);
}

/// A header lower than a row gets that height.
LRESULT layOutHeader(const Message& message) {
    const LRESULT result = message.passOn();
    const auto* const layout = reinterpret_cast<const HDLAYOUT*>(message.lParam);
    const int row = ListLengths(screenDpi()).row;
    if (layout && layout->pwpos && layout->prc && layout->pwpos->cy < row) {
        layout->prc->top += row - layout->pwpos->cy;
        layout->pwpos->cy = row;
    }
    return result;
}

/// A list lays its header out only when its size really changes.
void layOutAgain(HWND list) {
    constexpr UINT flags = SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW;
    const RECT now = windowRectIn(list, HWND_DESKTOP);
    const int width = now.right - now.left;
    const int height = now.bottom - now.top;
    SetWindowPos(list, nullptr, 0, 0, width, height + 1, flags);
    SetWindowPos(list, nullptr, 0, 0, width, height, flags);
}

/// The part of a header right of its last column in the order of display.
RECT headerEnd(HWND header) {
    RECT end = clientRect(header);
    const LRESULT count = SendMessageW(header, HDM_GETITEMCOUNT, 0, 0);
    if (count <= 0)
        return end;
    RECT last{};
    const LRESULT index = SendMessageW(header, HDM_ORDERTOINDEX, static_cast<WPARAM>(count - 1), 0);
    SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&last));
    end.left = last.right;
    return end;
}

LRESULT printHeader(const Message& message) {
    message.passOn();
    const RECT end = headerEnd(message.hwnd);
    if (end.left < end.right)
        fillListGround(reinterpret_cast<HDC>(message.wParam), end);
    return 0;
}

LRESULT paintHeader(HWND header) {
    const PaintDc paint(header);
    const RECT client = clientRect(header);
    const Canvas canvas(paint.get(), header, {client.right, client.bottom});
    SendMessageW(header, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.dc()), PRF_CLIENT);
    return 0;
}

LRESULT insertWithBox(const Message& message) {
    if (!message.lParam)
        return message.passOn();
    const LVITEMW item = withUncheckedBox(*reinterpret_cast<const LVITEMW*>(message.lParam));
    return DefSubclassProc(message.hwnd, message.id, message.wParam,
                           reinterpret_cast<LPARAM>(&item));
}

bool isItemChange(UINT code) {
    return code == static_cast<UINT>(LVN_ITEMCHANGING) ||
           code == static_cast<UINT>(LVN_ITEMCHANGED);
}

bool isShown(HWND hwnd) {
    return (GetWindowLongPtrW(hwnd, GWL_STYLE) & WS_VISIBLE) != 0;
}

}  // namespace

QkFlatListView::QkFlatListView(UINT id)
    : QkCustomControl(id, nullptr, {}, 0),
      m_painter(std::make_unique<ListViewPainter>()),
      m_rowSpacerImages(makeRowSpacer()),
      m_scrollHolder(std::make_unique<ScrollbarHolder>(GetSystemMetrics(SM_CXVSCROLL),
                                                       GetSystemMetrics(SM_CYHSCROLL))) {}

QkFlatListView::~QkFlatListView() {
    const HWND list = m_hWnd;
    if (!list)
        return;
    if (m_flatMode)
        LeaveFlatMode();
    Unbind();
    RemoveWindowSubclass(list, ListProc, idOf(list));
    RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
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
    return {m_hWnd, m_header, m_savedSmallImages, HasCheckBoxes(),
            m_keyboard && GetFocus() == m_hWnd};
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
    RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
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
    RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void QkFlatListView::FollowView() {
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

// Mouse and keyboard

void QkFlatListView::UseKeyboard(bool on) {
    if (m_keyboard == on)
        return;
    m_keyboard = on;
    redrawFocusedItem(m_hWnd);
}

void QkFlatListView::UpdateHotRow() {
    const int row = m_flatMode ? hotRowOf(m_hWnd) : -1;
    if (row == m_hotRow)
        return;
    redrawItem(m_hWnd, m_hotRow);
    redrawItem(m_hWnd, row);
    m_hotRow = row;
}

void QkFlatListView::UpdateHotHeaderItem() {
    const int item = m_flatMode ? hotHeaderItemOf(m_header) : -1;
    if (item == m_hotHeaderItem)
        return;
    redrawHeaderItem(m_header, m_hotHeaderItem);
    redrawHeaderItem(m_header, item);
    m_hotHeaderItem = item;
}

// Notifications

LRESULT QkFlatListView::OnCustomDraw(const Message& message) {
    const auto& draw = *reinterpret_cast<const NMLVCUSTOMDRAW*>(message.lParam);
    const bool ofHeader = draw.nmcd.hdr.hwndFrom == m_header;
    if (!ofHeader && isOfGroup(m_hWnd, draw))
        return message.passOn();
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            if (!ofHeader)
                mirrorBuffer(draw.nmcd.hdc, m_hWnd);
            return CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT:
            return ofHeader ? m_painter->PaintHeaderItem(draw.nmcd, m_header)
                            : m_painter->PaintRow(draw, Painted());
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
            return ofHeader ? CDRF_DODEFAULT : m_painter->PaintCell(draw, Painted());
        default: return CDRF_DODEFAULT;
    }
}

LRESULT QkFlatListView::OnHeaderNotify(const Message& message) {
    const UINT code = reinterpret_cast<const NMHDR*>(message.lParam)->code;
    const bool drags = code == static_cast<UINT>(HDN_BEGINDRAG) && m_flatMode &&
                       (m_savedExStyle & LVS_EX_HEADERDRAGDROP) != 0;
    // The list would refuse a drag that its own style does not allow.
    if (code == static_cast<UINT>(NM_CUSTOMDRAW) || drags)
        return SendMessageW(m_parent, message.id, message.wParam, message.lParam);
    return message.passOn();
}

// Messages

/// Everything that follows the window's view or style after they have changed.
LRESULT QkFlatListView::PassOnAndFollow(const Message& message, DWORD_PTR referenceData) {
    const HWND list = message.hwnd;
    const LRESULT result = message.passOn();
    if (auto* const still = livingControl<QkFlatListView>(list, referenceData))
        still->FollowView();
    return result;
}

LRESULT QkFlatListView::PassOnPaint(const Message& message, DWORD_PTR referenceData) {
    if (m_flatMode) {
        UpdateHotRow();
        m_painter->Begin(Painted());
    }
    const LRESULT result = message.passOn();
    if (auto* const still = livingControl<QkFlatListView>(message.hwnd, referenceData))
        still->m_painter->End();
    return result;
}

/// The standard list need not redraw an item for a state image that it does not show.
LRESULT QkFlatListView::PassOnItemState(const Message& message, DWORD_PTR referenceData) {
    const LRESULT result = message.passOn();
    const auto* const item = reinterpret_cast<const LVITEMW*>(message.lParam);
    auto* const still = livingControl<QkFlatListView>(message.hwnd, referenceData);
    if (!still || !still->m_flatMode || !item || (item->stateMask & LVIS_STATEIMAGEMASK) == 0)
        return result;
    const auto index = static_cast<int>(message.wParam);
    if (index < 0)
        still->Refresh();
    redrawItem(message.hwnd, index);
    return result;
}

LRESULT CALLBACK QkFlatListView::ListProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    auto* const list = livingControl<QkFlatListView>(hwnd, referenceData);
    if (!list)
        return message.passOn();

    switch (id) {
        case LVM_SETVIEW:
            if (wParam != LV_VIEW_DETAILS && list->m_flatMode)
                list->LeaveFlatMode();
            return list->PassOnAndFollow(message, referenceData);
        case WM_STYLECHANGED:
        case LVM_INSERTCOLUMNW:
        case LVM_INSERTCOLUMNA:
        case WM_PARENTNOTIFY: return list->PassOnAndFollow(message, referenceData);
        case WM_HSCROLL:
        case WM_VSCROLL:
            if (scrollByThumb(hwnd, id, wParam, lParam))
                return 0;
            break;
        case WM_NOTIFY: return list->OnHeaderNotify(message);
        case WM_PAINT:
        case WM_PRINTCLIENT: return list->PassOnPaint(message, referenceData);
        case WM_DESTROY:
            // The list destroys its image lists: the application's, not the one that stands in.
            if (list->m_flatMode)
                DefSubclassProc(hwnd, LVM_SETIMAGELIST, LVSIL_SMALL,
                                reinterpret_cast<LPARAM>(list->m_savedSmallImages));
            list->m_flatMode = false;
            break;
        case WM_NCDESTROY:
            // The holder's procedure; this one goes with the window and finds no object any more.
            RemoveWindowSubclass(hwnd, ScrollbarHolder::TargetProc, idOf(hwnd));
            list->Unbind();
            break;
        default:
            return list->m_flatMode ? list->OnFlatMessage(message, referenceData)
                                    : message.passOn();
    }
    return message.passOn();
}

/// What a list does differently in report view.
LRESULT QkFlatListView::OnFlatMessage(const Message& message, DWORD_PTR referenceData) {
    switch (message.id) {
        case LVM_SETIMAGELIST: return SetImages(message);
        case LVM_GETIMAGELIST:
            if (message.wParam != LVSIL_SMALL)
                break;
            return reinterpret_cast<LRESULT>(m_savedSmallImages);
        case LVM_SETEXTENDEDLISTVIEWSTYLE: return SetSavedExStyle(message);
        case LVM_GETEXTENDEDLISTVIEWSTYLE: return static_cast<LRESULT>(m_savedExStyle);
        case LVM_INSERTITEMW:
        case LVM_INSERTITEMA: return insertWithBox(message);
        case LVM_SETITEMSTATE: return PassOnItemState(message, referenceData);
        case WM_THEMECHANGED: return 1;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            UseKeyboard(false);
            if (HasCheckBoxes() &&
                pressCheckBox(message.hwnd, {message.x(), message.y()}, message.wParam))
                return 0;
            break;
        case WM_KEYDOWN:
            UseKeyboard(true);
            if (message.wParam == VK_SPACE && HasCheckBoxes())
                toggleMarkedItem(message.hwnd);
            break;
        case WM_MOUSEMOVE:
            awaitLeave(message.hwnd);
            UpdateHotRow();
            break;
        case WM_MOUSELEAVE: UpdateHotRow(); break;
        case WM_SETFOCUS:
        case WM_KILLFOCUS: redrawFocusedItem(message.hwnd); break;
        default: break;
    }
    return message.passOn();
}

LRESULT CALLBACK QkFlatListView::HeaderProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    auto* const list =
        livingControl<QkFlatListView>(reinterpret_cast<HWND>(subclassId), referenceData);
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, HeaderProc, subclassId);
        if (list && list->m_header == hwnd)
            list->m_header = nullptr;
        return message.passOn();
    }
    if (!list || !list->m_flatMode)
        return message.passOn();

    switch (id) {
        case HDM_LAYOUT: return layOutHeader(message);
        case WM_ERASEBKGND: return 1;
        case WM_PAINT: return paintHeader(hwnd);
        case WM_PRINTCLIENT: return printHeader(message);
        case WM_MOUSEMOVE:
            awaitLeave(hwnd);
            list->UpdateHotHeaderItem();
            break;
        case WM_MOUSELEAVE: list->UpdateHotHeaderItem(); break;
        default: break;
    }
    return message.passOn();
}

LRESULT CALLBACK QkFlatListView::ParentProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    const auto window = reinterpret_cast<HWND>(subclassId);
    if (id == WM_NCDESTROY)
        RemoveWindowSubclass(hwnd, ParentProc, subclassId);
    auto* const list = livingControl<QkFlatListView>(window, referenceData);
    if (!list)
        return message.passOn();
    if (id == WM_ERASEBKGND && list->m_flatMode && isShown(window)) {
        message.passOn();
        fillListGround(reinterpret_cast<HDC>(wParam), windowRectIn(window, hwnd));
        return 1;
    }
    if (id != WM_NOTIFY)
        return message.passOn();

    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    const bool ofList = header.hwndFrom == window;
    if (header.code == static_cast<UINT>(NM_CUSTOMDRAW) && list->m_flatMode &&
        (ofList || (list->m_header && header.hwndFrom == list->m_header)))
        return list->OnCustomDraw(message);
    if (ofList && list->m_quiet && isItemChange(header.code))
        return FALSE;
    return message.passOn();
}

// Attach

void QkFlatListView::Attach(HWND hwnd) {
    QkCustomControl::Attach(hwnd);
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

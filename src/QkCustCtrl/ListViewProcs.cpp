#include <optional>
#include <utility>

#include "QkCustCtrl/ListViewActions.h"
#include "QkCustCtrl/ListViewPainter.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkDlg/QkFlatListView.h"
#include "QkDlg/ScrollbarHolder.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/ClassProcedure.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/MouseTracking.h"
#include "QkUtil/Rects.h"

// The messages of a flat list's windows: the list itself, its header, its parent, and the edit of a
// label. What flat mode is stands in QkFlatListView.cpp.

namespace QkDlg {

namespace {

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

/// Custom draw of something that is neither the list nor an item, which only newer controls have.
bool isOfGroup(const PaintedList& painted, const NMLVCUSTOMDRAW& draw) {
    // A list without groups may come from a version whose record ends before the type.
    return painted.grouped && draw.dwItemType == LVCDI_GROUP;
}

bool isMirrored(HWND list) {
    return (GetWindowLongPtrW(list, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
}

/// Wine's list paints a mirrored window into a buffer that is not mirrored, and so copies it out
/// the wrong way round.
void mirrorBuffer(HDC dc, HWND list) {
    if (isMirrored(list) && GetLayout(dc) == 0)
        SetLayout(dc, LAYOUT_RTL);
}

/// Wine's list redraws a row that changes without the margin at its left end.
void redrawRowMargins(HWND list) {
    const UniqueRegion update(CreateRectRgn(0, 0, 0, 0));
    const int kind = GetUpdateRgn(list, update.get(), FALSE);
    RECT box{};
    GetRgnBox(update.get(), &box);
    // What scrolling brings in begins at the edge.
    if (kind <= NULLREGION || (kind == SIMPLEREGION && box.left <= 0))
        return;
    OffsetRgn(update.get(), -ListLengths(screenDpi()).inset, 0);
    InvalidateRgn(list, update.get(), FALSE);
    if (!isMirrored(list))
        return;
    // Of a mirrored buffer it copies whole rows only to where they belong.
    RECT rows{};
    GetUpdateRect(list, &rows, FALSE);
    const RECT client = clientRect(list);
    rows.left = client.left;
    rows.right = client.right;
    InvalidateRect(list, &rows, FALSE);
}

/// The ground before any row, as not every version of the control leaves it to the parent, and a
/// colour that the list was created with knows nothing of high contrast.
void beginList(HDC dc, HWND list) {
    mirrorBuffer(dc, list);
    fillListGround(dc, clientRect(list));
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

/// The part of a header right of its last column in the order of display.
RECT headerEnd(HWND header) {
    RECT end = clientRect(header);
    const LRESULT count = askClass(header, HDM_GETITEMCOUNT);
    if (count <= 0)
        return end;
    RECT last{};
    const LRESULT index = askClass(header, HDM_ORDERTOINDEX, static_cast<WPARAM>(count - 1));
    askClass(header, HDM_GETITEMRECT, static_cast<WPARAM>(index), &last);
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
    const SavedDc saved(canvas.dc());
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

/// Takes a list off the screen's updates while this lives, without asking its own procedure, which
/// may keep WM_SETREDRAW to itself. In the end all of it shows at once.
class Unseen {
public:
    explicit Unseen(HWND list) : m_list(isShown(list) ? list : nullptr) {
        if (m_list)
            DefWindowProcW(m_list, WM_SETREDRAW, FALSE, 0);
    }
    ~Unseen() {
        if (!m_list)
            return;
        DefWindowProcW(m_list, WM_SETREDRAW, TRUE, 0);
        // The flat bars come to where the list's now are.
        SetWindowPos(m_list, nullptr, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW |
                         SWP_FRAMECHANGED);
        RedrawWindow(m_list, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;
    Unseen(Unseen&&) = delete;
    Unseen& operator=(Unseen&&) = delete;

private:
    HWND m_list;  ///< null for a list that was hidden anyway
};

}  // namespace

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
    if (draw.nmcd.hdr.hwndFrom == m_header)
        return OnHeaderDraw(draw.nmcd);
    // The host answers for texts meanwhile, and may delete the object.
    const auto painter = m_painter;
    const bool running = painter->Current() != nullptr;
    const PaintedList painted = running ? *painter->Current() : Painted();
    if (isOfGroup(painted, draw))
        return message.passOn();
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT: beginList(draw.nmcd.hdc, m_hWnd); return CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT:
            return running ? painter->PaintWholeRow(draw.nmcd) : painter->PaintRow(draw, painted);
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM: return painter->PaintCell(draw, painted);
        default: return CDRF_DODEFAULT;
    }
}

LRESULT QkFlatListView::OnHeaderDraw(const NMCUSTOMDRAW& draw) const {
    switch (draw.dwDrawStage) {
        case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT: return m_painter->PaintHeaderItem(draw, m_header);
        default: return CDRF_DODEFAULT;
    }
}

void QkFlatListView::OnLabelEdit(int row) {
    const auto editor = reinterpret_cast<HWND>(SendMessageW(m_hWnd, LVM_GETEDITCONTROL, 0, 0));
    m_editedRow = row;
    if (editor && m_flatMode)
        installSubclass(editor, EditProc, *this, reinterpret_cast<UINT_PTR>(m_hWnd));
}

LRESULT QkFlatListView::OnHeaderNotify(const Message& message) {
    const auto& header = *reinterpret_cast<const NMHEADERW*>(message.lParam);
    const UINT code = header.hdr.code;
    if (m_flatMode && (code == static_cast<UINT>(HDN_DIVIDERDBLCLICKW) ||
                       code == static_cast<UINT>(HDN_DIVIDERDBLCLICKA)))
        return PassOnAndWiden(message, header.iItem, false);
    const bool drags = code == static_cast<UINT>(HDN_BEGINDRAG) && m_flatMode &&
                       (m_savedExStyle & LVS_EX_HEADERDRAGDROP) != 0;
    // The list would refuse a drag that its own style does not allow.
    if (code == static_cast<UINT>(NM_CUSTOMDRAW) || drags)
        return SendMessageW(m_parent, message.id, message.wParam, message.lParam);
    return message.passOn();
}

/// The standard list fits a column to texts in its own font, and without the room beside them.
LRESULT QkFlatListView::PassOnAndWiden(const Message& message, int column, bool withHeader) {
    const HWND list = message.hwnd;
    const LRESULT result = message.passOn();
    auto* const still = livingControl<QkFlatListView>(list, reinterpret_cast<DWORD_PTR>(this));
    if (!still || !still->m_header)
        return result;
    const int wanted = widthToFit(still->Painted(), still->m_painter->Font(), column, withHeader);
    const auto index = static_cast<WPARAM>(column);
    if (wanted > SendMessageW(list, LVM_GETCOLUMNWIDTH, index, 0))
        SendMessageW(list, LVM_SETCOLUMNWIDTH, index, MAKELPARAM(wanted, 0));
    return result;
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

/// On its way to another view the list moves rows, header and bars several times and erases each
/// time what it shows.
LRESULT QkFlatListView::ChangeView(const Message& message, DWORD_PTR referenceData) {
    const auto view = static_cast<WPARAM>(SendMessageW(message.hwnd, LVM_GETVIEW, 0, 0));
    std::optional<Unseen> unseen;
    if (view != message.wParam)
        unseen.emplace(message.hwnd);
    if (message.wParam != LV_VIEW_DETAILS && m_flatMode)
        LeaveFlatMode();
    return PassOnAndFollow(message, referenceData);
}

LRESULT QkFlatListView::PassOnPaint(const Message& message, DWORD_PTR referenceData) {
    if (!m_flatMode)
        return message.passOn();
    UpdateHotRow();
    redrawRowMargins(m_hWnd);
    auto outer = m_painter->Begin(Painted());
    const LRESULT result = message.passOn();
    if (auto* const still = livingControl<QkFlatListView>(message.hwnd, referenceData))
        still->m_painter->End(std::move(outer));
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
                                          UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    auto* const list = livingControl<QkFlatListView>(hwnd, referenceData);
    if (!list)
        return message.passOn();

    switch (id) {
        case LVM_SETVIEW: return list->ChangeView(message, referenceData);
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
        case WM_DESTROY: list->OnDestroy(); break;
        case WM_NCDESTROY:
            // Again, for a host that keeps the first message to itself.
            list->OnDestroy();
            // The holder's procedure; this one goes with the window and finds no object any more.
            RemoveWindowSubclass(hwnd, ScrollbarHolder::TargetProc, subclassId);
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
        case LVM_SETCOLUMNWIDTH: {
            const auto width = static_cast<short>(LOWORD(message.lParam));
            if (width != LVSCW_AUTOSIZE && width != LVSCW_AUTOSIZE_USEHEADER)
                break;
            return PassOnAndWiden(message, static_cast<int>(message.wParam),
                                  width == LVSCW_AUTOSIZE_USEHEADER);
        }
        // Painting fills in the ground, off the screen.
        case WM_ERASEBKGND:
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
            trackMouseLeave(message.hwnd);
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
            trackMouseLeave(hwnd);
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
    const LRESULT result = message.passOn();
    if (ofList && header.code == LVN_GETDISPINFOW) {
        if (auto* const still = livingControl<QkFlatListView>(window, referenceData))
            still->m_painter->Hear(reinterpret_cast<const NMLVDISPINFOW*>(lParam)->item);
    }
    const bool edits = header.code == LVN_BEGINLABELEDITW || header.code == LVN_BEGINLABELEDITA;
    if (ofList && edits && result == 0) {
        if (auto* const still = livingControl<QkFlatListView>(window, referenceData))
            still->OnLabelEdit(reinterpret_cast<const NMLVDISPINFOW*>(lParam)->item.iItem);
    }
    return result;
}

/// The list places the edit of a label where it would write the label itself.
LRESULT CALLBACK QkFlatListView::EditProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    if (id == WM_NCDESTROY)
        RemoveWindowSubclass(hwnd, EditProc, subclassId);
    const LRESULT result = message.passOn();
    auto* const list =
        livingControl<QkFlatListView>(reinterpret_cast<HWND>(subclassId), referenceData);
    if (id != WM_WINDOWPOSCHANGING || !list || !list->m_flatMode)
        return result;
    const RECT area = labelArea(list->Painted(), list->m_editedRow);
    auto& place = *reinterpret_cast<WINDOWPOS*>(lParam);
    if (area.right > area.left && (place.flags & (SWP_NOMOVE | SWP_NOSIZE)) == 0) {
        place.x = area.left;
        place.y = area.top;
        place.cx = area.right - area.left;
        place.cy = area.bottom - area.top;
    }
    return result;
}

}  // namespace QkDlg

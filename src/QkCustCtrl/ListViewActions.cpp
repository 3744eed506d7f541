#include "QkCustCtrl/ListViewActions.h"

#include "QkCustCtrl/ListViewLayout.h"
#include "QkCustScroll/TargetScroll.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

constexpr UINT kUnchecked = INDEXTOSTATEIMAGEMASK(1);
constexpr UINT kChecked = INDEXTOSTATEIMAGEMASK(2);

UINT stateImageOf(HWND list, WPARAM item) {
    return static_cast<UINT>(SendMessageW(list, LVM_GETITEMSTATE, item, LVIS_STATEIMAGEMASK));
}

void setItemState(HWND list, WPARAM index, UINT state, UINT mask) {
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    SendMessageW(list, LVM_SETITEMSTATE, index, reinterpret_cast<LPARAM>(&item));
}

void setStateImage(HWND list, WPARAM item, UINT image) {
    if (stateImageOf(list, item) != image)
        setItemState(list, item, image, LVIS_STATEIMAGEMASK);
}

/// The item whose check box is at a point, or -1.
int itemOfCheckBoxAt(HWND list, POINT point) {
    LVHITTESTINFO hit{};
    hit.pt = point;
    SendMessageW(list, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if ((hit.flags & LVHT_ONITEM) == 0 || hit.iItem < 0)
        return -1;
    RECT bounds{};
    bounds.left = LVIR_BOUNDS;
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(hit.iItem),
                 reinterpret_cast<LPARAM>(&bounds));
    const RECT box = toWin32(checkBoxOf(fromWin32(bounds), ListLengths(screenDpi())));
    return PtInRect(&box, point) ? hit.iItem : -1;
}

/// The standard list tells its parent of a click on a check box before the box changes.
void tellOfClick(HWND list, int item, POINT point, WPARAM keys) {
    NMITEMACTIVATE click{};
    click.hdr.hwndFrom = list;
    click.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(list));
    click.hdr.code = static_cast<UINT>(NM_CLICK);
    click.iItem = item;
    click.ptAction = point;
    if ((keys & MK_CONTROL) != 0)
        click.uKeyFlags |= LVKF_CONTROL;
    if ((keys & MK_SHIFT) != 0)
        click.uKeyFlags |= LVKF_SHIFT;
    SendMessageW(GetParent(list), WM_NOTIFY, click.hdr.idFrom, reinterpret_cast<LPARAM>(&click));
}

}  // namespace

StateImages::StateImages(HWND list) : m_list(list) {
    if ((GetWindowLongPtrW(list, GWL_STYLE) & LVS_OWNERDATA) != 0)
        return;
    const auto count = static_cast<std::size_t>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    m_images.reserve(count);
    for (std::size_t item = 0; item < count; ++item)
        m_images.push_back(stateImageOf(list, item));
}

void StateImages::WriteBack() const {
    for (std::size_t item = 0; item < m_images.size(); ++item)
        setStateImage(m_list, item, m_images[item]);
}

void StateImages::WriteBackAsCheckBoxes() {
    for (UINT& image : m_images) {
        if (image != kUnchecked && image != kChecked)
            image = kUnchecked;
    }
    WriteBack();
}

LVITEMW withUncheckedBox(const LVITEMW& item) {
    LVITEMW copy{};
    copy.mask = item.mask | LVIF_STATE;
    copy.iItem = item.iItem;
    copy.iSubItem = item.iSubItem;
    if ((item.mask & LVIF_STATE) != 0) {
        copy.state = item.state & ~UINT{LVIS_STATEIMAGEMASK};
        copy.stateMask = item.stateMask;
    }
    copy.state |= kUnchecked;
    copy.stateMask |= LVIS_STATEIMAGEMASK;
    if ((item.mask & LVIF_TEXT) != 0)
        copy.pszText = item.pszText;
    if ((item.mask & LVIF_IMAGE) != 0)
        copy.iImage = item.iImage;
    if ((item.mask & LVIF_PARAM) != 0)
        copy.lParam = item.lParam;
    if ((item.mask & LVIF_INDENT) != 0)
        copy.iIndent = item.iIndent;
    if ((item.mask & LVIF_GROUPID) != 0)
        copy.iGroupId = item.iGroupId;
    if ((item.mask & LVIF_COLUMNS) != 0) {
        copy.cColumns = item.cColumns;
        copy.puColumns = item.puColumns;
    }
    if ((item.mask & LVIF_COLFMT) != 0)
        copy.piColFmt = item.piColFmt;
    return copy;
}

bool pressCheckBox(HWND list, POINT point, WPARAM keys) {
    constexpr UINT marks = LVIS_SELECTED | LVIS_FOCUSED;
    const int item = itemOfCheckBoxAt(list, point);
    if (item < 0)
        return false;
    const auto index = static_cast<WPARAM>(item);
    SetFocus(list);
    tellOfClick(list, item, point, keys);
    const bool check = stateImageOf(list, index) != kChecked;
    setItemState(list, index, check ? kChecked : kUnchecked, LVIS_STATEIMAGEMASK);
    setItemState(list, index, check ? marks : UINT{LVIS_FOCUSED}, marks);
    // So that the space bar, which goes by the mark, acts on the same item next.
    SendMessageW(list, LVM_SETSELECTIONMARK, 0, item);
    return true;
}

void toggleMarkedItem(HWND list) {
    const LRESULT mark = SendMessageW(list, LVM_GETSELECTIONMARK, 0, 0);
    if (mark < 0)
        return;
    const auto item = static_cast<WPARAM>(mark);
    const bool unchecked = stateImageOf(list, item) == kUnchecked;
    setItemState(list, item, unchecked ? kChecked : kUnchecked, LVIS_STATEIMAGEMASK);
}

bool scrollByThumb(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
    const int request = LOWORD(wParam);
    const auto bar = reinterpret_cast<HWND>(lParam);
    if (!bar || (request != SB_THUMBPOSITION && request != SB_THUMBTRACK))
        return false;
    scrollListTo(list, message == WM_VSCROLL, trackPositionOf(bar));
    return true;
}

void setTheme(HWND hwnd, const wchar_t* name) {
    using SetTheme = HRESULT(WINAPI*)(HWND, const wchar_t*, const wchar_t*);
    // By name, as old systems have no themes. Loaded once and for good: windows keep using it.
    static const HMODULE themes = LoadLibraryW(L"uxtheme.dll");
    if (!themes)
        return;
    const auto address = reinterpret_cast<void*>(GetProcAddress(themes, "SetWindowTheme"));
    if (address)
        reinterpret_cast<SetTheme>(address)(hwnd, name, nullptr);
}

}  // namespace QkDlg

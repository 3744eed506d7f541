#include "QkDlg/QkFlatComboBoxDropdownList.h"

#include "QkCustCombo/ComboLayout.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

constexpr LONG_PTR kOwnerDrawn = CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE;

bool isOwnerDrawn(HWND combo) {
    return (GetWindowLongPtrW(combo, GWL_STYLE) & kOwnerDrawn) != 0;
}

Size extentOf(HDC dc, std::wstring_view text) {
    SIZE extent{};
    GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &extent);
    return {extent.cx, extent.cy};
}

/// What is written on COLOR_HIGHLIGHT: white, in high contrast the system's own match.
COLORREF highlightText() {
    return IsHighContrast() ? GetSysColor(COLOR_HIGHLIGHTTEXT) : GetUIColor(UICLR_WHITE);
}

}  // namespace

QkFlatComboBoxDropdownList::QkFlatComboBoxDropdownList(UINT id) : QkFlatComboBoxDropdownBase(id) {}

QkFlatComboBoxDropdownList::~QkFlatComboBoxDropdownList() = default;

// Painting

void QkFlatComboBoxDropdownList::Paint(HDC hdc) {
    if (!m_hWnd)
        return;
    const RECT client = clientRect(m_hWnd);
    const Canvas canvas(hdc, m_hWnd, {client.right, client.bottom});
    PaintFace(canvas.dc());
    const RECT area = toWin32(itemTextArea({client.right, client.bottom}, fromWin32(m_buttonRect)));
    if (isOwnerDrawn(m_hWnd))
        LetHostDrawItem(canvas.dc(), area);
    else
        DrawItemText(canvas.dc(), area);
    // The host may have deleted this object while it drew; from here on it is not needed.
    frameRect(canvas.dc(), client, GetUIColor(UICLR_LINE));
}

void QkFlatComboBoxDropdownList::DrawItemText(HDC dc, const RECT& area) {
    useFont(dc, ControlFont());
    const std::wstring text = ItemText();
    const int x = captionPadding();
    const std::wstring_view shown = cutToFit(
        text, x, area.right, [dc](std::wstring_view part) { return extentOf(dc, part).width; });
    const int y = (area.bottom - extentOf(dc, text).height) / 2;
    ::SetTextColor(dc, StateTextColor());
    if (GetFocus() == m_hWnd) {
        fillRect(dc, area, GetSysColor(COLOR_HIGHLIGHT));
        ::SetTextColor(dc, highlightText());
    }
    SetBkMode(dc, TRANSPARENT);
    const bool rightToLeft = (TextFlags({}) & DT_RTLREADING) != 0;
    const UINT align = SetTextAlign(dc, rightToLeft ? TA_RTLREADING : UINT{TA_LEFT});
    TextOutW(dc, x, y, shown.data(), static_cast<int>(shown.size()));
    SetTextAlign(dc, align);
}

/// The combo's text, read where the standard combo reads it.
std::wstring QkFlatComboBoxDropdownList::ItemText() const {
    const auto chosen = static_cast<WPARAM>(AskList(LB_GETCURSEL));
    const LRESULT length = AskList(LB_GETTEXTLEN, chosen);
    if (length <= 0)
        return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const LRESULT taken = AskList(LB_GETTEXT, chosen, reinterpret_cast<LPARAM>(text.data()));
    text.resize(taken > 0 ? static_cast<std::size_t>(taken) : 0);
    return text;
}

/// The item of an owner-drawn combo, asked for as the standard combo asks for it.
void QkFlatComboBoxDropdownList::LetHostDrawItem(HDC dc, const RECT& area) const {
    const LRESULT chosen = AskStandard(CB_GETCURSEL);
    const bool dropped = AskStandard(CB_GETDROPPEDSTATE) != FALSE;
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_COMBOBOX;
    item.CtlID = m_nId;
    item.itemID = static_cast<UINT>(chosen);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = ODS_COMBOBOXEDIT;
    if (GetFocus() == m_hWnd && !dropped)
        item.itemState |= ODS_SELECTED | ODS_FOCUS;
    if (!IsWindowEnabled(m_hWnd))
        item.itemState |= ODS_DISABLED;
    item.hwndItem = m_hWnd;
    item.hDC = dc;
    item.rcItem = area;
    InflateRect(&item.rcItem, 0, -1);
    item.rcItem.left += 1;
    if (chosen != CB_ERR)
        item.itemData =
            static_cast<ULONG_PTR>(SendMessageW(m_hWnd, CB_GETITEMDATA, item.itemID, 0));

    const SavedDc saved(dc);
    // The font that the host measured its items with.
    const auto font = reinterpret_cast<HFONT>(SendMessageW(m_hWnd, WM_GETFONT, 0, 0));
    SelectObject(dc, font ? font : ControlFont());
    IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
    SendMessageW(GetParent(m_hWnd), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

// Attach

void QkFlatComboBoxDropdownList::Attach(HWND hwnd) {
    UpdateImage();
    m_buttonWidth = arrowButtonWidth(m_arrowSize.cx, captionPadding());
    QkFlatComboBoxDropdownBase::Attach(hwnd);
}

}  // namespace QkDlg

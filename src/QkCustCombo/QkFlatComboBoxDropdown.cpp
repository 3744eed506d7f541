#include "QkDlg/QkFlatComboBoxDropdown.h"

#include "QkDlg/QkFlatEdit.h"
#include "QkUtil/Rects.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNoItemOrList{"src/QkCustCombo", 383};

}  // namespace

QkFlatComboBoxDropdown::QkFlatComboBoxDropdown(UINT id) : QkFlatComboBoxDropdownBase(id) {}

QkFlatComboBoxDropdown::~QkFlatComboBoxDropdown() = default;

void QkFlatComboBoxDropdown::Paint(HDC hdc) {
    QkFlatComboBoxDropdownBase::Paint(hdc);
}

void QkFlatComboBoxDropdown::Attach(HWND hwnd) {
    UpdateImage();
    const COMBOBOXINFO info = ComboInfo(hwnd);
    if (!info.hwndItem || !info.hwndList)
        QkLib::reportAssertFailure(kNoItemOrList);
    // This flat edit is released again by the base's Attach below: the combo draws the border
    // itself, so its edit shows no frame. Kept in this order as it has always been.
    auto edit = std::make_unique<QkFlatEdit>(static_cast<UINT>(GetDlgCtrlID(info.hwndItem)));
    edit->SetStartHidden(true);
    edit->Attach(info.hwndItem);
    m_innerControl = std::move(edit);
    m_buttonWidth = static_cast<int>(windowRectIn(hwnd, hwnd).right -
                                     windowRectIn(info.hwndItem, hwnd).right - 1);
    QkFlatComboBoxDropdownBase::Attach(hwnd);
}

}  // namespace QkDlg

#include "QkDlg/QkFlatComboBoxDropdown.h"

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
    // The edit stays a standard one: the combo draws the border itself.
    MeasureButton(hwnd, info.hwndItem);
    QkFlatComboBoxDropdownBase::Attach(hwnd);
}

}  // namespace QkDlg

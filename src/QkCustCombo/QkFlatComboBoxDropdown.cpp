#include "QkDlg/QkFlatComboBoxDropdown.h"

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
    // The edit stays a standard one: the combo draws the border itself.
    m_buttonWidth = static_cast<int>(windowRectIn(hwnd, hwnd).right -
                                     windowRectIn(info.hwndItem, hwnd).right - 1);
    QkFlatComboBoxDropdownBase::Attach(hwnd);
}

}  // namespace QkDlg

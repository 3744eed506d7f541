#include "QkDlg/QkFlatComboBoxSimple.h"

#include "QkDlg/QkFlatEdit.h"

namespace QkDlg {

namespace {

constexpr int kFrameWidth = 1;
constexpr int kListOverhang = 2;
constexpr int kListGap = 2;

}  // namespace

QkFlatComboBoxSimple::QkFlatComboBoxSimple(UINT id) : QkFlatComboBoxBase(id) {}

QkFlatComboBoxSimple::~QkFlatComboBoxSimple() = default;

void QkFlatComboBoxSimple::Paint(HDC) {}

void QkFlatComboBoxSimple::Attach(HWND hwnd) {
    QkFlatComboBoxBase::Attach(hwnd);
    const HWND item = GetItemWindow();
    auto edit = std::make_unique<QkFlatEdit>(static_cast<UINT>(GetDlgCtrlID(item)));
    edit->SetFrameWidth(kFrameWidth);
    edit->Attach(item);
    m_innerControl = std::move(edit);
    AlignList(kListOverhang, kListGap);
}

}  // namespace QkDlg

#include "QkDlg/QkFlatSplitBtn.h"

namespace QkDlg {

namespace {

constexpr UINT32 kDropArrow = 62096;

}  // namespace

QkFlatSplitBtn::QkFlatSplitBtn(UINT id) : QkFlatBtn(id) {
    m_images = ImageIdList::fromFirstId(kDropArrow);
    m_bImageRight = 1;
}

int QkFlatSplitBtn::OnAnimateColor(COLORREF) {
    return 0;
}

}  // namespace QkDlg

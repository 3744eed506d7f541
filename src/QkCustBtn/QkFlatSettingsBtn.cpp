#include "QkDlg/QkFlatSettingsBtn.h"

namespace QkDlg {

namespace {

// Three schemes, for now with one drawing: in high contrast it is recoloured when drawn.
constexpr UINT32 kGear = 62088;
constexpr UINT32 kGearOnWhite = 62088;
constexpr UINT32 kGearOnDark = 62088;

constexpr COLORREF kWhite = 0xFFFFFF;

}  // namespace

QkFlatSettingsBtn::QkFlatSettingsBtn(UINT id) : QkFlatBtn(id) {
    m_bDrawImage = false;
    m_bSizeToImage = true;
    m_bImageGap = false;
    ChooseImage();
}

void QkFlatSettingsBtn::ChooseImage() {
    UINT32 gear = kGear;
    if (IsHighContrast())
        gear = GetSysColor(COLOR_WINDOW) == kWhite ? kGearOnWhite : kGearOnDark;
    m_images = ImageIdList::fromFirstId(gear);
}

void QkFlatSettingsBtn::Refresh() {
    ChooseImage();
    QkFlatBtn::Refresh();
}

void QkFlatSettingsBtn::Attach(HWND hwnd) {
    // The last window may have gone under the mouse.
    m_bDrawImage = false;
    QkFlatBtn::Attach(hwnd);
}

void QkFlatSettingsBtn::OnMouseMove(int x, int y) {
    if (!m_bHover)
        m_bDrawImage = true;
    QkFlatBtn::OnMouseMove(x, y);
}

void QkFlatSettingsBtn::OnMouseLeave() {
    m_bDrawImage = false;
    QkFlatBtn::OnMouseLeave();
}

}  // namespace QkDlg

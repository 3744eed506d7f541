#include "pictures/HighContrastScheme.h"

#include <array>

#include "common/ImportTable.h"

namespace QkPictures {
namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kSelection = RGB(26, 235, 255);
constexpr COLORREF kLink = RGB(255, 255, 0);
constexpr COLORREF kDisabled = RGB(63, 242, 63);
constexpr COLORREF kTitle = RGB(128, 0, 128);

constexpr std::array kElements{
    COLOR_WINDOW,      COLOR_WINDOWTEXT,    COLOR_WINDOWFRAME,
    COLOR_BTNFACE,     COLOR_BTNTEXT,       COLOR_BTNHIGHLIGHT,
    COLOR_BTNSHADOW,   COLOR_3DDKSHADOW,    COLOR_3DLIGHT,
    COLOR_HIGHLIGHT,   COLOR_HIGHLIGHTTEXT, COLOR_GRAYTEXT,
    COLOR_HOTLIGHT,    COLOR_ACTIVECAPTION, COLOR_GRADIENTACTIVECAPTION,
    COLOR_CAPTIONTEXT, COLOR_SCROLLBAR,     COLOR_MENU,
    COLOR_MENUTEXT,    COLOR_INFOBK,        COLOR_INFOTEXT,
};
constexpr std::array<COLORREF, kElements.size()> kColours{
    kBlack,     kWhite, kWhite,                            //
    kBlack,     kWhite, kWhite,                            //
    kWhite,     kWhite, kBlack,                            //
    kSelection, kBlack, kDisabled, kLink, kTitle, kTitle,  //
    kWhite,     kBlack, kBlack,                            //
    kWhite,     kBlack, kWhite,
};

void setColours(const COLORREF* colours) {
    SetSysColors(static_cast<int>(kElements.size()), kElements.data(), colours);
}

BOOL WINAPI answerParameters(UINT action, UINT number, void* data, UINT flags) {
    // Not through the import table, where this function stands.
    static auto* const real =
        reinterpret_cast<decltype(&SystemParametersInfoW)>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"user32"), "SystemParametersInfoW")));
    const BOOL result = real(action, number, data, flags);
    if (action != SPI_GETHIGHCONTRAST || !data)
        return result;
    static_cast<HIGHCONTRASTW*>(data)->dwFlags |= HCF_HIGHCONTRASTON;
    return TRUE;
}

}  // namespace

HighContrastScheme::HighContrastScheme()
    : slot_(QkDlgTools::importSlot(GetModuleHandleW(nullptr), "SystemParametersInfoW")) {
    for (const int element : kElements)
        before_.push_back(GetSysColor(element));
    setColours(kColours.data());
    if (slot_)
        original_ = QkDlgTools::exchangeImport(slot_, reinterpret_cast<void*>(&answerParameters));
}

HighContrastScheme::~HighContrastScheme() {
    if (slot_)
        QkDlgTools::exchangeImport(slot_, original_);
    setColours(before_.data());
}

}  // namespace QkPictures

#include "QkDlg/UiColors.h"

#include <array>

#include "QkUtil/Handles.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kUnknownColour{"src/QkUtil", 452};

constexpr int kNoSubstitute = -1;

struct UiColorEntry {
    COLORREF normal;
    int highContrast;  ///< a system colour index, or kNoSubstitute
};

constexpr std::array<UiColorEntry, 12> kUiColors{{
    {RGB(255, 255, 255), kNoSubstitute},
    {RGB(252, 252, 252), kNoSubstitute},
    {RGB(246, 246, 246), kNoSubstitute},
    {RGB(27, 118, 192), COLOR_HOTLIGHT},
    {RGB(229, 243, 251), COLOR_GRADIENTACTIVECAPTION},
    {RGB(119, 194, 232), COLOR_ACTIVECAPTION},
    {RGB(210, 232, 253), COLOR_GRADIENTACTIVECAPTION},
    {RGB(101, 167, 232), COLOR_ACTIVECAPTION},
    {RGB(121, 121, 121), kNoSubstitute},
    {RGB(168, 168, 168), kNoSubstitute},
    {RGB(204, 204, 204), kNoSubstitute},
    {RGB(223, 223, 223), kNoSubstitute},
}};

constexpr int kTrueColourBits = 32;

constexpr ULONG_PTR kDcStyles = CS_OWNDC | CS_CLASSDC | CS_PARENTDC;
constexpr COLORREF kColourOfLentDc = RGB(255, 255, 255);

}  // namespace

COLORREF GetUIColor(int index) {
    if (index < 0 || index >= static_cast<int>(kUiColors.size()))
        QkLib::reportAssertFailure(kUnknownColour);
    const UiColorEntry& entry = kUiColors.at(static_cast<std::size_t>(index));
    if (entry.highContrast != kNoSubstitute && IsHighContrast())
        return GetSysColor(entry.highContrast);
    return entry.normal;
}

bool IsHighContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    if (!SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0))
        return false;
    return (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

bool IsLowColourDisplay() {
    const WindowDc screen(nullptr);
    return GetDeviceCaps(screen.get(), BITSPIXEL) < kTrueColourBits;
}

COLORREF GetParentBkColor(HWND hwnd) {
    const HWND parent = GetParent(hwnd);
    // The system lends its own DCs with this colour; only a DC of the window's or of its class can
    // have another.
    if ((GetClassLongPtrW(parent, GCL_STYLE) & kDcStyles) == 0)
        return kColourOfLentDc;
    const WindowDc dc(parent);
    return GetBkColor(dc.get());
}

COLORREF GetDisabledTextColor() {
    return IsHighContrast() ? GetSysColor(COLOR_GRAYTEXT) : kDisabledText;
}

}  // namespace QkDlg

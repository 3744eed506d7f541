#include "Dye.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

namespace ScreenTest {

namespace {

constexpr std::array<int, 8> kDyed{COLOR_SCROLLBAR,  COLOR_BTNFACE,     COLOR_BTNSHADOW,
                                   COLOR_BTNTEXT,    COLOR_3DLIGHT,     COLOR_BTNHIGHLIGHT,
                                   COLOR_3DDKSHADOW, COLOR_ACTIVEBORDER};
constexpr const wchar_t* kThemeKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\ThemeManager";
constexpr const wchar_t* kThemeValue = L"DllName";
constexpr const wchar_t* kOriginalValue = L"QkDlgUndyed";

std::wstring themeFile(const wchar_t* value) {
    std::array<wchar_t, MAX_PATH> file{};
    DWORD size = sizeof file;
    RegGetValueW(HKEY_CURRENT_USER, kThemeKey, value, RRF_RT_REG_SZ, nullptr, file.data(), &size);
    return file.data();
}

void setThemeFile(const wchar_t* value, const std::wstring& file) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kThemeKey, value, REG_SZ, file.c_str(),
                    static_cast<DWORD>((file.size() + 1) * sizeof(wchar_t)));
}

/// Also what a run that was killed left behind.
void restoreTheme() {
    const std::wstring original = themeFile(kOriginalValue);
    if (original.empty())
        return;
    setThemeFile(kThemeValue, original);
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kThemeKey, kOriginalValue);
}

/// White stays: frames are drawn with the inside filled, which the window paints afterwards.
bool isInk(char component) {
    constexpr int kWhitish = 0xFC;
    return static_cast<unsigned char>(component) < kWhitish;
}

/// The pixels of a bitmap that begins at `place`, if one does: the theme has them as bitmaps with
/// the fifth version of the header, in 24 or 32 bits.
void dyePicture(std::vector<char>& file, std::size_t place) {
    BITMAPV5HEADER header{};
    if (place + sizeof header > file.size())
        return;
    std::memcpy(&header, &file[place], sizeof header);
    const auto bytes = static_cast<std::size_t>(header.bV5BitCount / 8);
    if (header.bV5Size != sizeof header || header.bV5Planes != 1 || (bytes != 3 && bytes != 4) ||
        header.bV5Width <= 0 || header.bV5Height <= 0)
        return;
    const std::size_t stride = (static_cast<std::size_t>(header.bV5Width) * bytes + 3) / 4 * 4;
    const std::size_t begin = place + sizeof header;
    const std::size_t end = begin + stride * static_cast<std::size_t>(header.bV5Height);
    if (end > file.size())
        return;
    for (std::size_t row = begin; row < end; row += stride) {
        for (std::size_t x = 0; x < static_cast<std::size_t>(header.bV5Width); ++x) {
            const std::span<char> pixel(&file[row + x * bytes], kDye.size());
            if (std::ranges::any_of(pixel, isInk))
                std::ranges::copy(kDye, pixel.begin());
        }
    }
}

/// A dyed copy of a theme. Its borders of one line, which lists keep, are no pictures. Only where
/// the system takes themes that nobody signed, as Wine does.
std::wstring dyedTheme(const std::filesystem::path& theme) {
    std::ifstream in(theme, std::ios::binary);
    std::vector<char> file{std::istreambuf_iterator<char>(in), {}};
    for (std::size_t at = 0; at + 4 < file.size(); ++at) {
        if (file[at] == sizeof(BITMAPV5HEADER) && file[at + 1] == 0)
            dyePicture(file, at);
    }
    const auto copy = theme.parent_path() / L"dyed.msstyles";
    std::ofstream(copy, std::ios::binary)
        .write(file.data(), static_cast<std::streamsize>(file.size()));
    return copy;
}

}  // namespace

Dye::Dye() {
    std::array<COLORREF, kDyed.size()> colours{};
    colours.fill(kDyeColour);
    std::ranges::transform(kDyed, before_.begin(), [](int index) { return GetSysColor(index); });
    SetSysColors(static_cast<int>(kDyed.size()), kDyed.data(), colours.data());

    restoreTheme();
    const std::wstring theme = themeFile(kThemeValue);
    if (theme.empty())
        return;
    setThemeFile(kOriginalValue, theme);
    setThemeFile(kThemeValue, dyedTheme(theme));
}

Dye::~Dye() {
    SetSysColors(static_cast<int>(kDyed.size()), kDyed.data(), before_.data());
    restoreTheme();
}

}  // namespace ScreenTest

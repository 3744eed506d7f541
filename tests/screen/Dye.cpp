#include "Dye.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <vector>

namespace ScreenTest {

namespace {

constexpr COLORREF kColour = RGB(kDye[2], kDye[1], kDye[0]);
constexpr const wchar_t* kThemeKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\ThemeManager";
constexpr const wchar_t* kThemeValue = L"DllName";
constexpr std::wstring_view kDyedSuffix = L".dyed";

std::wstring themeFile() {
    std::array<wchar_t, MAX_PATH> file{};
    DWORD size = sizeof file;
    RegGetValueW(HKEY_CURRENT_USER, kThemeKey, kThemeValue, RRF_RT_REG_SZ, nullptr, file.data(),
                 &size);
    return file.data();
}

void setThemeFile(const std::wstring& file) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kThemeKey, kThemeValue, REG_SZ, file.c_str(),
                    static_cast<DWORD>((file.size() + 1) * sizeof(wchar_t)));
}

/// White stays: frames are drawn with the inside filled, which the window paints afterwards.
bool isInk(char component) {
    constexpr int kWhitish = 0xFC;
    return static_cast<unsigned char>(component) < kWhitish;
}

/// The pixels of a bitmap that `file` begins with, if it does: the theme has them as bitmaps with
/// the fifth version of the header, in 24 or 32 bits.
void dyePicture(std::span<char> file) {
    BITMAPV5HEADER header{};
    std::memcpy(&header, file.data(), sizeof header);
    if (header.bV5Size != sizeof header || header.bV5Planes != 1 || header.bV5BitCount < 24 ||
        header.bV5Width <= 0 || header.bV5Height <= 0)
        return;
    const auto bytes = static_cast<std::size_t>(header.bV5BitCount / 8);
    const auto width = static_cast<std::size_t>(header.bV5Width) * bytes;
    const std::size_t stride = (width + 3) / 4 * 4;
    const std::size_t size = stride * static_cast<std::size_t>(header.bV5Height);
    for (std::size_t at = 0; at < size && sizeof header + at + bytes <= file.size();) {
        const std::span pixel = file.subspan(sizeof header + at, kDye.size());
        if (std::ranges::any_of(pixel, isInk))
            std::ranges::copy(kDye, pixel.begin());
        at += at % stride + bytes < width ? bytes : stride - at % stride;
    }
}

/// Its borders of one line, which lists keep, are no pictures. Only where the system takes themes
/// that nobody signed, as Wine does.
void dyeTheme(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::ifstream in(from, std::ios::binary);
    std::vector<char> file{std::istreambuf_iterator<char>(in), {}};
    for (std::size_t at = 0; at + sizeof(BITMAPV5HEADER) < file.size(); ++at)
        dyePicture(std::span(file).subspan(at));
    std::ofstream(to, std::ios::binary)
        .write(file.data(), static_cast<std::streamsize>(file.size()));
}

}  // namespace

Dye::Dye()
    : colours_({{COLOR_SCROLLBAR, kColour},
                {COLOR_BTNFACE, kColour},
                {COLOR_BTNSHADOW, kColour},
                {COLOR_BTNTEXT, kColour},
                {COLOR_3DLIGHT, kColour},
                {COLOR_BTNHIGHLIGHT, kColour},
                {COLOR_3DDKSHADOW, kColour},
                {COLOR_ACTIVEBORDER, kColour}}),
      theme_(themeFile()) {
    // A run that was killed has left its own.
    if (theme_.ends_with(kDyedSuffix))
        theme_.resize(theme_.size() - kDyedSuffix.size());
    if (theme_.empty())
        return;
    const std::wstring dyed = theme_ + std::wstring(kDyedSuffix);
    dyeTheme(theme_, dyed);
    setThemeFile(dyed);
}

Dye::~Dye() {
    if (!theme_.empty())
        setThemeFile(theme_);
}

}  // namespace ScreenTest

#include "pictures/Comparison.h"

#include <cstdlib>
#include <vector>

#include "QkUtil/Handles.h"
#include "common/Picture.h"

namespace QkPictures {
namespace {

constexpr int kUnseenShade = 8;
/// One pixel in so many may differ.
constexpr std::size_t kToleratedShare = 2000;

struct Pixels {
    SIZE size{};
    std::vector<RGBQUAD> values;
};

Pixels pixelsOf(const std::wstring& file) {
    const QkDlgTools::UniquePicture picture = QkDlgTools::loadPicture(file);
    Pixels pixels{QkDlgTools::pictureSize(picture.get()), {}};
    pixels.values.resize(static_cast<std::size_t>(pixels.size.cx) *
                         static_cast<std::size_t>(pixels.size.cy));
    BITMAPINFO info{};
    info.bmiHeader = {
        sizeof info.bmiHeader, pixels.size.cx, pixels.size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const QkDlg::WindowDc screen(nullptr);
    if (picture)
        GetDIBits(screen.get(), picture.get(), 0, static_cast<UINT>(pixels.size.cy),
                  pixels.values.data(), &info, DIB_RGB_COLORS);
    return pixels;
}

bool looksLike(const RGBQUAD& one, const RGBQUAD& other) {
    return std::abs(one.rgbRed - other.rgbRed) <= kUnseenShade &&
           std::abs(one.rgbGreen - other.rgbGreen) <= kUnseenShade &&
           std::abs(one.rgbBlue - other.rgbBlue) <= kUnseenShade;
}

std::wstring inWords(const SIZE& size) {
    return std::to_wstring(size.cx) + L" x " + std::to_wstring(size.cy);
}

}  // namespace

std::wstring differenceOf(const std::wstring& file, const std::wstring& other) {
    const Pixels one = pixelsOf(file);
    const Pixels two = pixelsOf(other);
    if (one.values.empty() || two.values.empty())
        return L"cannot be read";
    if (one.size.cx != two.size.cx || one.size.cy != two.size.cy)
        return inWords(one.size) + L" pixels instead of " + inWords(two.size);
    std::size_t different = 0;
    for (std::size_t i = 0; i < one.values.size(); ++i)
        different += looksLike(one.values[i], two.values[i]) ? 0U : 1U;
    if (different * kToleratedShare <= one.values.size())
        return {};
    return std::to_wstring(different) + L" of " + std::to_wstring(one.values.size()) +
           L" pixels differ";
}

}  // namespace QkPictures

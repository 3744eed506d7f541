#include "Screen.h"

#include "QkUtil/Handles.h"
#include "common/Picture.h"

namespace ScreenTest {

namespace {

/// A field of the file's header; they are 32 bits wide with the upper byte first.
std::size_t field(const std::uint8_t* header, int index) {
    std::size_t value = 0;
    for (int byte = 0; byte < 4; ++byte)
        value = value << 8U | header[index * 4 + byte];
    return value;
}

constexpr int kHeaderSize = 0;
constexpr int kBytesPerLine = 12;
constexpr int kColourCount = 19;
constexpr std::size_t kColourBytes = 12;
constexpr std::size_t kPixelBytes = sizeof(std::uint32_t);

std::vector<std::uint32_t> askedOfSystem(const RECT& place) {
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const QkDlg::WindowDc screen(nullptr);
    const QkDlg::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.get(), width, height));
    const QkDlg::MemoryDc dc(CreateCompatibleDC(screen.get()));
    const QkDlg::Selection selected(dc.get(), bitmap.get());
    BitBlt(dc.get(), 0, 0, width, height, screen.get(), place.left, place.top, SRCCOPY);
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height));
    GetBitmapBits(bitmap.get(), width * height * 4, pixels.data());
    return pixels;
}

}  // namespace

Screen::Screen(const std::wstring& file) {
    const QkDlg::UniqueKernelHandle opened(CreateFileW(file.c_str(), GENERIC_READ,
                                                       FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                       OPEN_EXISTING, 0, nullptr));
    const QkDlg::UniqueKernelHandle mapping(
        CreateFileMappingW(opened.get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    view_.reset(
        static_cast<const std::uint8_t*>(MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0)));
    if (!view_)
        return;
    const std::uint8_t* const header = view_.get();
    buffer_ = header + field(header, kHeaderSize) + field(header, kColourCount) * kColourBytes;
    stride_ = field(header, kBytesPerLine);
}

bool Screen::read(Frame& frame) const {
    const auto width = static_cast<std::size_t>(frame.width());
    const auto height = static_cast<std::size_t>(frame.place.bottom - frame.place.top);
    const auto asked = view_ ? std::vector<std::uint32_t>{} : askedOfSystem(frame.place);
    bool changed = frame.pixels.empty();
    frame.pixels.resize(width * height);
    const std::uint8_t* line = reinterpret_cast<const std::uint8_t*>(asked.data());
    if (view_)
        line = buffer_ + static_cast<std::size_t>(frame.place.top) * stride_ +
               static_cast<std::size_t>(frame.place.left) * kPixelBytes;
    std::uint32_t* to = frame.pixels.data();
    for (std::size_t y = 0; y < height; ++y, line += view_ ? stride_ : width * kPixelBytes) {
        const auto* const from = reinterpret_cast<const std::uint32_t*>(line);
        for (std::size_t x = 0; x < width; ++x, ++to) {
            const std::uint32_t pixel = from[x] & 0xFFFFFFU;
            changed |= pixel != *to;
            *to = pixel;
        }
    }
    return changed;
}

void saveMarked(const Frame& frame, const RECT& mark, const std::wstring& file) {
    constexpr std::uint32_t kMark = 0x0080FF;
    RECT around = mark;
    InflateRect(&around, 2, 2);
    std::vector<std::uint32_t> pixels = frame.pixels;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (PtInRect(&around, frame.pointOf(i)) && !PtInRect(&mark, frame.pointOf(i)))
            pixels[i] = kMark;
    }
    const QkDlg::UniqueBitmap picture(
        CreateBitmap(frame.width(), frame.place.bottom - frame.place.top, 1, 32, pixels.data()));
    (void)QkDlgTools::savePng(picture.get(), file);
}

}  // namespace ScreenTest

#include "Screen.h"

#include <cstring>

#include "QkUtil/Handles.h"
#include "common/Picture.h"

namespace ScreenTest {

namespace {

BITMAPINFO topDown(int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

QkDlgTools::UniquePicture makePicture(const RECT& place, void** bits) {
    const BITMAPINFO info = topDown(place.right - place.left, place.bottom - place.top);
    return QkDlgTools::UniquePicture(
        CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, bits, nullptr, 0));
}

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

}  // namespace

Screen::Screen(const std::wstring& file) {
    HANDLE opened = CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, 0, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return;
    HANDLE mapping = CreateFileMappingW(opened, nullptr, PAGE_READONLY, 0, 0, nullptr);
    CloseHandle(opened);
    if (!mapping)
        return;
    view_ = static_cast<const std::uint8_t*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0));
    CloseHandle(mapping);
    if (!view_)
        return;
    buffer_ = view_ + field(view_, kHeaderSize) + field(view_, kColourCount) * kColourBytes;
    stride_ = field(view_, kBytesPerLine);
}

Screen::~Screen() {
    if (view_)
        UnmapViewOfFile(view_);
}

bool Screen::read(Frame& frame) const {
    const auto width = static_cast<std::size_t>(frame.width());
    frame.spare.resize(width * static_cast<std::size_t>(frame.place.bottom - frame.place.top));
    if (view_)
        readBuffer(frame);
    else
        readSystem(frame);
    for (std::uint32_t& pixel : frame.spare)
        pixel &= 0xFFFFFFU;
    if (frame.spare == frame.pixels)
        return false;
    std::swap(frame.pixels, frame.spare);
    return true;
}

void Screen::readBuffer(Frame& frame) const {
    const auto width = static_cast<std::size_t>(frame.width());
    auto* to = frame.spare.data();
    for (LONG y = frame.place.top; y < frame.place.bottom; ++y, to += width) {
        const auto* from = buffer_ + static_cast<std::size_t>(y) * stride_ +
                           static_cast<std::size_t>(frame.place.left) * sizeof *to;
        std::memcpy(to, from, width * sizeof *to);
    }
}

void Screen::readSystem(Frame& frame) {
    void* bits = nullptr;
    const auto picture = makePicture(frame.place, &bits);
    const QkDlg::WindowDc screen(nullptr);
    const QkDlg::MemoryDc dc(CreateCompatibleDC(screen.get()));
    if (!picture || !dc)
        return;
    const QkDlg::Selection selected(dc.get(), picture.get());
    BitBlt(dc.get(), 0, 0, frame.width(), frame.place.bottom - frame.place.top, screen.get(),
           frame.place.left, frame.place.top, SRCCOPY);
    GdiFlush();
    std::memcpy(frame.spare.data(), bits, frame.spare.size() * sizeof(std::uint32_t));
}

void saveMarked(const Frame& frame, const RECT& mark, const std::wstring& file) {
    void* bits = nullptr;
    const auto picture = makePicture(frame.place, &bits);
    if (!picture)
        return;
    std::memcpy(bits, frame.pixels.data(), frame.pixels.size() * sizeof(std::uint32_t));
    {
        const QkDlg::MemoryDc dc(CreateCompatibleDC(nullptr));
        const QkDlg::Selection selected(dc.get(), picture.get());
        RECT around = mark;
        OffsetRect(&around, -frame.place.left, -frame.place.top);
        for (int grow = 0; grow < 2; ++grow) {
            InflateRect(&around, 1, 1);
            FrameRect(dc.get(), &around, GetSysColorBrush(COLOR_HIGHLIGHT));
        }
    }
    (void)QkDlgTools::savePng(picture.get(), file);
}

}  // namespace ScreenTest

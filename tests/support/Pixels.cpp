#include "support/Pixels.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "QkUtil/Handles.h"
#include "support/MessageLoop.h"

namespace QkDlgTest {

namespace {

constexpr int kDesktopDelay = 10;
constexpr std::uint32_t kColourBits = 0xFFFFFF;

// 0x00RRGGBB to 0x00BBGGRR and back.
std::uint32_t swapped(std::uint32_t pixel) {
    return (pixel & 0x00FF00) | ((pixel >> 16) & 0xFF) | ((pixel & 0xFF) << 16);
}

// A memory DC with a bitmap whose pixels can be taken away.
class Canvas {
public:
    Canvas(int width, int height) : width_(width), height_(height) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;  // the top row comes first
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        EXPECT_TRUE(bitmap_) << "no bitmap of " << width << " x " << height;
        bits_ = static_cast<std::uint32_t*>(bits);
        selection_.emplace(dc_.get(), bitmap_.get());
    }

    [[nodiscard]] HDC dc() const { return dc_.get(); }

    [[nodiscard]] Image image() const {
        GdiFlush();
        std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width_ * height_));
        if (bits_)
            std::transform(bits_, bits_ + pixels.size(), pixels.begin(),
                           [](std::uint32_t pixel) { return pixel & kColourBits; });
        return {width_, height_, std::move(pixels)};
    }

private:
    int width_;
    int height_;
    QkDlg::MemoryDc dc_{CreateCompatibleDC(nullptr)};
    QkDlg::UniqueBitmap bitmap_;
    std::optional<QkDlg::Selection> selection_;
    std::uint32_t* bits_ = nullptr;
};

Image copied(HWND window, const RECT& rect) {
    const int width = std::max<LONG>(rect.right - rect.left, 1);
    const int height = std::max<LONG>(rect.bottom - rect.top, 1);
    const Canvas canvas(width, height);
    const QkDlg::WindowDc source(window);
    // Read as it lies on the screen; a mirrored DC would turn the picture round.
    const DWORD layout = SetLayout(source.get(), 0);
    BitBlt(canvas.dc(), 0, 0, width, height, source.get(), rect.left, rect.top, SRCCOPY);
    SetLayout(source.get(), layout);
    return canvas.image();
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Box& box) {
    return out << "(" << box.left << ", " << box.top << ")-(" << box.right << ", " << box.bottom
               << ")";
}

Box clientBox(HWND window) {
    RECT rect{};
    GetClientRect(window, &rect);
    return Box(rect);
}

Box windowBox(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return Box(rect);
}

std::string hex(COLORREF colour) {
    char text[16];
    std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(swapped(colour)));
    return text;
}

Image::Image(int width, int height, std::vector<std::uint32_t> pixels)
    : width_(width), height_(height), pixels_(std::move(pixels)) {}

COLORREF Image::at(int x, int y) const {
    if (x < 0 || x >= width_ || y < 0 || y >= height_) {
        ADD_FAILURE() << "no pixel " << x << ", " << y << " in an " << *this;
        return CLR_INVALID;
    }
    const int index = y * width_ + x;
    return swapped(pixels_[static_cast<std::size_t>(index)]);
}

int Image::count(COLORREF colour) const {
    return static_cast<int>(std::count(pixels_.begin(), pixels_.end(), swapped(colour)));
}

std::optional<Box> Image::boundingBoxOf(const Predicate& wanted) const {
    std::optional<Box> box;
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            if (!wanted(at(x, y)))
                continue;
            if (!box)
                box = Box(x, y, x + 1, y + 1);
            box->left = std::min<LONG>(box->left, x);
            box->right = std::max<LONG>(box->right, x + 1);
            box->bottom = y + 1;
        }
    }
    return box;
}

std::optional<Box> Image::boundingBoxOf(COLORREF colour) const {
    return boundingBoxOf([colour](COLORREF pixel) { return pixel == colour; });
}

Image Image::part(const Box& box) const {
    std::vector<std::uint32_t> pixels;
    for (int y = box.top; y < box.bottom; ++y) {
        for (int x = box.left; x < box.right; ++x)
            pixels.push_back(swapped(at(x, y)));
    }
    return {box.right - box.left, box.bottom - box.top, std::move(pixels)};
}

std::string Image::firstDifference(const Image& other) const {
    if (width_ != other.width_ || height_ != other.height_)
        return "which has another size";
    const auto at = std::mismatch(pixels_.begin(), pixels_.end(), other.pixels_.begin()).first;
    if (at == pixels_.end())
        return {};
    const int index = static_cast<int>(at - pixels_.begin());
    const int x = index % width_;
    const int y = index / width_;
    return "which has " + hex(this->at(x, y)) + " instead of " + hex(other.at(x, y)) + " at " +
           std::to_string(x) + ", " + std::to_string(y);
}

std::ostream& operator<<(std::ostream& out, const Image& image) {
    return out << "image of " << image.width() << " x " << image.height();
}

Image onScreen(HWND window) {
    RECT rect{};
    GetClientRect(window, &rect);
    return copied(window, rect);
}

Image onDesktop(const RECT& rect) {
    pump(kDesktopDelay);
    return copied(nullptr, rect);
}

Image printed(HWND window) {
    RECT rect{};
    GetClientRect(window, &rect);
    const Canvas canvas(std::max<LONG>(rect.right, 1), std::max<LONG>(rect.bottom, 1));
    FillRect(canvas.dc(), &rect, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.dc()), PRF_CLIENT);
    return canvas.image();
}

}  // namespace QkDlgTest

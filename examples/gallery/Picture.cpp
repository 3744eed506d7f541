#include "Picture.h"

// Left out by the lean windows.h, needed by gdiplus.h.
#include <objidl.h>

#include <algorithm>

namespace Gdiplus {
// Some editions of gdiplus.h expect the macros of these names.
using std::max;  // NOLINT(misc-unused-using-decls)
using std::min;  // NOLINT(misc-unused-using-decls)
}  // namespace Gdiplus

#include <gdiplus.h>

#include "Handles.h"

namespace Gallery {
namespace {

constexpr CLSID kPngEncoder = {
    0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

class GdiPlus {
public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        running_ = Gdiplus::GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok;
    }
    ~GdiPlus() {
        if (running_)
            Gdiplus::GdiplusShutdown(token_);
    }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;
    GdiPlus(GdiPlus&&) = delete;
    GdiPlus& operator=(GdiPlus&&) = delete;

    [[nodiscard]] bool running() const { return running_; }

private:
    ULONG_PTR token_ = 0;
    bool running_ = false;
};

class ClientDc {
public:
    explicit ClientDc(HWND window) : window_(window), dc_(GetDC(window)) {}
    ~ClientDc() { ReleaseDC(window_, dc_); }
    ClientDc(const ClientDc&) = delete;
    ClientDc& operator=(const ClientDc&) = delete;
    ClientDc(ClientDc&&) = delete;
    ClientDc& operator=(ClientDc&&) = delete;

    [[nodiscard]] HDC get() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
};

UniqueBitmap capture(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    const ClientDc source(window);
    // A mirrored window would be copied mirrored once more.
    SetLayout(source.get(), 0);
    const UniqueMemoryDc target(CreateCompatibleDC(source.get()));
    SetLayout(target.get(), 0);
    UniqueBitmap bitmap(CreateCompatibleBitmap(source.get(), client.right, client.bottom));
    if (!target || !bitmap)
        return nullptr;
    HGDIOBJ previous = SelectObject(target.get(), bitmap.get());
    const BOOL copied =
        BitBlt(target.get(), 0, 0, client.right, client.bottom, source.get(), 0, 0, SRCCOPY);
    SelectObject(target.get(), previous);
    return copied ? std::move(bitmap) : nullptr;
}

}  // namespace

bool savePicture(HWND window, const std::wstring& file) {
    const UniqueBitmap bitmap = capture(window);
    const GdiPlus gdiPlus;
    if (!bitmap || !gdiPlus.running())
        return false;
    Gdiplus::Bitmap image(bitmap.get(), nullptr);
    return image.Save(file.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
}

}  // namespace Gallery

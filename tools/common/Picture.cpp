#include "common/Picture.h"

// Left out by the lean windows.h, needed by gdiplus.h.
#include <objidl.h>

#include <algorithm>

namespace Gdiplus {
// Some editions of gdiplus.h expect the macros of these names.
using std::max;  // NOLINT(misc-unused-using-decls)
using std::min;  // NOLINT(misc-unused-using-decls)
}  // namespace Gdiplus

#include <gdiplus.h>

#include "QkUtil/Handles.h"

namespace QkDlgTools {
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

}  // namespace

UniquePicture capturedClient(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    const QkDlg::WindowDc source(window);
    // A mirrored window would be copied mirrored once more.
    SetLayout(source.get(), 0);
    const QkDlg::MemoryDc target(CreateCompatibleDC(source.get()));
    SetLayout(target.get(), 0);
    UniquePicture picture(CreateCompatibleBitmap(source.get(), client.right, client.bottom));
    if (!target || !picture || IsRectEmpty(&client))
        return nullptr;
    const QkDlg::Selection selected(target.get(), picture.get());
    const BOOL copied =
        BitBlt(target.get(), 0, 0, client.right, client.bottom, source.get(), 0, 0, SRCCOPY);
    return copied ? std::move(picture) : nullptr;
}

bool savePng(HBITMAP bitmap, const std::wstring& file) {
    const GdiPlus gdiPlus;
    if (!bitmap || !gdiPlus.running())
        return false;
    Gdiplus::Bitmap image(bitmap, nullptr);
    return image.Save(file.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
}

UniquePicture loadPicture(const std::wstring& file) {
    const GdiPlus gdiPlus;
    if (!gdiPlus.running())
        return nullptr;
    Gdiplus::Bitmap image(file.c_str());
    HBITMAP bitmap = nullptr;
    if (image.GetHBITMAP(Gdiplus::Color(Gdiplus::Color::White), &bitmap) != Gdiplus::Ok)
        return nullptr;
    return UniquePicture(bitmap);
}

SIZE pictureSize(HBITMAP bitmap) {
    BITMAP info{};
    if (!bitmap || !GetObjectW(bitmap, sizeof info, &info))
        return {};
    return {info.bmWidth, info.bmHeight};
}

}  // namespace QkDlgTools

#include "preview/Sheets.h"

#include <algorithm>

#include "QkUtil/Handles.h"
#include "QkUtil/Metrics.h"
#include "preview/SheetLayout.h"

namespace QkPreview {
namespace {

using QkDlgTools::UniquePicture;

constexpr COLORREF kGround = RGB(229, 232, 236);
constexpr COLORREF kEdge = RGB(176, 182, 190);
constexpr COLORREF kCaption = RGB(40, 44, 52);

// At 96 DPI. Captions of small dialogs need more room than their pictures.
constexpr int kGap = 16;
constexpr int kSmallestCell = 300;
constexpr std::size_t kNumberDigits = 3;

/// A bitmap that can be drawn on, filled with the ground.
class Drawing {
public:
    explicit Drawing(const SIZE& size)
        : dc_(CreateCompatibleDC(screen_.get())),
          picture_(CreateCompatibleBitmap(screen_.get(), size.cx, size.cy)),
          selected_(dc_.get(), picture_.get()) {
        const RECT all{0, 0, size.cx, size.cy};
        FillRect(dc_.get(), &all, QkDlg::solidBrush(kGround).get());
        SetBkMode(dc_.get(), TRANSPARENT);
        SetTextColor(dc_.get(), kCaption);
    }

    [[nodiscard]] HDC dc() const { return dc_.get(); }
    [[nodiscard]] HBITMAP picture() const { return picture_.get(); }

    void put(HBITMAP picture, int x, int y) const {
        const SIZE size = QkDlgTools::pictureSize(picture);
        const QkDlg::MemoryDc source(CreateCompatibleDC(dc_.get()));
        const QkDlg::Selection selected(source.get(), picture);
        BitBlt(dc_.get(), x, y, size.cx, size.cy, source.get(), 0, 0, SRCCOPY);
    }
    void putFramed(HBITMAP picture, int x, int y) const {
        const SIZE size = QkDlgTools::pictureSize(picture);
        const RECT frame{x - 1, y - 1, x + size.cx + 1, y + size.cy + 1};
        FrameRect(dc_.get(), &frame, QkDlg::solidBrush(kEdge).get());
        put(picture, x, y);
    }

private:
    QkDlg::WindowDc screen_{nullptr};
    QkDlg::MemoryDc dc_;
    UniquePicture picture_;
    QkDlg::Selection selected_;
};

UniquePicture copied(HBITMAP bitmap) {
    return UniquePicture(
        static_cast<HBITMAP>(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
}

QkDlg::UniqueFont captionFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    return QkDlg::UniqueFont(CreateFontIndirectW(&metrics.lfMessageFont));
}

SheetMeasures measures() {
    SheetMeasures result;
    result.width = QkDlg::scaled(result.width);
    result.height = QkDlg::scaled(result.height);
    result.margin = QkDlg::scaled(result.margin);
    result.captionHeight = QkDlg::scaled(result.captionHeight);
    return result;
}

std::vector<QkDlg::Size> cellSizes(const std::vector<SheetPicture>& pictures) {
    std::vector<QkDlg::Size> sizes;
    for (const SheetPicture& each : pictures) {
        const SIZE size = QkDlgTools::pictureSize(QkDlgTools::loadPicture(each.file).get());
        sizes.push_back({std::max<int>(size.cx, QkDlg::scaled(kSmallestCell)), size.cy});
    }
    return sizes;
}

void drawCell(const Drawing& drawing, const SheetPicture& picture, const QkDlg::Rect& place,
              int captionHeight) {
    RECT caption{place.left, place.top - captionHeight, place.right, place.top};
    DrawTextW(drawing.dc(), picture.caption.c_str(), -1, &caption,
              DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    const UniquePicture loaded = QkDlgTools::loadPicture(picture.file);
    if (loaded)
        drawing.put(loaded.get(), place.left, place.top);
}

std::wstring sheetFile(const std::wstring& folder, std::size_t index) {
    std::wstring number = std::to_wstring(index + 1);
    number.insert(0, kNumberDigits - std::min(kNumberDigits, number.size()), L'0');
    return folder + L"\\sheet-" + number + L".png";
}

}  // namespace

UniquePicture besideEachOther(HBITMAP left, HBITMAP right) {
    const SIZE first = QkDlgTools::pictureSize(left);
    const SIZE second = QkDlgTools::pictureSize(right);
    if (first.cx == 0 && second.cx == 0)
        return nullptr;
    const int gap = first.cx != 0 && second.cx != 0 ? QkDlg::scaled(kGap) : 0;
    const Drawing drawing({first.cx + gap + second.cx + 2, std::max(first.cy, second.cy) + 2});
    if (left)
        drawing.putFramed(left, 1, 1);
    if (right)
        drawing.putFramed(right, first.cx + gap + 1, 1);
    return copied(drawing.picture());
}

std::vector<std::wstring> drawSheets(const std::vector<SheetPicture>& pictures,
                                     const std::wstring& folder) {
    const SheetMeasures sheet = measures();
    const SheetLayout layout = layOutSheets(cellSizes(pictures), sheet);
    const QkDlg::UniqueFont font = captionFont();
    std::vector<std::wstring> files;
    for (std::size_t number = 0, next = 0; number < layout.sheets.size(); ++number) {
        const QkDlg::Size& size = layout.sheets[number];
        const Drawing drawing({size.width, size.height});
        const QkDlg::Selection selected(drawing.dc(), font.get());
        for (; next < pictures.size() && layout.places[next].sheet == number; ++next)
            drawCell(drawing, pictures[next], layout.places[next].picture, sheet.captionHeight);
        files.push_back(sheetFile(folder, number));
        if (!QkDlgTools::savePng(copied(drawing.picture()).get(), files.back()))
            return {};
    }
    return files;
}

}  // namespace QkPreview

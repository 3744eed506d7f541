#include "preview/SheetLayout.h"

#include <algorithm>

namespace QkPreview {
namespace {

/// Puts pictures one after another.
class Shelf {
public:
    explicit Shelf(const SheetMeasures& measures) : measures_(measures) { newSheet(); }

    void put(const QkDlg::Size& picture) {
        const bool rowHasPictures = x_ > measures_.margin;
        if (rowHasPictures && x_ + picture.width + measures_.margin > measures_.width)
            newRow();
        const int bottom = y_ + measures_.captionHeight + picture.height + measures_.margin;
        const bool sheetHasRows = y_ > measures_.margin;
        const bool inNewRow = x_ == measures_.margin;
        if (bottom > measures_.height && (sheetHasRows || !inNewRow))
            newSheet();
        place(picture);
    }

    [[nodiscard]] SheetLayout take() { return std::move(layout_); }

private:
    void newRow() {
        x_ = measures_.margin;
        y_ = rowEnd_;
    }
    void newSheet() {
        layout_.sheets.emplace_back();
        x_ = y_ = rowEnd_ = measures_.margin;
    }
    void place(const QkDlg::Size& picture) {
        const int top = y_ + measures_.captionHeight;
        const QkDlg::Rect rect{x_, top, x_ + picture.width, top + picture.height};
        layout_.places.push_back({layout_.sheets.size() - 1, rect});
        x_ = rect.right + measures_.margin;
        rowEnd_ = std::max(rowEnd_, rect.bottom + measures_.margin);
        QkDlg::Size& sheet = layout_.sheets.back();
        sheet = {std::max(sheet.width, x_), std::max(sheet.height, rowEnd_)};
    }

    SheetMeasures measures_;
    SheetLayout layout_;
    int x_ = 0;
    int y_ = 0;
    int rowEnd_ = 0;
};

}  // namespace

SheetLayout layOutSheets(std::span<const QkDlg::Size> pictures, const SheetMeasures& measures) {
    if (pictures.empty())
        return {};
    Shelf shelf(measures);
    for (const QkDlg::Size& picture : pictures)
        shelf.put(picture);
    return shelf.take();
}

}  // namespace QkPreview

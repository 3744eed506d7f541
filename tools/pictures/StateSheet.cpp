#include "pictures/StateSheet.h"

#include <algorithm>
#include <vector>

#include "QkUtil/Handles.h"
#include "QkUtil/Metrics.h"
#include "pictures/Stage.h"

namespace QkPictures {
namespace {

using QkDlgTools::UniquePicture;

// At 96 DPI.
constexpr int kMargin = 10;
constexpr int kGap = 6;
constexpr int kLabelHeight = 18;

/// A row of pictures; null where a specimen is not shown in a state.
using Row = std::vector<UniquePicture>;

struct Grid {
    std::vector<Row> rows;
    std::vector<int> widths;   ///< of the columns
    std::vector<int> heights;  ///< of the rows
};

class Labels {
public:
    explicit Labels(HDC dc) : dc_(dc), selected_(dc, stageFont()) {
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    }

    [[nodiscard]] int width(const wchar_t* text) const {
        SIZE size{};
        GetTextExtentPoint32W(dc_, text, lstrlenW(text), &size);
        return size.cx;
    }
    void draw(const wchar_t* text, RECT place) const {
        DrawTextW(dc_, text, -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_NOCLIP);
    }

private:
    HDC dc_;
    QkDlg::Selection selected_;
};

Row takeRow(const ControlType& type, const Specimen& specimen) {
    Row row;
    for (std::size_t i = 0; i < type.columns.size(); ++i) {
        const bool shown = (specimen.columns >> i & 1U) != 0;
        row.push_back(shown ? Stage(type, specimen, type.columns[i]).picture() : nullptr);
    }
    return row;
}

Grid takePictures(const ControlType& type) {
    Grid grid;
    grid.widths.resize(type.columns.size());
    for (const Specimen& specimen : type.specimens) {
        grid.rows.push_back(takeRow(type, specimen));
        int height = 0;
        for (std::size_t i = 0; i < type.columns.size(); ++i) {
            const SIZE size = QkDlgTools::pictureSize(grid.rows.back()[i].get());
            grid.widths[i] = std::max<int>(grid.widths[i], size.cx);
            height = std::max<int>(height, size.cy);
        }
        grid.heights.push_back(height);
    }
    return grid;
}

void put(HDC dc, HBITMAP picture, int x, int y) {
    const SIZE size = QkDlgTools::pictureSize(picture);
    const QkDlg::MemoryDc source(CreateCompatibleDC(dc));
    const QkDlg::Selection selected(source.get(), picture);
    BitBlt(dc, x, y, size.cx, size.cy, source.get(), 0, 0, SRCCOPY);
}

int sum(const std::vector<int>& lengths, int gap) {
    int total = 0;
    for (const int length : lengths)
        total += length + gap;
    return total;
}

}  // namespace

UniquePicture drawStateSheet(const ControlType& type) {
    Grid grid = takePictures(type);
    const QkDlg::WindowDc screen(nullptr);
    const QkDlg::MemoryDc dc(CreateCompatibleDC(screen.get()));
    const Labels labels(dc.get());

    const int margin = QkDlg::scaled(kMargin);
    const int gap = QkDlg::scaled(kGap);
    const int labelHeight = QkDlg::scaled(kLabelHeight);
    int left = 0;
    for (const Specimen& specimen : type.specimens)
        left = std::max(left, labels.width(specimen.label));
    left += margin + gap;
    for (std::size_t i = 0; i < type.columns.size(); ++i)
        grid.widths[i] =
            std::max(grid.widths[i], labels.width(type.columns[i].label) + stageMargin());

    const RECT all{0, 0, left + sum(grid.widths, gap) - gap + margin,
                   2 * margin + labelHeight + sum(grid.heights, 0)};
    UniquePicture sheet(CreateCompatibleBitmap(screen.get(), all.right, all.bottom));
    const QkDlg::Selection selected(dc.get(), sheet.get());
    if (selected.failed())
        return nullptr;
    FillRect(dc.get(), &all, GetSysColorBrush(COLOR_WINDOW));

    int x = left;
    for (std::size_t i = 0; i < type.columns.size(); ++i) {
        labels.draw(type.columns[i].label,
                    {x + stageMargin(), margin, x + grid.widths[i], margin + labelHeight});
        x += grid.widths[i] + gap;
    }
    int y = margin + labelHeight;
    for (std::size_t row = 0; row < grid.rows.size(); ++row) {
        // Beside the control's first line.
        labels.draw(type.specimens[row].label,
                    {margin, y + stageMargin(), left, y + stageMargin() + labelHeight});
        x = left;
        for (std::size_t i = 0; i < type.columns.size(); ++i) {
            if (grid.rows[row][i])
                put(dc.get(), grid.rows[row][i].get(), x, y);
            x += grid.widths[i] + gap;
        }
        y += grid.heights[row];
    }
    return sheet;
}

}  // namespace QkPictures

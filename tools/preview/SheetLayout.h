#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "QkUtil/Geometry.h"

namespace QkPreview {

/// How a contact sheet is divided, in pixels.
struct SheetMeasures {
    int width = 2400;   ///< of a sheet; one that holds a single wider picture is wider
    int height = 1800;  ///< likewise
    int margin = 24;    ///< around the sheet and between the pictures
    int captionHeight = 20;
};

/// Where a picture goes, without its caption, which stands above it.
struct SheetPlace {
    std::size_t sheet = 0;
    QkDlg::Rect picture;
};

struct SheetLayout {
    std::vector<SheetPlace> places;   ///< one for each picture, in their order
    std::vector<QkDlg::Size> sheets;  ///< the size of each sheet
};

/// Lays pictures of these sizes out in rows from left to right, the rows from top to bottom, on as
/// many sheets as it takes. A sheet ends where its pictures do.
[[nodiscard]] SheetLayout layOutSheets(std::span<const QkDlg::Size> pictures,
                                       const SheetMeasures& measures);

}  // namespace QkPreview

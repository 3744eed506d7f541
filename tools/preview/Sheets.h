#pragma once

#include <string>
#include <vector>

#include "common/Picture.h"

namespace QkPreview {

/// The second picture to the right of the first, with some space and an edge around each. Null
/// when there is none of them; with one only, that one.
[[nodiscard]] QkDlgTools::UniquePicture besideEachOther(HBITMAP left, HBITMAP right);

struct SheetPicture {
    std::wstring file;
    std::wstring caption;
};

/// Draws the pictures with their captions onto contact sheets, sheet-001.png and so on in the
/// folder. Tells their files, or nothing when one cannot be saved. A picture that cannot be read
/// leaves its place empty.
[[nodiscard]] std::vector<std::wstring> drawSheets(const std::vector<SheetPicture>& pictures,
                                                   const std::wstring& folder);

}  // namespace QkPreview

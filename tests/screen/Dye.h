#pragma once

#include <array>

#include "QkDlg/Win32.h"

namespace ScreenTest {

/// What the system draws by itself has this colour while a Dye lives, and nothing else has.
constexpr std::array<BYTE, 3> kDye{200, 0, 255};  // blue, green, red
constexpr COLORREF kDyeColour = RGB(kDye[2], kDye[1], kDye[0]);

/// Gives the standard look an unmistakable colour, for programs that start later: the faces, edges
/// and button texts among the system colours, and the pictures of the theme. What was set before
/// comes back at the end.
class Dye {
public:
    Dye();
    ~Dye();
    Dye(const Dye&) = delete;
    Dye& operator=(const Dye&) = delete;

private:
    std::array<COLORREF, 8> before_{};
};

}  // namespace ScreenTest

#pragma once

#include <array>
#include <string>

#include "support/SystemScopes.h"

namespace ScreenTest {

/// What the system draws by itself has this colour while a Dye lives, and nothing else has.
constexpr std::array<BYTE, 3> kDye{200, 0, 255};  // blue, green, red

/// Gives the standard look an unmistakable colour, for programs that start later: the faces, edges
/// and button texts among the system colours, and the pictures of the theme. What was set before
/// comes back at the end.
class Dye {
public:
    Dye();
    ~Dye();

private:
    QkDlgTest::SystemColours colours_;
    std::wstring theme_;  ///< a file
};

}  // namespace ScreenTest

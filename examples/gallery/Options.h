#pragma once

#include <optional>
#include <string>

namespace Gallery {

/// What a picture shows besides the resting state.
enum class Pointer { None, Hover, Press, Focus };

struct Options {
    bool list = false;
    bool plain = false;
    bool rightToLeft = false;
    bool everyStep = false;  // what is painted shows after each message
    std::wstring page;       // empty: the first one
    std::wstring png;        // empty: no picture, the window stays
    Pointer pointer = Pointer::None;
    int pointerId = 0;
};

/// Reads the process's command line. Empty when it is wrong.
[[nodiscard]] std::optional<Options> readOptions();

[[nodiscard]] std::wstring usage();

}  // namespace Gallery

#pragma once

#include <vector>

#include "QkDlg/Win32.h"

namespace QkPictures {

/// A dark high-contrast scheme for as long as this lives: system colours, and the answer that this
/// program gets when it asks for the mode. Wine has no high contrast of its own.
class HighContrastScheme {
public:
    HighContrastScheme();
    ~HighContrastScheme();
    HighContrastScheme(const HighContrastScheme&) = delete;
    HighContrastScheme& operator=(const HighContrastScheme&) = delete;
    HighContrastScheme(HighContrastScheme&&) = delete;
    HighContrastScheme& operator=(HighContrastScheme&&) = delete;

private:
    std::vector<COLORREF> before_;
    void** slot_ = nullptr;
    void* original_ = nullptr;
};

}  // namespace QkPictures

#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// Number of DPI buckets, and so of sizes that each image comes in.
constexpr int kDpiBuckets = 8;

/// The screen's horizontal DPI; 0 when the screen gives no DC. The only place that asks.
[[nodiscard]] int screenDpi();

/// The screen's vertical DPI, which font heights are reckoned with.
[[nodiscard]] int screenDpiY();

/// `length` pixels at 96 DPI in pixels of the screen.
[[nodiscard]] int scaled(int length);

/// The inner margin of captions and the gap between image and caption, in pixels of the screen.
[[nodiscard]] int captionPadding();

}  // namespace QkDlg

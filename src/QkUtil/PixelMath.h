#pragma once

#include <cstdint>

namespace QkDlg {

/// One pixel of a 32-bit DIB: blue in the low byte, then green, red and alpha.
using Pixel = std::uint32_t;

/// The pixel with each colour multiplied by alpha / 255, rounded down.
[[nodiscard]] Pixel premultiplied(Pixel pixel);

/// A premultiplied pixel blended on white.
[[nodiscard]] Pixel onWhite(Pixel pixel);

/// A glyph pixel in high contrast: the shape is kept, its soft edges are made nearly solid, and it
/// is drawn in one colour. `colour` is a COLORREF and goes into the low 24 bits as it stands, so
/// its red byte lands in the pixel's blue; for the greys and pure colours that high-contrast
/// schemes use this makes no difference, and it stays as it has always been.
[[nodiscard]] Pixel highContrastGlyph(Pixel pixel, std::uint32_t colour);

/// A pixel of a disabled picture: its brightness as a grey, at half the opacity.
[[nodiscard]] Pixel greyed(Pixel pixel);

}  // namespace QkDlg

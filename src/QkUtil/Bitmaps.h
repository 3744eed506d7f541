#pragma once

#include "QkUtil/Geometry.h"
#include "QkUtil/Handles.h"

namespace QkDlg {

/// The bitmap's size in pixels; empty for a null bitmap.
[[nodiscard]] Size bitmapSize(HBITMAP bitmap);

/// Draws a whole bitmap with its top left corner at (x, y). A 32-bit bitmap has straight alpha: it
/// is premultiplied IN PLACE and blended, so every drawing needs a freshly loaded bitmap. One with
/// fewer bits is copied opaquely. In a mirrored DC the place is mirrored, the picture is not. A
/// null DC or bitmap, or more than 32 bits per pixel, raises the assertion report.
void DrawBitmap(HDC hdc, HBITMAP bitmap, int x, int y);

/// Blends the top left width x height pixels of a bitmap that is already premultiplied.
void AlphaBlendBitmap(HDC hdc, HBITMAP bitmap, int x, int y, int width, int height);

/// Multiplies the colours of a 32-bit bitmap by its alpha, in place and once, so that it can be
/// blended many times. A null bitmap raises the assertion report.
void premultiplyBitmap(HBITMAP bitmap);

/// Makes a bitmap that is already premultiplied opaque, on a white ground, in place.
void putOnWhite(HBITMAP bitmap);

/// Copies a whole bitmap opaquely. In a mirrored DC the place is mirrored, the picture is not.
void copyBitmap(HDC hdc, HBITMAP bitmap, int x, int y);

/// In high contrast gives a glyph the one colour that shows on the window colour (grey when
/// disabled), in place; otherwise does nothing. A null bitmap raises the assertion report.
void PrepareGlyphForState(HBITMAP bitmap, bool enabled);

/// Makes a 32-bit picture look disabled, in place.
void greyPicture(HBITMAP bitmap);

}  // namespace QkDlg

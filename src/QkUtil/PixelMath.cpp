#include "QkUtil/PixelMath.h"

namespace QkDlg {

namespace {

constexpr Pixel kColourBits = 0x00FFFFFF;
constexpr Pixel kOpaque = 255;

constexpr Pixel blueOf(Pixel pixel) {
    return pixel & 0xFF;
}
constexpr Pixel greenOf(Pixel pixel) {
    return (pixel >> 8) & 0xFF;
}
constexpr Pixel redOf(Pixel pixel) {
    return (pixel >> 16) & 0xFF;
}
constexpr Pixel alphaOf(Pixel pixel) {
    return pixel >> 24;
}

constexpr Pixel makePixel(Pixel alpha, Pixel red, Pixel green, Pixel blue) {
    return alpha << 24 | red << 16 | green << 8 | blue;
}

constexpr Pixel quantisedAlpha(Pixel alpha) {
    if (alpha <= 20)
        return 0;
    if (alpha <= 192)
        return 192;
    if (alpha <= 224)
        return 224;
    return alpha;
}

}  // namespace

Pixel premultiplied(Pixel pixel) {
    const Pixel alpha = alphaOf(pixel);
    return makePixel(alpha, redOf(pixel) * alpha / kOpaque, greenOf(pixel) * alpha / kOpaque,
                     blueOf(pixel) * alpha / kOpaque);
}

Pixel onWhite(Pixel pixel) {
    const Pixel white = kOpaque - alphaOf(pixel);
    return makePixel(kOpaque, redOf(pixel) + white, greenOf(pixel) + white, blueOf(pixel) + white);
}

Pixel highContrastGlyph(Pixel pixel, std::uint32_t colour) {
    return quantisedAlpha(alphaOf(pixel)) << 24 | (colour & kColourBits);
}

Pixel greyed(Pixel pixel) {
    // Weights of ITU-R BT.601 luma in 256ths.
    const Pixel luma = (77 * redOf(pixel) + 150 * greenOf(pixel) + 29 * blueOf(pixel)) / 256;
    return makePixel(alphaOf(pixel) / 2, luma, luma, luma);
}

}  // namespace QkDlg

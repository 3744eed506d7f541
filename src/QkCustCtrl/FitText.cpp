#include "QkCustCtrl/FitText.h"

namespace QkDlg {

namespace {

constexpr int kSmallestSize = 9;
constexpr int kHeightReserve = 2;
constexpr int kNormalDpi = 96;
constexpr int kRoundingExcess = 3;  // at 96 DPI

int roundingExcess(int dpi) {
    return (kRoundingExcess * dpi + kNormalDpi / 2) / kNormalDpi;
}

}  // namespace

FittedText fitText(int pointSize, Size window, int dpi, const MeasureText& measure) {
    FittedText fitted{pointSize, window};
    Size text = measure(pointSize);
    if (pointSize > kSmallestSize) {
        while (text.width > window.width && fitted.pointSize > kSmallestSize)
            text = measure(--fitted.pointSize);
        if (text.height + kHeightReserve > window.height)
            fitted.window.height = text.height + kHeightReserve;
    }
    const int excess = text.width - window.width;
    if (fitted.pointSize <= kSmallestSize && excess > 0 && dpi > kNormalDpi &&
        excess <= roundingExcess(dpi))
        fitted.window.width = text.width;
    return fitted;
}

}  // namespace QkDlg

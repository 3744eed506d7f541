#include "QkCustCtrl/LiveControls.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "QkUtil/Canvas.h"
#include "QkUtil/Resources.h"
#include "QkUtil/SpareDc.h"

namespace QkDlg {

namespace {

using Controls = std::vector<const QkCustomControl*>;

/// In the order of their addresses.
Controls& liveControls() {
    // Never destroyed: a host's static object may end after this module's.
    static auto& controls = *new Controls;
    return controls;
}

Controls::iterator placeOf(const QkCustomControl* control) {
    return std::ranges::lower_bound(liveControls(), control, std::less<>());
}

bool lives(const QkCustomControl* control) {
    const auto place = placeOf(control);
    return place != liveControls().end() && *place == control;
}

}  // namespace

void LiveControls::add(const QkCustomControl& control) {
    if (!lives(&control))
        liveControls().insert(placeOf(&control), &control);
}

void LiveControls::remove(const QkCustomControl& control) {
    if (lives(&control))
        liveControls().erase(placeOf(&control));
    if (!liveControls().empty())
        return;
    // Nobody is left to paint: a host without flat controls has none of their GDI objects either.
    Canvas::freeKept();
    SpareDc::freeKept();
    FreshPicture::freeKept();
}

QkCustomControl* LiveControls::find(DWORD_PTR referenceData) {
    auto* control = reinterpret_cast<QkCustomControl*>(referenceData);
    return lives(control) ? control : nullptr;
}

}  // namespace QkDlg

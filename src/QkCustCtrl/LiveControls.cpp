#include "QkCustCtrl/LiveControls.h"

#include <unordered_set>

#include "QkUtil/Canvas.h"
#include "QkUtil/SpareDc.h"

namespace QkDlg {

namespace {

std::unordered_set<const QkCustomControl*>& liveControls() {
    // Never destroyed: a host's static object may end after this module's.
    static auto& controls = *new std::unordered_set<const QkCustomControl*>;
    return controls;
}

}  // namespace

void LiveControls::add(const QkCustomControl& control) {
    liveControls().insert(&control);
}

void LiveControls::remove(const QkCustomControl& control) {
    liveControls().erase(&control);
    if (!liveControls().empty())
        return;
    // Nobody is left to paint: a host without flat controls has none of their GDI objects either.
    Canvas::freeKept();
    SpareDc::freeKept();
}

QkCustomControl* LiveControls::find(DWORD_PTR referenceData) {
    auto* control = reinterpret_cast<QkCustomControl*>(referenceData);
    return liveControls().contains(control) ? control : nullptr;
}

}  // namespace QkDlg

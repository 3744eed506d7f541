#include "QkCustCtrl/LiveControls.h"

#include <unordered_set>

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
}

QkCustomControl* LiveControls::find(DWORD_PTR referenceData) {
    auto* control = reinterpret_cast<QkCustomControl*>(referenceData);
    return liveControls().contains(control) ? control : nullptr;
}

}  // namespace QkDlg

#include "Exports/ControlFactory.h"

#include <algorithm>
#include <array>

#include "QkDlg/QkDlg.h"
#include "QkDlg/QkFlatBlueBtn.h"
#include "QkDlg/QkFlatBtn.h"

namespace QkDlg {

namespace {

using ControlPtr = std::unique_ptr<QkCustomControl>;

template <typename Control>
ControlPtr make(UINT id) {
    return std::make_unique<Control>(id);
}

struct TypeRow {
    int type;
    ControlPtr (*make)(UINT id);
};

constexpr std::array kTypes{
    TypeRow{QK_PUSH_BUTTON, &make<QkFlatBtn>},
    TypeRow{QK_BLUE_BUTTON, &make<QkFlatBlueBtn>},
};

}  // namespace

std::unique_ptr<QkCustomControl> makeControl(int type, UINT id) {
    const auto* const row = std::find_if(kTypes.begin(), kTypes.end(),
                                         [type](const TypeRow& each) { return each.type == type; });
    return row != kTypes.end() ? row->make(id) : make<QkFlatBtn>(id);
}

}  // namespace QkDlg

#include "Exports/ControlFactory.h"

#include <algorithm>
#include <array>

#include "QkDlg/QkDlg.h"
#include "QkDlg/QkFlatBlueBtn.h"
#include "QkDlg/QkFlatBtn.h"
#include "QkDlg/QkFlatCheckbox.h"
#include "QkDlg/QkFlatComboBoxDropdownList.h"
#include "QkDlg/QkFlatDropBtn.h"
#include "QkDlg/QkFlatEdit.h"
#include "QkDlg/QkFlatPassword.h"
#include "QkDlg/QkFlatProgressBar.h"
#include "QkDlg/QkFlatRadio.h"
#include "QkDlg/QkFlatSettingsBtn.h"
#include "QkDlg/QkFlatSplitBtn.h"
#include "QkDlg/QkFlatStaticText.h"
#include "QkDlg/QkFlatToggleBtn.h"

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
    TypeRow{QK_SETTINGS_BUTTON, &make<QkFlatSettingsBtn>},
    TypeRow{QK_SPLIT_BUTTON, &make<QkFlatSplitBtn>},
    TypeRow{QK_DROP_BUTTON, &make<QkFlatDropBtn>},
    TypeRow{QK_RADIO_BUTTON, &make<QkFlatRadio>},
    TypeRow{QK_CHECK_BOX, &make<QkFlatCheckbox>},
    TypeRow{QK_TOGGLE, &make<QkFlatToggleBtn>},
    TypeRow{QK_STATIC_TEXT, &make<QkFlatStaticText>},
    TypeRow{QK_EDIT, &make<QkFlatEdit>},
    TypeRow{QK_PROGRESS_BAR, &make<QkFlatProgressBar>},
    TypeRow{QK_PASSWORD, &make<QkFlatPassword>},
    TypeRow{QK_COMBO_DROPDOWN_LIST, &make<QkFlatComboBoxDropdownList>},
};

}  // namespace

std::unique_ptr<QkCustomControl> makeControl(int type, UINT id) {
    const auto row = std::ranges::find(kTypes, type, &TypeRow::type);
    return row != kTypes.end() ? row->make(id) : make<QkFlatBtn>(id);
}

}  // namespace QkDlg

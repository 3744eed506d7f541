#pragma once

#include <optional>
#include <vector>

#include "QkDlg/QkXML.h"
#include "QkXFlatDlg/FlatChoice.h"

namespace QkDlg {

/// What the host's descriptions say of one dialog.
struct DialogDescription {
    bool autogen = false;
    std::vector<ControlDescription> records;  ///< one for each control, in document order
};

/// The description of the dialog with that template id: the first one of several, nothing when
/// there is none.
[[nodiscard]] std::optional<DialogDescription> readDialogDescription(const QkXML& descriptions,
                                                                     std::uint32_t templateId);

}  // namespace QkDlg

#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "QkDlg/QkXML.h"
#include "QkXFlatDlg/FlatConversion.h"

namespace QkPreview {

/// One line about a control of an open dialog: its id, its class, and its flat control or why it
/// stayed as it was.
[[nodiscard]] std::wstring describeChild(const QkDlg::ConvertedChild& child);

/// The ids of the controls of each dialog template, by the template's number.
using TemplateIds = std::map<std::uint32_t, std::set<std::uint32_t>>;

/// What in a dialog description has no effect because no template, or no control of the template,
/// has its id. One line each.
[[nodiscard]] std::vector<std::wstring> unmatchedDescriptions(const QkDlg::QkXML& descriptions,
                                                              const TemplateIds& templates);

}  // namespace QkPreview

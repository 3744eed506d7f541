#include "QkDlg/FontFace.h"

#include <functional>
#include <set>

namespace QkDlg {

FontFace::FontFace(std::wstring_view name) {
    // Never destroyed: a host's static object may end after this module's.
    static auto& all = *new std::set<std::wstring, std::less<>>;
    auto known = all.find(name);
    if (known == all.end())
        known = all.emplace(name).first;
    m_name = &*known;
}

}  // namespace QkDlg

#include "QkXML/XmlErrorText.h"

#include <array>

namespace QkDlg {

QkXMLString formatErrorText(QkXMLStringView pattern, const QkXMLError& error) {
    const std::array<std::size_t, 2> offsets{error.offset, error.endOffset};
    std::size_t used = 0;
    QkXMLString text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const QkXMLChar kind = pattern[i] == '%' && i + 1 < pattern.size() ? pattern[i + 1] : u'\0';
        if (kind == 's') {
            text += error.tagName;
        } else if (kind == 'd' && used < offsets.size()) {
            const std::string digits = std::to_string(offsets[used++]);
            text.append(digits.begin(), digits.end());
        } else {
            text += pattern[i];
            continue;
        }
        ++i;
    }
    return text;
}

}  // namespace QkDlg

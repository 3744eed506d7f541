#include "QkXML/DialogDefaults.h"

namespace QkDlg {

DialogDefaults& dialogDefaults() {
    static DialogDefaults defaults;
    return defaults;
}

const std::wstring& defaultFontFace() {
    static const std::wstring libraryFace = L"Segoe UI";
    const std::wstring& described = dialogDefaults().fontFace;
    return described.empty() ? libraryFace : described;
}

int defaultFontSize() {
    return dialogDefaults().fontSize;
}

}  // namespace QkDlg

#include "QkDlg/DialogFonts.h"
#include "QkUtil/OsVersion.h"
#include "QkXML/DialogDefaults.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kBadBuffer{"src/DlgFont", 55};
constexpr int kNormalWeight = 400;

}  // namespace

bool GetDialogFont(wchar_t* faceOut, int faceCapacity, int& sizeOut) {
    if (!faceOut || faceCapacity < LF_FACESIZE)
        QkLib::reportAssertFailure(kBadBuffer);
    *faceOut = L'\0';
    sizeOut = 0;
    if (!osVersion().atLeast60)
        return false;
    loadDialogDefaults();
    if (GetFont(defaultFontSize(), defaultFontFace(), kNormalWeight, 0)) {
        lstrcpynW(faceOut, defaultFontFace().c_str(), faceCapacity);
        sizeOut = defaultFontSize();
    } else {
        LOGFONTW message{};
        sizeOut = GetSystemMessageFont(message);
        lstrcpynW(faceOut, &message.lfFaceName[0], faceCapacity);
    }
    return *faceOut != L'\0' && sizeOut != 0;
}

}  // namespace QkDlg

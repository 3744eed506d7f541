#include "QkXML/DialogDefaults.h"

#include <utility>

#include "QkDlg/QkXAppGlobals.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNoDefaultName{"src/QkXDlg", 312};
constexpr QkLib::AssertSite kNoOriginal{"src/QkXDlg", 324};
constexpr QkLib::AssertSite kNoSubstitute{"src/QkXDlg", 331};
constexpr QkLib::AssertSite kNoPairName{"src/QkXDlg", 338};
constexpr QkLib::AssertSite kNoSubstituteSize{"src/QkXDlg", 341};

constexpr wchar_t kResourceName[] = L"DLG_XML";
constexpr int kDefaultSize = 9;
constexpr int kNoSize = -1;

struct Descriptions {
    QkXML document;
    bool given = false;         ///< set by the host, not read from a resource
    bool defaultsRead = false;  ///< the defaults are those of the document
};

Descriptions& descriptions() {
    // Never destroyed: a host's static object may end after this module's.
    static auto& all = *new Descriptions;
    return all;
}

bool loadResource(QkXML& document) {
    const QkXAppGlobals& globals = AppGlobals();
    return LoadXmlResource(globals.GetModule(HostModule::Resource), kResourceName, document) ||
           LoadXmlResource(globals.GetModule(HostModule::Instance), kResourceName, document);
}

void readDefaultFont(const QkXMLElement& font) {
    std::wstring name = GetAttribute(font, L"name");
    if (name.empty())
        QkLib::reportAssertFailure(kNoDefaultName);
    dialogDefaults() = {std::move(name), GetAttributeInt(font, L"size", kDefaultSize)};
}

/// One side of a pair of fonts.
const QkXMLElement& requireSide(const QkXMLElement& pair, const wchar_t* name,
                                const QkLib::AssertSite& missing) {
    const QkXMLElement* side = FindChild(pair, name);
    if (!side)
        QkLib::reportAssertFailure(missing);
    return *side;
}

/// Pairs of fonts have to be whole, and have no effect.
void checkPair(const QkXMLElement& pair) {
    const QkXMLElement& original = requireSide(pair, L"orig", kNoOriginal);
    const QkXMLElement& substitute = requireSide(pair, L"subst", kNoSubstitute);
    if (GetAttribute(original, L"name").empty() || GetAttribute(substitute, L"name").empty())
        QkLib::reportAssertFailure(kNoPairName);
    if (GetAttributeInt(original, L"size", kNoSize) != kNoSize &&
        GetAttributeInt(substitute, L"size", kNoSize) == kNoSize)
        QkLib::reportAssertFailure(kNoSubstituteSize);
}

void readFonts(const QkXMLElement& fonts) {
    if (const QkXMLElement* font = FindChild(fonts, L"default"))
        readDefaultFont(*font);
    QkXMLConstElements pairs;
    GetChildren(fonts, pairs, L"font");
    for (const QkXMLElement* pair : pairs)
        checkPair(*pair);
}

}  // namespace

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

void loadDialogDefaults() {
    Descriptions& all = descriptions();
    if (std::exchange(all.defaultsRead, true))
        return;
    if (!all.given && !loadResource(all.document))
        return;
    const QkXMLElement* defaults = FindChild(all.document, L"defaults");
    const QkXMLElement* fonts = defaults ? FindChild(*defaults, L"fonts") : nullptr;
    if (fonts)
        readFonts(*fonts);
}

const QkXML& dialogDescriptions() {
    return descriptions().document;
}

bool setDialogDescriptions(QkXMLStringView text) {
    QkXML document;
    if (!LoadFromText(document, text))
        return false;
    descriptions() = {std::move(document), true, false};
    return true;
}

}  // namespace QkDlg

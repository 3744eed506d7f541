#include "QkDlg/QkXML.h"
#include "QkUtil/Resources.h"
#include "QkXML/XmlErrorText.h"

namespace QkDlg {

namespace {

class DocumentReceiver final : public TextReceiver {
public:
    explicit DocumentReceiver(QkXML& document) : document_(document) {}
    bool Parse(const std::wstring& text) override { return LoadFromText(document_, text); }

private:
    QkXML& document_;
};

}  // namespace

bool LoadXmlResource(HMODULE module, const wchar_t* resourceName, QkXML& document) {
    document.Clear();
    DocumentReceiver receiver(document);
    return LoadResourceText(module, resourceName, receiver);
}

bool LoadResourceText(HMODULE module, const wchar_t* name, QkXML& document) {
    return LoadXmlResource(module, name, document);
}

std::wstring GetErrorText(const QkXMLError& error) {
    return formatErrorText(LoadStringResource(static_cast<UINT>(error.id)), error);
}

}  // namespace QkDlg

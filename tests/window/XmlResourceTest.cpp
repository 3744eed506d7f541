#include "QkDlg/QkXML.h"
#include "support/ChildProcess.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

const wchar_t* const kNull = nullptr;
QkXMLElement element(L"e");
const BrokenContract kContracts[] = {
    {"src/QkXML", 62, [] { (void)LoadFromText(*std::make_unique<QkXML>(), kNull); }},
    {"src/QkXML", 118, [] { (void)FindChild(element, kNull); }},
    {"src/QkXML", 164, [] { (void)ChildAt(QkXMLElements{&element}, 1); }},
    {"src/QkXML", 203, [] { (void)GetAttributeInt(element, kNull); }},
    {"src/QkXML", 241, [] { SetAttributeInt(element, kNull, 1); }},
    {"src/QkXML", 277, [] { AppendChild(element, nullptr); }},
};

TEST(XmlResource, LoadsWhatIsThereAndIsText) {
    QkXML document;
    EXPECT_TRUE(LoadResourceText(nullptr, L"XML_MARKED", document));
    EXPECT_EQ(GetAttribute(*FindChild(document, L"a"), L"n"), L"\u00C4");
    const std::pair<const wchar_t*, int> bad[] = {
        {L"XML_EMPTY", 62003}, {L"XML_WITH_ZERO", 62097}, {L"XML_NOT_UTF8", 0}, {L"NONE", 0}};
    for (const auto& [name, id] : bad) {
        AppendChild(document, std::make_unique<QkXMLElement>(L"old"));
        EXPECT_FALSE(LoadXmlResource(nullptr, name, document)) << testing::PrintToString(name);
        EXPECT_TRUE(document.Children().empty());
        EXPECT_EQ(document.LastError() ? document.LastError()->id : 0, id);
    }
}

TEST(XmlResource, EachErrorHasItsText) {
    EXPECT_EQ(GetErrorText({.id = 62001}), L"Root element has sibling");
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"<!-- -->", L"No root element"},
        {L" \n", L"Empty document"},
        {L"<a></b>", L"Lone end tag 'b' at offset 3"},
        {L"<a><b></a>", L"Start tag 'b' at offset 3 expecting end tag at offset 6"},
        {L"<a/><b c='1'", L"Unterminated tag at offset 4"},
        {L"<a>< ", L"Tag syntax error at offset 4 expecting tag name / ! or ?"},
        {L"<!x>", L"Tag syntax error at offset 2 expecting 'DOCTYPE' [ or -"},
        {L"<!DOCTYPE a [<b>]>", L"Tag syntax error at offset 14 expecting markup declaration"},
        {L"<a><!-x", L"Tag syntax error at offset 6 expecting - to begin comment"},
        {L"<a><![X", L"Tag syntax error at offset 6 expecting 'CDATA'"}};
    QkXML document;
    for (const auto& [text, error] : cases) {
        ASSERT_FALSE(LoadFromText(document, text));
        EXPECT_EQ(GetErrorText(*document.LastError()), error);
    }
}

}  // namespace

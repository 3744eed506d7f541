#include "QkDlg/QkXML.h"

#include <gmock/gmock.h>

#include "QkXML/XmlErrorText.h"

#ifdef _WIN32
#define X(text) L##text
#else
#define X(text) u##text
#endif

namespace {

using namespace QkDlg;

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n";

QkXML loaded(QkXMLStringView text) {
    QkXML document;
    EXPECT_TRUE(LoadFromText(document, text));
    return document;
}

QkXMLElement& append(QkXMLParent& node, QkXMLStringView name, QkXMLStringView text = {}) {
    return AppendChild(node, std::make_unique<QkXMLElement>(name, text));
}

TEST(QkXML, KeepsNamesAttributesTextAndOrder) {
    QkXML document = loaded(
        X("<!-- two roots --><a z='1' b='&lt;&#xE4;'> x<b/><![CDATA[<&]]>y&amp;<!-- --> </a><a/>"));
    QkXMLElement& first = *FindChild(document, X("a"));
    SetAttribute(first, X("z"), {});
    SetAttributeInt(first, X("i"), -2147483647 - 1);
    EXPECT_EQ(GetAttribute(first, X("z"), X("default")), X("")) << "empty is not missing";
    EXPECT_EQ(GetAttribute(first, X("Z"), X("default")), X("default"));
    EXPECT_EQ(Save(document), kDeclaration +
                                  "<a z=\"\" b=\"&lt;\xC3\xA4\" i=\"-2147483648\">"
                                  " x&lt;&amp;y&amp; <b/></a><a/>");
    // A text may belong to the tree itself: it goes only after it was read.
    EXPECT_TRUE(LoadFromText(document, append(document, X("t"), X("<in-old-tree/>")).Text()));
    EXPECT_EQ(Save(document), kDeclaration + "<in-old-tree/>");
}

TEST(QkXML, WhatWasSavedLoadsAsTheSameTree) {
    QkXML document;
    EXPECT_EQ(Save(document), kDeclaration);
    QkXMLElement& root = append(document, X("r"), X("]]>\r\n\t <&"));
    SetAttribute(root, X("a"), X("\"'<&\r\n\t "));
    append(append(root, X("c")), X("d"));
    const std::string bytes = Save(document).value();
    const QkXML again = loaded(QkXMLString(bytes.begin(), bytes.end()));
    EXPECT_EQ(GetChildText(again, X("r")), root.Text());
    EXPECT_EQ(GetAttribute(*FindChild(again, X("r")), X("a")), GetAttribute(root, X("a")));
    EXPECT_EQ(Save(again), bytes);
    append(root, X("no name"));
    EXPECT_EQ(Save(document), std::nullopt);
}

TEST(QkXML, LooksAmongTheDirectChildrenOnly) {
    QkXML root = loaded(X("<x><d/></x><c n='1'>one</c><C/><c n='2'/><e/>"));
    EXPECT_EQ(GetChildText(root, X("d"), X("default")), X("default"));
    EXPECT_EQ(GetChildText(root, X("c"), X("d")), X("one"));
    EXPECT_EQ(GetChildText(root, X("e"), X("d")), X("")) << "an empty child is no missing one";
    QkXMLElements found{FindChild(root, X("e"))};
    GetChildren(root, found, X("c"));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(GetAttributeInt(ChildAt(found, 1), X("n")), 2);
}

TEST(QkXML, ConvertsIntegersAsTheCLibraryDoes) {
    const std::pair<int, std::vector<QkXMLStringView>> cases[] = {
        {0, {X("abc"), X(""), X("- 5"), X("0x10"), X("\u0661")}},
        {9, {X(" \t\r\n\v\f+9px"), X("00000000000000000009 9")}},
        {-7, {X("2147483648"), X("-2147483649"), X("99999999999999999999999999"), X("-7")}},
        {2147483647, {X("2147483647")}},
        {-2147483647 - 1, {X("-2147483648")}}};
    QkXMLElement element(X("e"));
    EXPECT_EQ(GetAttributeInt(element, X("size"), -7), -7);
    for (const auto& [value, texts] : cases)
        for (const QkXMLStringView text : texts) {
            SetAttribute(element, X("size"), text);
            EXPECT_EQ(GetAttributeInt(element, X("size"), -7), value);
        }
}

TEST(QkXML, AFailedLoadEmptiesAndExplains) {
    QkXML document = loaded(X("<old/>"));
    EXPECT_FALSE(LoadFromText(document, X("<a>\n<b></a>")));
    EXPECT_TRUE(document.Children().empty());
    EXPECT_EQ(formatErrorText(X("%d%% %s %d %d%"), document.LastError().value()), X("4%% b 7 %d%"));
    EXPECT_EQ(formatErrorText(X("'%s' %d"), {.tagName = X("%d%n")}), X("'%d%n' 0"));
}

TEST(QkXML, DepthCostsNoStack) {
    QkXML document;
    QkXMLParent* deepest = &document;
    for (int i = 0; i < 100'000; ++i)
        deepest = &append(*deepest, X("d"));
    const std::string bytes = Save(document).value();
    EXPECT_EQ(Save(loaded(QkXMLString(bytes.begin(), bytes.end()))), bytes);
}

}  // namespace

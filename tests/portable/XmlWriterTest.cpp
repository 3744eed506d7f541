#include "xml/XmlWriter.h"

#include <gtest/gtest.h>

#include <functional>

namespace QkDlg {
namespace {

using namespace std::string_view_literals;

std::string written(const std::function<void(XmlWriter&)>& content) {
    XmlWriter writer;
    writer.startElement(u"a");
    content(writer);
    writer.endElement();
    return writer.finish().value_or("failed");
}

TEST(XmlWriter, Escapes) {
    struct Case {
        std::u16string_view content;
        std::string_view attribute, text, cdata;
    };
    const Case cases[] = {
        {u"", R"(<a b=""/>)", "<a/>", "<a><![CDATA[]]></a>"},
        {u"<&>\"'", R"(<a b="&lt;&amp;&gt;&quot;'"/>)", R"(<a>&lt;&amp;&gt;"'</a>)",
         R"(<a><![CDATA[<&>"']]></a>)"},
        {u"1\r\n2\t3", R"(<a b="1&#13;&#10;2&#9;3"/>)", "<a>1&#13;\n2\t3</a>",
         "<a><![CDATA[1]]>&#13;<![CDATA[\n2\t3]]></a>"},
        {u"x]]>y", R"(<a b="x]]&gt;y"/>)", "<a><![CDATA[x]]]]><![CDATA[>y]]></a>",
         "<a><![CDATA[x]]]]><![CDATA[>y]]></a>"},
        {u"]]]]>>]]>", R"(<a b="]]]]&gt;&gt;]]&gt;"/>)",
         "<a><![CDATA[]]]]]]><![CDATA[>>]]]]><![CDATA[>]]></a>",
         "<a><![CDATA[]]]]]]><![CDATA[>>]]]]><![CDATA[>]]></a>"},
        {u"]]>\r", R"(<a b="]]&gt;&#13;"/>)", "<a><![CDATA[]]]]><![CDATA[>]]>&#13;<![CDATA[]]></a>",
         "<a><![CDATA[]]]]><![CDATA[>]]>&#13;<![CDATA[]]></a>"},
        {u"\u00E4\u20AC\U0001F600\uFFFD",
         "<a b=\"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD\"/>",
         "<a>\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD</a>",
         "<a><![CDATA[\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD]]></a>"},
    };
    for (const Case& each : cases) {
        const std::string attribute =
            written([&](XmlWriter& writer) { writer.attribute(u"b", each.content); });
        const std::string text = written([&](XmlWriter& writer) { writer.text(each.content); });
        const std::string cdata = written([&](XmlWriter& writer) { writer.cdata(each.content); });
        EXPECT_EQ(attribute, each.attribute);
        EXPECT_EQ(text, each.text);
        EXPECT_EQ(cdata, each.cdata);
    }
    EXPECT_EQ(written([](XmlWriter& writer) { return writer.text(u"]]") && writer.text(u">"); }),
              "<a>]]&gt;</a>");
    // Longer than what is gathered before it is appended, with an escape at every place.
    std::u16string longText(700, u'\u20AC');
    for (std::size_t i = 0; i < longText.size(); i += 7)
        longText[i] = u'&';
    XmlDocument document;
    ASSERT_FALSE(document.parseBytes(written([&](XmlWriter& writer) { writer.text(longText); })));
    EXPECT_EQ(document.find(u"a").text(), longText);
}

TEST(XmlWriter, RefusesWhatXmlCannotHold) {
    constexpr std::u16string_view zero{u"\0", 1};
    constexpr std::u16string_view half{u"x\xD800", 2};
    using Step = std::function<bool(XmlWriter&)>;
    const std::pair<const char*, Step> cases[] = {
        {"no name", [](XmlWriter& to) { return to.startElement(u""); }},
        {"a digit first", [](XmlWriter& to) { return to.startElement(u"1a"); }},
        {"markup in a name", [](XmlWriter& to) { return to.attribute(u"b='' c", u""); }},
        {"half a pair in a name", [=](XmlWriter& to) { return to.startElement(half); }},
        {"zero", [=](XmlWriter& to) { return to.text(zero); }},
        {"control", [](XmlWriter& to) { return to.attribute(u"b", u"\x1B"); }},
        {"half a pair", [=](XmlWriter& to) { return to.cdata(half); }},
        {"no character", [](XmlWriter& to) { return to.comment(u"\xFFFF"); }},
        {"comment", [](XmlWriter& to) { return to.comment(u"a--b"); }},
        {"end of comment", [](XmlWriter& to) { return to.comment(u"-"); }},
        {"line end in comment", [](XmlWriter& to) { return to.comment(u"\r"); }},
        {"same attribute",
         [](XmlWriter& to) {
             return to.attribute(u"b", u"1") && to.attribute(u"b", u"1") && to.text(u"x");
         }},
        {"late attribute", [](XmlWriter& to) { return to.text(u"x") && to.attribute(u"b", u"1"); }},
        {"late declaration", [](XmlWriter& to) { return to.declaration(); }},
        {"text outside", [](XmlWriter& to) { return to.endElement() && to.text(u"x"); }},
        {"one end too many", [](XmlWriter& to) { return to.endElement() && to.endElement(); }},
    };
    for (const auto& [what, step] : cases) {
        XmlWriter writer;
        ASSERT_TRUE(writer.startElement(u"a"));
        EXPECT_FALSE(step(writer)) << what;
        EXPECT_FALSE(writer.endElement()) << what << ": a fault is not forgotten";
        EXPECT_TRUE(writer.failed()) << what;
        EXPECT_FALSE(writer.finish()) << what;
    }
    XmlWriter open;
    EXPECT_TRUE(open.startElement(u"a"));
    EXPECT_FALSE(open.finish());
    XmlWriter twice;
    EXPECT_TRUE(twice.startElement(u"a") && twice.attribute(u"b", u"") &&
                twice.attribute(u"b", u""));
    EXPECT_FALSE(twice.endElement()) << "an empty element's attributes are looked at, too";
}

TEST(XmlWriter, WritesWholeDocumentsAndParts) {
    constexpr std::string_view kTop =
        "<!--c--><a b=\"1\" c=\"\"><d/>t<d>&lt;<e/></d><![CDATA[&]]></a><f/>";
    XmlDocument document;
    ASSERT_FALSE(document.parseBytes(kTop));
    EXPECT_EQ(writeDocument(document),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n" + std::string(kTop));
    EXPECT_EQ(writeDocument(XmlDocument()), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n");

    XmlWriter writer;
    const XmlNode a = document.find(u"a");
    EXPECT_TRUE(writer.startElement(u"x") && writer.node(a.child(u"d")) &&
                writer.node(a.child(u"d").next(u"d")) && writer.endElement());
    EXPECT_EQ(writer.finish(), "<x><d/><d>&lt;<e/></d></x>");
    EXPECT_TRUE(writer.declaration()) << "as new";

    // Linear where each terminator splits a section: quadratic takes minutes.
    std::u16string terminators;
    for (int i = 0; i < 300'000; ++i)
        terminators += u"]]>";
    const std::string text = written([&](XmlWriter& out) { out.text(terminators); });
    ASSERT_FALSE(document.parseBytes(text));
    EXPECT_EQ(document.find(u"a").text(), terminators);
    EXPECT_EQ(document.nodeCount(), 2U) << "a split section is one again";
}

}  // namespace
}  // namespace QkDlg

#include <gtest/gtest.h>

#include <ostream>

#include "xml/XmlWriter.h"

namespace QkDlg {

void PrintTo(XmlCause cause, std::ostream* out) {
    *out << "cause " << static_cast<int>(cause);
}
void PrintTo(XmlErrorId id, std::ostream* out) {
    *out << static_cast<int>(id);
}

namespace {

using namespace std::string_view_literals;
using enum XmlErrorId;
using enum XmlCause;

// name(attribute=value ...){children}, and the other kinds as name:value.
std::u16string outline(XmlNode node) {
    std::u16string out(node.name());
    for (std::size_t i = 0; i < node.attributeCount(); ++i)
        out.append(i == 0 ? u"(" : u" ")
            .append(node.attribute(i).name)
            .append(u"=")
            .append(node.attribute(i).value);
    if (node.attributeCount() > 0)
        out += u')';
    if (node.kind() != XmlNodeKind::Element && node.kind() != XmlNodeKind::Document)
        return out.append(u":").append(node.value());
    for (const XmlNode child : node.children())
        out.append(child == node.firstChild() ? u"{" : u"|").append(outline(child));
    return node.firstChild() ? out + u'}' : out;
}

std::u16string read(std::string_view bytes) {
    XmlDocument document;
    const auto error = document.parseBytes(bytes);
    return error ? u"error" : outline(document.root());
}

// XmlResourceTest has one document for each text of an error; these are the other ways to them.
TEST(XmlParser, ReportsTheFirstFaultWithItsPlace) {
    struct Case {
        std::u16string_view text;
        XmlErrorId id;
        std::size_t offset, offset2, position;
        std::u16string_view tagName = {};
        XmlCause cause = Syntax;
        bool strict = false;
    };
    const Case cases[] = {
        {u"<a/>\n<b/>", RootHasSibling, 0, 0, 5, u"", Syntax, true},
        {u"<?xml version='1.0'?><!DOCTYPE a><!-- c -->", NoRootElement, 0, 0, 43},
        {u"no document", NoRootElement, 0, 0, 0, u"", BadText},
        {u"", EmptyDocument, 0, 0, 0},
        {u"\uFEFF \r\n\t", EmptyDocument, 0, 0, 4},
        {u"<a><b c='d'><e></a>", MissingEndTag, 12, 15, 18, u"e"},
        {u"<ab><abc></ab></abc>", MissingEndTag, 4, 9, 13, u"abc"},
        {u" <a b='c'", UnterminatedTag, 1, 0, 9},
        {u"<a/ >", UnterminatedTag, 0, 0, 3},
        {u"<a><![CDATA[ ]]</a>", UnterminatedTag, 3, 0, 19},
        {u"<a/><?b?c?>", UnterminatedTag, 4, 0, 7, u"", BadInstruction},
        {u"<!DOCTYPE a [<!ELEMENT a '>'>]", UnterminatedTag, 0, 0, 30},
        {u"<a><", ExpectingTagName, 4, 0, 4},
        {u"<?", ExpectingTagName, 2, 0, 2},
        {u"<a/><!DOCTYPE a>", ExpectingDoctype, 6, 0, 13},
        {u"<!DOCTYPE a [<!ENTITY e \"]>\"><!BAD>]><a/>", ExpectingMarkupDeclaration, 31, 0, 31},
        {u"<a><![CDAT[c]]></a>", ExpectingCData, 6, 0, 10},
        // What only comes near one of the texts.
        {u"<a b='1' c='2' b='3'/>", UnterminatedTag, 0, 0, 15, u"", DuplicateAttribute},
        {u"<a b='1'c='2'/>", UnterminatedTag, 0, 0, 8, u"", BadAttribute},
        {u"<a b=c/>", UnterminatedTag, 0, 0, 5, u"", BadAttribute},
        {u"<a b='<'/>", UnterminatedTag, 0, 0, 6, u"", BadAttribute},
        {u"<a>&nbsp;</a>", ExpectingMarkupDeclaration, 3, 0, 8, u"", BadReference},
        {u"<a b='&#xD800;'/>", ExpectingMarkupDeclaration, 6, 0, 13, u"", BadReference},
        {u"<a>&#99999999999999999999;</a>", ExpectingMarkupDeclaration, 3, 0, 25, u"",
         BadReference},
        {u"<a>]]></a>", ExpectingMarkupDeclaration, 3, 0, 3, u"", BadText},
        {u"<a/>b", ExpectingMarkupDeclaration, 4, 0, 4, u"", BadText},
        {u"<a/><![CDATA[]]>", ExpectingMarkupDeclaration, 4, 0, 4, u"", BadText},
        {u"<a><!-- -- --></a>", UnterminatedTag, 3, 0, 10, u"", BadComment},
        {u" <?xml version='1.0'?><a/>", UnterminatedTag, 1, 0, 6, u"", BadDeclaration},
        {u"<?xml encoding='UTF-8'?><a/>", UnterminatedTag, 0, 0, 0, u"", BadDeclaration},
        {{u"<a>t</a>\0", 9}, ExpectingMarkupDeclaration, 8, 0, 8, u"", BadCharacter},
        {u"<a>\xFFFE", ExpectingMarkupDeclaration, 3, 0, 3, u"", BadCharacter},
        {{u"<a b='\xD83D'/>", 9}, ExpectingMarkupDeclaration, 6, 0, 6, u"", BadCharacter},
        {{u"<a>\xDE00\xD83D</a>", 9}, ExpectingMarkupDeclaration, 3, 0, 3, u"", BadCharacter},
        {{u"<a><b></a>\0", 11}, MissingEndTag, 3, 6, 9, u"b"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(testing::PrintToString(each.text));
        XmlDocument document;
        EXPECT_FALSE(document.parseText(u"<old/>"));
        const auto error = document.parseText(each.text, {.singleRoot = each.strict});
        ASSERT_TRUE(error);
        EXPECT_EQ(error->id, each.id);
        EXPECT_EQ(error->offset, each.offset);
        EXPECT_EQ(error->offset2, each.offset2);
        EXPECT_EQ(error->position, each.position);
        EXPECT_EQ(error->tagName, each.tagName);
        EXPECT_EQ(error->cause, each.cause);
        EXPECT_EQ(document.nodeCount(), 0U);
    }
}

TEST(XmlParser, BuildsTheTree) {
    const std::pair<std::string_view, std::u16string_view> cases[] = {
        {"<a/>\n <b/>", u"{a|b}"},
        {"<a  b = '1'\n c=\"'\"  ></a  >", u"{a(b=1 c=')}"},
        {"<a> t <b/>\n</a>", u"{a{#text: t |b|#text:\n}}"},
        {"<a>&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#x1f600;</a>", u"{a{#text:<>&\"'AB\U0001F600}}"},
        {"<a b='&lt;&#10;&#9;x'/>", u"{a(b=<\n\tx)}"},
        {"<a b='1\r\n2\r3\n4\t5'/>", u"{a(b=1 2 3 4 5)}"},
        {"<a>1\r\n2\r3\r\r\n&#13;</a>", u"{a{#text:1\n2\n3\n\n\r}}"},
        {"<a><!--\r\n--><![CDATA[\r<&amp;>]]></a>", u"{a{#comment:\n|#cdata-section:\n<&amp;>}}"},
        {"<!--1--><a>x<!--2-->y</a><!---->",
         u"{#comment:1|a{#text:x|#comment:2|#text:y}|#comment:}"},
        {"<a>x<?p y?>&lt;<?p?>z</a>", u"{a{#text:x<z}}"},
        {"<a><![CDATA[]]></a>", u"{a{#cdata-section:}}"},
        {"<a><![CDATA[x]]]]><![CDATA[>y]]>z</a>", u"{a{#cdata-section:x]]>y|#text:z}}"},
        {"<a>]] ]>]</a>", u"{a{#text:]] ]>]}}"},
        {"<!DOCTYPE a SYSTEM 's>' [ <!-- ]> --> <?p ]>?> %e; <!ENTITY x ']>'> ] ><a/>", u"{a}"},
        {"<x:\xC3\xA4-1 \xF0\x90\x80\x80='\xE2\x82\xAC'/>", u"{x:\u00E4-1(\U00010000=\u20AC)}"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(read(text), expected) << text;
}

TEST(XmlParser, ReadsEveryEncodingItClaims) {
    const std::pair<std::string_view, std::u16string_view> cases[] = {
        {"\xEF\xBB\xBF<a>\xE2\x82\xAC</a>", u"{a{#text:\u20AC}}"},
        {"<?xml version='1.0' encoding='utf-8'?><a>\xC3\xA4</a>", u"{a{#text:\u00E4}}"},
        {"\xFF\xFE<\0a\0>\0\xAC\x20=\xD8\0\xDE<\0/\0a\0>\0"sv, u"{a{#text:\u20AC\U0001F600}}"},
        {"\0<\0a\0/\0>"sv, u"{a}"},
        {" \0<\0a\0/\0>\0"sv, u"{a}"},
        {"<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><a>\x80\xE4</a>",
         u"{a{#text:\u0080\u00E4}}"},
        {"<?xml version='1.0' encoding='Windows-1252'?><a>\x80\x99\xE4</a>",
         u"{a{#text:\u20AC\u2122\u00E4}}"},
        {"<?xml version='1.0' encoding='US-ASCII'?><a>\xE4</a>", u"error"},
        {"<?xml version='1.0' encoding='KOI8-R'?><a/>", u"error"},
        {"<?xml version='1.0' encoding='UTF-16'?><a/>", u"error"},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><a/>", u"error"},
        {"<a/>\xC0\xAF", u"error"},         // longer than needed
        {"<a>\xED\xA0\x80</a>", u"error"},  // a surrogate
        {"<a>\xF4\x90\x80\x80</a>", u"error"},
        {"<a>\xE2\x82</a>", u"error"},
        {"<a/>\xE2\x82", u"error"},
        {"<\0a\0/\0>\0\n"sv, u"error"},  // half a unit
    };
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(read(bytes), expected) << testing::PrintToString(bytes);
    XmlDocument document;
    const auto bad = document.parseBytes("\xEF\xBB\xBF<a>\xF0\x9F\x98\x80\xFF");
    ASSERT_TRUE(bad);
    EXPECT_EQ(bad->cause, BadEncoding);
    EXPECT_EQ(bad->offset, 5U) << "counted in UTF-16 behind the mark";
    const auto unknown = document.parseBytes("<?xml version='1.0' encoding='what'?><a/>");
    ASSERT_TRUE(unknown);
    EXPECT_EQ(unknown->cause, UnknownEncoding);
    EXPECT_EQ(unknown->offset, 30U);
    EXPECT_FALSE(document.parseText(u"<?xml version='1.0' encoding='what'?><a/>"));
}

// The block-wise look at the characters must not miss one at any place of a block.
TEST(XmlParser, FindsABadCharacterAtEveryPlace) {
    for (std::size_t place = 0; place < 100; ++place) {
        std::string bytes = "<a>" + std::string(100, 'x') + "</a>";
        XmlDocument document;
        for (const char bad : {'\0', '\x1F', '\x80'}) {
            bytes[3 + place] = bad;
            const auto error = document.parseBytes(bytes);
            ASSERT_TRUE(error) << place;
            EXPECT_EQ(error->offset, 3 + place);
        }
        std::u16string text(bytes.begin(), bytes.end());
        for (const char16_t bad : {u'\0', u'\xB', u'\xD800', u'\xFFFF'}) {
            text[3 + place] = bad;
            const auto error = document.parseText(text);
            ASSERT_TRUE(error) << place;
            EXPECT_EQ(error->offset, 3 + place);
        }
    }
}

TEST(XmlDocument, IsWalkedAndSearched) {
    XmlDocument document;
    ASSERT_FALSE(document.parseText(
        u"<a x='1' y=''/><b>1<c>2</c><!--3--><![CDATA[4]]><c i='2'/><cc/></b><a/>"));
    const XmlNode b = document.root().child(u"b");
    EXPECT_EQ(b.text(), u"14") << "not what is inside children, not comments";
    EXPECT_EQ(b.offset(), 15U);
    const XmlNode c = b.child(u"c");
    EXPECT_EQ(c.text(), u"2");
    EXPECT_EQ(c.next(u"c").attribute(u"i"), u"2");
    EXPECT_FALSE(c.next(u"c").next(u"c")) << "a name that begins the same is another";
    EXPECT_FALSE(b.child(u"c").child(u"c").next(u"c").firstChild())
        << "null nodes lead to null nodes";
    EXPECT_EQ(XmlNode().kind(), XmlNodeKind::Document);
    EXPECT_EQ(c.parent(), b);
    EXPECT_EQ(document.root().parent(), XmlNode());
    const XmlNode a = document.find(u"a");
    EXPECT_EQ(a.attribute(u"y"), u"");
    EXPECT_FALSE(a.attribute(u"z"));
    EXPECT_TRUE(a.attribute(2).name.empty());
    EXPECT_EQ(document.find(u"c", c), c.next(u"c"));
    EXPECT_EQ(document.find(u"a", a).following(), XmlNode());
    EXPECT_FALSE(document.find(u"#text"));

    XmlDocument moved = std::move(document);
    EXPECT_EQ(moved.root().child(u"b").text(), u"14");
    ASSERT_FALSE(moved.parseText(u"<a>&lt;own/></a>"));
    ASSERT_FALSE(moved.parseText(moved.root().firstChild().firstChild().value()));
    EXPECT_EQ(outline(moved.root()), u"{own}");
}

// Each of these takes minutes, or the stack, where the time is not linear or something recurses.
TEST(XmlDocument, BearsHostileSizes) {
    constexpr std::size_t kMany = 1'000'000;
    const auto repeated = [](std::u16string_view piece, std::size_t times) {
        std::u16string text;
        for (std::size_t i = 0; i < times; ++i)
            text += piece;
        return text;
    };
    XmlDocument document;
    const std::u16string start = repeated(u"<e>", kMany);
    ASSERT_FALSE(document.parseText(start + u"<f/>" + repeated(u"</e>", kMany)));
    EXPECT_EQ(document.nodeCount(), kMany + 1);
    EXPECT_EQ(document.find(u"f").offset(), 3 * kMany);
    XmlDocument again;
    EXPECT_FALSE(again.parseBytes(writeDocument(document)));
    EXPECT_EQ(again.nodeCount(), kMany + 1);
    EXPECT_EQ(document.parseText(start)->offset2, 3 * kMany);
    EXPECT_EQ(document.parseText(start + u"</f>")->id, LoneEndTag);

    std::u16string attributes = u"<a";
    for (std::size_t i = 0; i < 100'000; ++i) {
        attributes += u" n=''";
        for (std::size_t number = i, at = attributes.size() - 3; number > 0; number /= 10)
            attributes.insert(at, 1, static_cast<char16_t>(u'0' + number % 10));
    }
    ASSERT_FALSE(document.parseText(attributes + u"/>"));
    EXPECT_EQ(document.root().firstChild().attributeCount(), 100'000U);
    EXPECT_TRUE(document.root().firstChild().attribute(u"n99999"));
    EXPECT_EQ(document.parseText(attributes + u" n3='' n5=''/>")->position, attributes.size() + 1);

    constexpr std::size_t kPieces = kMany / 5;
    for (const std::u16string_view piece :
         {u"x<?p?>", u"&amp;", u"]]", u"<![CDATA[]]>", u"\r", u"<a/>"})
        ASSERT_FALSE(document.parseText(u"<a>" + repeated(piece, kPieces) + u"</a>"));
    ASSERT_FALSE(document.parseText(u"<a><![CDATA[" + repeated(u"]", kPieces) + u"]]></a>"));
    ASSERT_FALSE(document.parseText(u"<!DOCTYPE a [" + repeated(u"%p; <!ENTITY e ''>", kPieces) +
                                    u"]><a/>"));
}

}  // namespace
}  // namespace QkDlg

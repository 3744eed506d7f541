#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#ifdef _WIN32
#include "QkDlg/Win32.h"
#endif

// XML as dialogs need it: a tree of elements that is read from a resource or a text, searched by
// name with defaults, changed and written back.
//
// Names are null-terminated and compared exactly; a null name, text or child is a broken contract:
// the report names src/QkXML and the process ends. Values are passed as views, which must not be
// made from a null pointer. Running out of memory throws std::bad_alloc; a load leaves the document
// empty then, any other operation leaves it as it was.
// A document belongs to one thread at a time; documents share nothing.
namespace QkDlg {

/// UTF-16 everywhere. Windows calls its unit wchar_t.
#ifdef _WIN32
using QkXMLChar = wchar_t;
#else
using QkXMLChar = char16_t;
#endif
/// A text that is owned.
using QkXMLString = std::basic_string<QkXMLChar>;
/// A text that is not; made from a null pointer it is undefined behaviour.
using QkXMLStringView = std::basic_string_view<QkXMLChar>;

class QkXMLElement;

/// What has child elements: a document (its top-level elements) and an element. The children are
/// owned and stand in document order. However deep the tree, nothing here recurses.
class QkXMLParent {
public:
    QkXMLParent(const QkXMLParent&) = delete;
    QkXMLParent& operator=(const QkXMLParent&) = delete;

    /// The child elements; AppendChild adds to them.
    [[nodiscard]] const std::vector<std::unique_ptr<QkXMLElement>>& Children() const {
        return m_children;
    }

protected:
    QkXMLParent();
    /// Takes the children over; the other is left without any.
    QkXMLParent(QkXMLParent&& other) noexcept;
    /// The same; the children of before are gone.
    QkXMLParent& operator=(QkXMLParent&& other) noexcept;
    ~QkXMLParent();

    /// Frees all children with all that is in them.
    void RemoveChildren() noexcept;

private:
    friend QkXMLElement& AppendChild(QkXMLParent& node, std::unique_ptr<QkXMLElement> child);

    static void Free(std::unique_ptr<QkXMLElement> top) noexcept;

    std::vector<std::unique_ptr<QkXMLElement>> m_children;
};

/// An attribute of an element.
struct QkXMLAttribute {
    QkXMLString name;   ///< as it stands in the document
    QkXMLString value;  ///< with references replaced
};

/// An element with its name, its attributes in document order, no two of one name, and its text:
/// all that stands directly in it, CDATA too, joined, nothing trimmed. Comments are not kept, nor
/// is where among the children the text stood.
class QkXMLElement final : public QkXMLParent {
public:
    /// An element without attributes and children. Saving checks the name.
    explicit QkXMLElement(QkXMLStringView name, QkXMLStringView text = {});

    /// The name, never changed.
    [[nodiscard]] const QkXMLString& Name() const { return m_name; }
    /// All text directly in the element.
    [[nodiscard]] const QkXMLString& Text() const { return m_text; }
    /// Replaces the text; the children stay.
    void SetText(QkXMLStringView text) { m_text = text; }

    /// In document order.
    [[nodiscard]] const std::vector<QkXMLAttribute>& Attributes() const { return m_attributes; }
    /// The value, or null when there is no attribute of that name.
    [[nodiscard]] const QkXMLString* FindAttribute(QkXMLStringView name) const;

private:
    friend class QkXMLBuilder;
    friend void SetAttribute(QkXMLElement& node, const QkXMLChar* name, QkXMLStringView value);

    QkXMLString m_name;
    QkXMLString m_text;
    std::vector<QkXMLAttribute> m_attributes;
};

/// Why a text does not parse. Offsets count UTF-16 units from 0; a byte order mark is not counted.
struct QkXMLError {
    int id = 0;                 ///< of the text in the string table, 62001 to 62099
    QkXMLString tagName{};      ///< for 62004 and 62005, as long as the document has it
    std::size_t offset = 0;     ///< what the text names, 0 where it names none
    std::size_t endOffset = 0;  ///< for 62005: where the end tag was expected
    std::size_t position = 0;   ///< the character that could not be accepted
};

/// A document: any number of top-level elements.
class QkXML final : public QkXMLParent {
public:
    QkXML() = default;
    /// Takes over the elements and the error; the other is left without elements.
    QkXML(QkXML&& other) noexcept = default;
    /// The same.
    QkXML& operator=(QkXML&& other) noexcept = default;
    ~QkXML() = default;

    /// Why the last load failed; nothing when it succeeded, when there was none, and when it failed
    /// before there was a text to parse.
    [[nodiscard]] const std::optional<QkXMLError>& LastError() const { return m_error; }

    /// Discards all elements and the error.
    void Clear() noexcept;

private:
    friend class QkXMLBuilder;

    std::optional<QkXMLError> m_error;
};

#ifdef _WIN32
/// Loads the resource `resourceName` of type RT_HTML (23) of a module, null for the program's own.
/// Its bytes are UTF-8; a byte order mark is skipped (one of UTF-16 is obeyed), an encoding
/// declaration does not count. False when the resource is missing or cannot be read, when its bytes
/// are not text, and when the text does not parse. The previous content is discarded in any case.
[[nodiscard]] bool LoadXmlResource(HMODULE module, const wchar_t* resourceName, QkXML& document);

/// The same.
[[nodiscard]] bool LoadResourceText(HMODULE module, const wchar_t* name, QkXML& document);

/// What an error says, in the words of the string table. The tag name is inserted as it is,
/// whatever it contains.
[[nodiscard]] std::wstring GetErrorText(const QkXMLError& error);
#endif

/// Replaces the content by that of the text. Takes any number of top-level elements, but not none.
/// False when the text does not parse; the document is empty then, and its `LastError` says why.
[[nodiscard]] bool LoadFromText(QkXML& document, QkXMLStringView text);
/// The same for a null-terminated text; a null text is a broken contract.
[[nodiscard]] bool LoadFromText(QkXML& document, const QkXMLChar* text);

/// The first child element of that name, or null. Of a document: the first top-level element.
[[nodiscard]] const QkXMLElement* FindChild(const QkXMLParent& node, const QkXMLChar* name);
/// The same, to change it.
[[nodiscard]] QkXMLElement* FindChild(QkXMLParent& node, const QkXMLChar* name);

/// Elements that a tree owns; valid until the tree is loaded anew, cleared or destroyed.
using QkXMLElements = std::vector<QkXMLElement*>;
/// The same of a tree that is only read.
using QkXMLConstElements = std::vector<const QkXMLElement*>;

/// Fills `result` with all children of that name, in document order, in place of what it held.
void GetChildren(const QkXMLParent& node, QkXMLConstElements& result, const QkXMLChar* name);
/// The same, to change them.
void GetChildren(QkXMLParent& node, QkXMLElements& result, const QkXMLChar* name);

/// The element at that index; one at or past the end is a broken contract.
[[nodiscard]] const QkXMLElement& ChildAt(const QkXMLConstElements& list, std::size_t index);
/// The same, to change it.
[[nodiscard]] QkXMLElement& ChildAt(const QkXMLElements& list, std::size_t index);

/// The text of the first child of that name, or the default when there is no such child.
[[nodiscard]] QkXMLString GetChildText(const QkXMLParent& node, const QkXMLChar* name,
                                       QkXMLStringView defaultText = {});

/// The attribute's value, or the default when there is no such attribute.
[[nodiscard]] QkXMLString GetAttribute(const QkXMLElement& node, const QkXMLChar* name,
                                       QkXMLStringView defaultValue = {});

/// The attribute's value as a decimal integer: white space, a sign, digits; what follows them does
/// not count. Without a digit it is 0. The default when there is no such attribute, and when the
/// number does not fit.
[[nodiscard]] int GetAttributeInt(const QkXMLElement& node, const QkXMLChar* name,
                                  int defaultValue = 0);

/// Gives the attribute of that name the value, in its place; a new one comes last.
void SetAttribute(QkXMLElement& node, const QkXMLChar* name, QkXMLStringView value);
/// The same with the number in decimal.
void SetAttributeInt(QkXMLElement& node, const QkXMLChar* name, int value);

/// Makes `child` the last child. Returns it.
QkXMLElement& AppendChild(QkXMLParent& node, std::unique_ptr<QkXMLElement> child);

/// The document as UTF-8: the declaration and a line break, then each element with its attributes,
/// its text and its children; no line breaks are added. Loading it gives the same tree. Nothing
/// when the tree has what XML cannot hold: a name that is none, a control character, half a
/// surrogate pair.
[[nodiscard]] std::optional<std::string> Save(const QkXML& document);

}  // namespace QkDlg

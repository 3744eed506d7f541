#include "QkDlg/QkXML.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNullNameToFind{"src/QkXML", 118};
constexpr QkLib::AssertSite kIndexPastEnd{"src/QkXML", 164};
constexpr QkLib::AssertSite kNullNameToGet{"src/QkXML", 203};
constexpr QkLib::AssertSite kNullNameToSet{"src/QkXML", 241};
constexpr QkLib::AssertSite kNullChild{"src/QkXML", 277};

QkXMLStringView checkedName(const QkXMLChar* name, const QkLib::AssertSite& site) {
    if (!name)
        QkLib::reportAssertFailure(site);
    return name;
}

const QkXMLElement* firstChild(const QkXMLParent& node, QkXMLStringView name) {
    for (const auto& child : node.Children())
        if (child->Name() == name)
            return child.get();
    return nullptr;
}

template <typename Element>
void collectChildren(const QkXMLParent& node, std::vector<Element*>& result,
                     const QkXMLChar* name) {
    const QkXMLStringView wanted = checkedName(name, kNullNameToFind);
    result.clear();
    for (const auto& child : node.Children())
        if (child->Name() == wanted)
            result.push_back(child.get());
}

template <typename Element>
Element& elementAt(const std::vector<Element*>& list, std::size_t index) {
    if (index >= list.size())
        QkLib::reportAssertFailure(kIndexPastEnd);
    return *list[index];
}

bool isSpace(QkXMLChar character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

// What the C library does for a wide string in base 10, on every system with 32 bits. Nothing when
// the number does not fit.
std::optional<int> integerFrom(QkXMLStringView text) {
    const auto* at = std::find_if_not(text.data(), text.data() + text.size(), isSpace);
    const auto* const end = text.data() + text.size();
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+'))
        ++at;
    std::int64_t value = 0;
    for (; at != end && *at >= '0' && *at <= '9'; ++at) {
        value = value * 10 + (negative ? '0' - *at : *at - '0');
        if (value != static_cast<std::int32_t>(value))
            return std::nullopt;
    }
    return static_cast<int>(value);
}

}  // namespace

QkXMLParent::QkXMLParent() = default;

QkXMLParent::QkXMLParent(QkXMLParent&& other) noexcept
    : m_children(std::exchange(other.m_children, {})) {}

QkXMLParent& QkXMLParent::operator=(QkXMLParent&& other) noexcept {
    auto children = std::exchange(other.m_children, {});
    RemoveChildren();
    m_children = std::move(children);
    return *this;
}

QkXMLParent::~QkXMLParent() {
    RemoveChildren();
}

void QkXMLParent::RemoveChildren() noexcept {
    for (auto& child : m_children)
        Free(std::move(child));
    m_children.clear();
}

// Goes down to the last child and frees on the way back, without recursion and without memory of
// its own: the place that a child was taken from holds the element above.
void QkXMLParent::Free(std::unique_ptr<QkXMLElement> top) noexcept {
    std::unique_ptr<QkXMLElement> above;
    while (top) {
        if (!top->m_children.empty()) {
            std::unique_ptr<QkXMLElement> child =
                std::exchange(top->m_children.back(), std::move(above));
            above = std::move(top);
            top = std::move(child);
            continue;
        }
        top = std::move(above);
        if (top) {
            above = std::move(top->m_children.back());
            top->m_children.pop_back();
        }
    }
}

QkXMLElement::QkXMLElement(QkXMLStringView name, QkXMLStringView text)
    : m_name(name), m_text(text) {}

const QkXMLString* QkXMLElement::FindAttribute(QkXMLStringView name) const {
    for (const QkXMLAttribute& attribute : m_attributes)
        if (attribute.name == name)
            return &attribute.value;
    return nullptr;
}

void QkXML::Clear() noexcept {
    RemoveChildren();
    m_error.reset();
}

const QkXMLElement* FindChild(const QkXMLParent& node, const QkXMLChar* name) {
    return firstChild(node, checkedName(name, kNullNameToFind));
}

QkXMLElement* FindChild(QkXMLParent& node, const QkXMLChar* name) {
    // The children of a parent that may be changed may be changed themselves.
    return const_cast<QkXMLElement*>(FindChild(std::as_const(node), name));
}

void GetChildren(const QkXMLParent& node, QkXMLConstElements& result, const QkXMLChar* name) {
    collectChildren(node, result, name);
}

void GetChildren(QkXMLParent& node, QkXMLElements& result, const QkXMLChar* name) {
    collectChildren(node, result, name);
}

const QkXMLElement& ChildAt(const QkXMLConstElements& list, std::size_t index) {
    return elementAt(list, index);
}

QkXMLElement& ChildAt(const QkXMLElements& list, std::size_t index) {
    return elementAt(list, index);
}

QkXMLString GetChildText(const QkXMLParent& node, const QkXMLChar* name,
                         QkXMLStringView defaultText) {
    const QkXMLElement* child = FindChild(node, name);
    return child ? child->Text() : QkXMLString(defaultText);
}

QkXMLString GetAttribute(const QkXMLElement& node, const QkXMLChar* name,
                         QkXMLStringView defaultValue) {
    const QkXMLString* value = node.FindAttribute(checkedName(name, kNullNameToGet));
    return value ? *value : QkXMLString(defaultValue);
}

int GetAttributeInt(const QkXMLElement& node, const QkXMLChar* name, int defaultValue) {
    const QkXMLString* value = node.FindAttribute(checkedName(name, kNullNameToGet));
    return value ? integerFrom(*value).value_or(defaultValue) : defaultValue;
}

void SetAttribute(QkXMLElement& node, const QkXMLChar* name, QkXMLStringView value) {
    const QkXMLStringView wanted = checkedName(name, kNullNameToSet);
    for (QkXMLAttribute& attribute : node.m_attributes) {
        if (attribute.name == wanted) {
            attribute.value = value;
            return;
        }
    }
    node.m_attributes.push_back({QkXMLString(wanted), QkXMLString(value)});
}

void SetAttributeInt(QkXMLElement& node, const QkXMLChar* name, int value) {
    const std::string digits = std::to_string(value);
    SetAttribute(node, name, QkXMLString(digits.begin(), digits.end()));
}

QkXMLElement& AppendChild(QkXMLParent& node, std::unique_ptr<QkXMLElement> child) {
    if (!child)
        QkLib::reportAssertFailure(kNullChild);
    node.m_children.push_back(std::move(child));
    return *node.m_children.back();
}

}  // namespace QkDlg

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace QkDlg {

enum class XmlNodeKind : unsigned char { Document, Element, Text, CData, Comment };

/// Numbers below 2^40 in five bytes each: on large documents memory is what takes the time.
template <std::size_t kCount>
class XmlNumbers {
public:
    [[nodiscard]] std::size_t get(std::size_t index) const {
        return static_cast<std::size_t>(std::uint64_t{high_[index]} << 32 | low_[index]);
    }
    void set(std::size_t index, std::size_t number) {
        low_[index] = static_cast<std::uint32_t>(number);
        high_[index] = static_cast<std::uint8_t>(std::uint64_t{number} >> 32);
    }

private:
    std::array<std::uint32_t, kCount> low_{};
    std::array<std::uint8_t, kCount> high_{};
};

/// What a document keeps of a node. A name is not measured: it ends where a character is none of a
/// name. The first child of a node is the node behind it, if that one names it as its parent.
class XmlNodeRecord {
public:
    /// More characters than these, half a terabyte of them, are refused as too much memory.
    static constexpr std::uint64_t kMostCharacters = std::uint64_t{1} << 38;

    XmlNodeRecord() = default;
    XmlNodeRecord(XmlNodeKind kind, std::size_t begin, std::size_t extent, std::size_t parent) {
        numbers_.set(kBegin, begin);
        numbers_.set(kExtent, extent);
        numbers_.set(kParent, parent);
        numbers_.set(kNextAndKind, static_cast<std::size_t>(kind) - 1);
    }

    /// Where an element's name begins, or the characters of the other kinds.
    [[nodiscard]] std::size_t begin() const { return numbers_.get(kBegin); }
    /// An element's first attribute, or how many characters there are.
    [[nodiscard]] std::size_t extent() const { return numbers_.get(kExtent); }
    void setExtent(std::size_t extent) { numbers_.set(kExtent, extent); }
    [[nodiscard]] std::size_t parent() const { return numbers_.get(kParent); }
    /// The next sibling, or 0.
    [[nodiscard]] std::size_t next() const { return numbers_.get(kNextAndKind) >> 2; }
    void setNext(std::size_t next) {
        numbers_.set(kNextAndKind, next << 2 | (numbers_.get(kNextAndKind) & 3));
    }
    /// Any kind but `Document`.
    [[nodiscard]] XmlNodeKind kind() const {
        return static_cast<XmlNodeKind>(1 + (numbers_.get(kNextAndKind) & 3));
    }

private:
    enum : std::size_t { kBegin, kExtent, kParent, kNextAndKind, kCount };

    XmlNumbers<kCount> numbers_;
};

/// An attribute belongs to the last element that begins before it. Its value stands behind the
/// name, an equals sign and a quotation mark.
class XmlAttributeRecord {
public:
    XmlAttributeRecord(std::size_t name, std::size_t valueLength) {
        numbers_.set(0, name);
        numbers_.set(1, valueLength);
    }
    [[nodiscard]] std::size_t name() const { return numbers_.get(0); }
    [[nodiscard]] std::size_t valueLength() const { return numbers_.get(1); }

private:
    XmlNumbers<2> numbers_;
};

}  // namespace QkDlg

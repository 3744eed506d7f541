#include "lib/Text.h"

#include <boost/locale/encoding_utf.hpp>

namespace QkLib {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigMark = "\xFE\xFF";

template <typename Char>
std::optional<std::wstring> widen(const Char* begin, const Char* end) {
    try {
        return boost::locale::conv::utf_to_utf<wchar_t>(begin, end, boost::locale::conv::stop);
    } catch (const boost::locale::conv::conversion_error&) {
        return std::nullopt;
    }
}

std::optional<std::wstring> wideFromUtf16(std::string_view bytes, bool bigEndian) {
    if (bytes.size() % 2 != 0)
        return std::nullopt;
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        const int unit = bigEndian ? first * 256 + second : second * 256 + first;
        units.push_back(static_cast<char16_t>(unit));
    }
    return widen(units.data(), units.data() + units.size());
}

}  // namespace

std::optional<std::wstring> wideFromUtf8(std::string_view bytes) {
    return widen(bytes.data(), bytes.data() + bytes.size());
}

std::optional<std::wstring> wideFromTextBytes(std::string_view bytes) {
    if (bytes.starts_with(kUtf8Mark))
        return wideFromUtf8(bytes.substr(kUtf8Mark.size()));
    if (bytes.starts_with(kUtf16LittleMark))
        return wideFromUtf16(bytes.substr(kUtf16LittleMark.size()), false);
    if (bytes.starts_with(kUtf16BigMark))
        return wideFromUtf16(bytes.substr(kUtf16BigMark.size()), true);
    return wideFromUtf8(bytes);
}

}  // namespace QkLib

#pragma once

#include <boost/numeric/conversion/cast.hpp>
#include <optional>

#include "lib/AssertReport.h"

namespace QkLib {

/// `value` as a `To`, or nothing when it does not fit.
template <typename To, typename From>
[[nodiscard]] std::optional<To> tryNarrow(From value) noexcept {
    try {
        return boost::numeric_cast<To>(value);
    } catch (const boost::numeric::bad_numeric_cast&) {
        return std::nullopt;
    }
}

/// `value` as a `To`; a value that does not fit raises the assertion report of `site`.
template <typename To, typename From>
[[nodiscard]] To narrow(From value, const AssertSite& site) noexcept {
    if (const auto narrowed = tryNarrow<To>(value))
        return *narrowed;
    reportAssertFailure(site);
}

}  // namespace QkLib

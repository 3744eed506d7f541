#pragma once

namespace QkLib {

/// A place that can raise the assertion report. The number is part of the contract with support,
/// who look it up; it stays the same wherever the check happens to stand in the source.
struct AssertSite {
    const char* module;  ///< for example "src/QkUtil"
    int line;
};

/// Writes "FATAL ERROR: assert failure in Module: <module> Line number: <line>" between line
/// breaks to the wide standard output and ends the process with exit status 999. For broken
/// contracts of the library's own; everything that a host or a resource can cause has a checked
/// result instead.
[[noreturn]] void reportAssertFailure(const AssertSite& site) noexcept;

}  // namespace QkLib

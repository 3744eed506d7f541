#pragma once

#include <optional>
#include <string>

#include "QkDlg/Win32.h"

// Tests of what ends a process run this same program once more, with a body of its own:
//
//     CHILD_PROCESS(AsksForAnUnknownColour) { QkDlg::GetUIColor(99); }
//
//     TEST(UiColours, UnknownOneIsReported) {
//         expectAssertReport("AsksForAnUnknownColour", "src/QkUtil", 452);
//     }
namespace QkDlgTest {

struct ChildResult {
    std::optional<DWORD> exitStatus;  ///< nothing if it had to be stopped after the time-out
    std::string output;               ///< the bytes of its standard output
};

[[nodiscard]] ChildResult runChild(const std::string& name, DWORD timeoutMilliseconds = 10'000);

/// Runs the child and expects the report, nothing else on standard output, and status 999.
void expectAssertReport(const std::string& childName, const std::string& module, int line);

/// Runs the named child body in this process; false if there is none.
bool runChildBody(const std::string& name);

class ChildRegistration {
public:
    ChildRegistration(const char* name, void (*body)());
};

}  // namespace QkDlgTest

#define CHILD_PROCESS(name)                                                                     \
    static void childBody##name();                                                              \
    static const QkDlgTest::ChildRegistration childRegistration##name(#name, &childBody##name); \
    static void childBody##name()

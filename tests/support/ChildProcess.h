#pragma once

#include <functional>
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

/// Runs the child and expects the report, nothing else on standard output, and status 999.
void expectAssertReport(const std::string& childName, const std::string& module, int line);

/// Runs the named child body in this process; false if there is none.
bool runChildBody(const std::string& name);

class ChildRegistration {
public:
    ChildRegistration(const char* name, void (*body)());
};

struct Outcome {
    DWORD status = STILL_ACTIVE;  ///< that, if it did not start or had to be stopped
    std::string output;
};

/// The folder of this program, with a backslash at its end.
[[nodiscard]] std::wstring programFolder();

/// Runs a program of that folder in that folder, for a minute at most. `meanwhile` is called while
/// it runs.
[[nodiscard]] Outcome runProgram(
    const std::wstring& name, const std::wstring& arguments,
    const std::function<void()>& meanwhile = [] {});

}  // namespace QkDlgTest

#define CHILD_PROCESS(name)                                                                     \
    static void childBody##name();                                                              \
    static const QkDlgTest::ChildRegistration childRegistration##name(#name, &childBody##name); \
    static void childBody##name()

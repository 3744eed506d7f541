#pragma once

#include <functional>
#include <string>

#include "QkDlg/Win32.h"

// What ends a process runs in a copy of this program. The contracts stand in static tables,
//
//     const BrokenContract kContracts[] = {{"src/QkUtil", 452, [] { GetUIColor(99); }}};
//
// and one test of the program calls expectAssertReports.
namespace QkDlgTest {

/// What breaks a contract of the library, and the site that its report must name.
struct BrokenContract {
    BrokenContract(const char* module, int line, void (*body)());

    const char* module;
    int line;
    void (*body)();
};

/// Runs a child for each: it must write the report, nothing else, and end with status 999.
void expectAssertReports();

/// Breaks the contract of that number in this process.
void breakContract(int number);

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

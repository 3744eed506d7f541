#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <vector>

#include "QkUtil/Handles.h"

namespace QkDlgTest {

namespace {

using QkDlg::UniqueKernelHandle;

constexpr DWORD kReportStatus = 999;
constexpr DWORD kPatience = 60'000;
// Wine fails to start one process in a thousand or so, with ERROR_INTERNAL_ERROR.
constexpr int kTries = 3;

std::vector<const BrokenContract*>& contracts() {
    static std::vector<const BrokenContract*> registered;
    return registered;
}

std::wstring programPath() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    return path;
}

/// A file that goes with its handle.
UniqueKernelHandle temporaryFile() {
    wchar_t path[MAX_PATH]{};
    GetTempFileNameW(programFolder().c_str(), L"out", 0, path);
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return UniqueKernelHandle(CreateFileW(
        path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
}

std::string contentsOf(HANDLE file) {
    std::string text(SetFilePointer(file, 0, nullptr, FILE_END), '\0');
    SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    DWORD read = 0;
    ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &read, nullptr);
    return text;
}

}  // namespace

BrokenContract::BrokenContract(const char* itsModule, int itsLine, void (*itsBody)())
    : module(itsModule), line(itsLine), body(itsBody) {
    contracts().push_back(this);
}

void breakContract(int number) {
    contracts().at(static_cast<std::size_t>(number))->body();
}

std::wstring programFolder() {
    const std::wstring path = programPath();
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

Outcome runProgram(const std::wstring& name, const std::wstring& arguments,
                   const std::function<void()>& meanwhile) {
    const UniqueKernelHandle file = temporaryFile();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = file.get();
    PROCESS_INFORMATION process{};
    std::wstring line = L"\"" + programFolder() + name + L"\" " + arguments;
    Outcome run;
    DWORD error = ERROR_INTERNAL_ERROR;
    for (int tries = 0; error == ERROR_INTERNAL_ERROR && tries < kTries; ++tries) {
        const bool started =
            CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                           programFolder().c_str(), &startup, &process) != FALSE;
        error = started ? ERROR_SUCCESS : GetLastError();
    }
    if (error != ERROR_SUCCESS) {
        ADD_FAILURE() << "did not start (" << error << "): " << testing::PrintToString(line);
        return run;
    }
    const UniqueKernelHandle owned(process.hProcess);
    const UniqueKernelHandle thread(process.hThread);
    meanwhile();
    WaitForSingleObject(owned.get(), kPatience);
    GetExitCodeProcess(owned.get(), &run.status);
    TerminateProcess(owned.get(), 1);
    run.output = contentsOf(file.get());
    return run;
}

void expectAssertReports() {
    const std::wstring self = programPath().substr(programFolder().size());
    EXPECT_FALSE(contracts().empty());
    for (std::size_t i = 0; i < contracts().size(); ++i) {
        const BrokenContract& contract = *contracts()[i];
        const Outcome child = runProgram(self, L"--child=" + std::to_wstring(i));
        EXPECT_EQ(child.status, kReportStatus) << contract.module << ' ' << contract.line;
        EXPECT_EQ(child.output,
                  "\r\nFATAL ERROR: assert failure in Module: " + std::string(contract.module) +
                      " Line number: " + std::to_string(contract.line) + "\r\n");
    }
}

}  // namespace QkDlgTest

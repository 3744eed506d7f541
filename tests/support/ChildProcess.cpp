#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <map>

#include "QkUtil/Handles.h"

namespace QkDlgTest {

namespace {

using QkDlg::UniqueKernelHandle;

constexpr DWORD kReportStatus = 999;
constexpr DWORD kPatience = 60'000;

std::map<std::string, void (*)()>& bodies() {
    static std::map<std::string, void (*)()> registered;
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

ChildRegistration::ChildRegistration(const char* name, void (*body)()) {
    bodies()[name] = body;
}

bool runChildBody(const std::string& name) {
    const auto body = bodies().find(name);
    if (body == bodies().end())
        return false;
    body->second();
    return true;
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
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        programFolder().c_str(), &startup, &process)) {
        ADD_FAILURE() << "did not start: " << testing::PrintToString(line);
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

void expectAssertReport(const std::string& childName, const std::string& module, int line) {
    const Outcome child =
        runProgram(programPath().substr(programFolder().size()),
                   L"--child=" + std::wstring(childName.begin(), childName.end()));
    EXPECT_EQ(child.status, kReportStatus) << childName;
    EXPECT_EQ(child.output, "\r\nFATAL ERROR: assert failure in Module: " + module +
                                " Line number: " + std::to_string(line) + "\r\n")
        << childName;
}

}  // namespace QkDlgTest

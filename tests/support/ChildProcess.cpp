#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

namespace QkDlgTest {

namespace {

constexpr DWORD kReportStatus = 999;
constexpr DWORD kPipeBytes = 65536;

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

std::map<std::string, void (*)()>& bodies() {
    static std::map<std::string, void (*)()> registered;
    return registered;
}

std::wstring commandLineFor(const std::string& name) {
    wchar_t program[MAX_PATH]{};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return L"\"" + std::wstring(program) + L"\" --child=" + std::wstring(name.begin(), name.end());
}

UniqueHandle startChild(const std::string& name, HANDLE output) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process{};
    std::wstring line = commandLineFor(name);
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process))
        return nullptr;
    CloseHandle(process.hThread);
    return UniqueHandle(process.hProcess);
}

// Takes what the pipe holds; a helper that inherited its other end could keep it open for ever.
std::string contentsOf(HANDLE pipe) {
    DWORD available = 0;
    PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr);
    std::string text(available, '\0');
    DWORD read = 0;
    if (available != 0)
        ReadFile(pipe, text.data(), available, &read, nullptr);
    text.resize(read);
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

ChildResult runChild(const std::string& name, DWORD timeoutMilliseconds) {
    SECURITY_ATTRIBUTES inherited{};
    inherited.nLength = sizeof inherited;
    inherited.bInheritHandle = TRUE;
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    CreatePipe(&readEnd, &writeEnd, &inherited, kPipeBytes);
    const UniqueHandle reader(readEnd);
    const UniqueHandle writer(writeEnd);
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);

    const UniqueHandle process = startChild(name, writeEnd);
    if (!process) {
        ADD_FAILURE() << "the child process " << name << " did not start";
        return {};
    }
    ChildResult result;
    if (WaitForSingleObject(process.get(), timeoutMilliseconds) == WAIT_OBJECT_0) {
        DWORD status = 0;
        GetExitCodeProcess(process.get(), &status);
        result.exitStatus = status;
    } else {
        TerminateProcess(process.get(), 1);
    }
    result.output = contentsOf(readEnd);
    return result;
}

void expectAssertReport(const std::string& childName, const std::string& module, int line) {
    const ChildResult child = runChild(childName);
    EXPECT_EQ(child.exitStatus, kReportStatus) << childName;
    EXPECT_EQ(child.output, "\r\nFATAL ERROR: assert failure in Module: " + module +
                                " Line number: " + std::to_string(line) + "\r\n")
        << childName;
}

}  // namespace QkDlgTest

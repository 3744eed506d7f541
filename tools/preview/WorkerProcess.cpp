#include "preview/WorkerProcess.h"

#include "QkUtil/Handles.h"
#include "common/CommandLine.h"
#include "common/Console.h"

namespace QkPreview {
namespace {

using QkDlg::UniqueKernelHandle;

constexpr DWORD kPollMilliseconds = 5;
constexpr DWORD kStoppedStatus = 1;

struct Pipe {
    UniqueKernelHandle reader;
    UniqueKernelHandle writer;
};

Pipe createPipe() {
    SECURITY_ATTRIBUTES inherited{};
    inherited.nLength = sizeof inherited;
    inherited.bInheritHandle = TRUE;
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
    if (!CreatePipe(&reader, &writer, &inherited, 0))
        return {};
    SetHandleInformation(reader, HANDLE_FLAG_INHERIT, 0);
    return {UniqueKernelHandle(reader), UniqueKernelHandle(writer)};
}

/// A job whose processes end when its last handle is closed, that is with this process at latest.
UniqueKernelHandle createJob() {
    UniqueKernelHandle job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

std::wstring programFile() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    // The result fills the buffer when it was cut off.
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) ==
           path.size())
        path.resize(path.size() * 2);
    path.resize(length);
    return path;
}

UniqueKernelHandle start(const std::vector<std::wstring>& arguments, HANDLE output, HANDLE job) {
    std::wstring line = QkDlgTools::quotedArgument(programFile());
    for (const std::wstring& argument : arguments)
        line += L' ' + QkDlgTools::quotedArgument(argument);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                        nullptr, &startup, &process))
        return nullptr;
    // Fails where this process is in a job that forbids others; then the limit alone must do.
    AssignProcessToJobObject(job, process.hProcess);
    ResumeThread(process.hThread);
    CloseHandle(process.hThread);
    return UniqueKernelHandle(process.hProcess);
}

/// What a pipe holds, cut into lines.
class LineReader {
public:
    explicit LineReader(HANDLE pipe) : pipe_(pipe) {}

    /// False when there was nothing new.
    bool take(const std::function<void(const std::wstring& line)>& onLine) {
        DWORD available = 0;
        if (!PeekNamedPipe(pipe_, nullptr, 0, nullptr, &available, nullptr) || available == 0)
            return false;
        std::string bytes(available, '\0');
        DWORD read = 0;
        ReadFile(pipe_, bytes.data(), available, &read, nullptr);
        rest_.append(bytes, 0, read);
        for (auto end = rest_.find('\n'); end != std::string::npos; end = rest_.find('\n')) {
            onLine(QkDlgTools::fromUtf8(rest_.substr(0, end)));
            rest_.erase(0, end + 1);
        }
        return true;
    }

private:
    HANDLE pipe_;
    std::string rest_;
};

}  // namespace

// The pipe is polled rather than read to its end: a helper process that inherited it could keep it
// open for ever.
std::optional<DWORD> runWorkerProcess(const std::vector<std::wstring>& arguments, DWORD silence,
                                      const std::function<void(const std::wstring& line)>& onLine) {
    Pipe pipe = createPipe();
    const UniqueKernelHandle job = createJob();
    const UniqueKernelHandle process = start(arguments, pipe.writer.get(), job.get());
    pipe.writer.reset();
    if (!process)
        return std::nullopt;
    LineReader reader(pipe.reader.get());
    for (ULONGLONG lastWord = GetTickCount64(); GetTickCount64() - lastWord < silence;) {
        const bool ended = WaitForSingleObject(process.get(), kPollMilliseconds) == WAIT_OBJECT_0;
        if (reader.take(onLine))
            lastWord = GetTickCount64();
        if (!ended)
            continue;
        while (reader.take(onLine)) {
        }
        DWORD status = 0;
        GetExitCodeProcess(process.get(), &status);
        return status;
    }
    TerminateProcess(process.get(), kStoppedStatus);
    return std::nullopt;
}

}  // namespace QkPreview

#include "common/Console.h"

#include "QkDlg/Win32.h"

namespace QkDlgTools {
namespace {

bool isUsable(HANDLE handle) {
    return handle != nullptr && handle != INVALID_HANDLE_VALUE;
}

// A windowed program has standard handles only when they are redirected; otherwise it may borrow
// the console it was started from.
HANDLE standardHandle(DWORD which) {
    HANDLE handle = GetStdHandle(which);
    if (!isUsable(handle) && AttachConsole(ATTACH_PARENT_PROCESS))
        handle = GetStdHandle(which);
    return handle;
}

bool print(DWORD which, std::wstring_view text) {
    HANDLE handle = standardHandle(which);
    if (!isUsable(handle))
        return false;
    DWORD written = 0;
    // Fails for anything but a console.
    if (WriteConsoleW(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr))
        return true;
    const std::string bytes = toUtf8(text);
    return WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) !=
           FALSE;
}

}  // namespace

void printOut(std::wstring_view text) {
    print(STD_OUTPUT_HANDLE, text);
}

void printError(const std::wstring& text, const wchar_t* title) {
    if (!print(STD_ERROR_HANDLE, text))
        MessageBoxW(nullptr, text.c_str(), title, MB_OK | MB_ICONERROR);
}

std::string toUtf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring fromUtf8(std::string_view bytes) {
    const int length = static_cast<int>(bytes.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, text.data(), size);
    return text;
}

}  // namespace QkDlgTools

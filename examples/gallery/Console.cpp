#include "Console.h"

#include "QkDlg/Win32.h"

namespace Gallery {
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

std::string toUtf8(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

bool print(DWORD which, const std::wstring& text) {
    HANDLE handle = standardHandle(which);
    if (!isUsable(handle))
        return false;
    const std::string bytes = toUtf8(text);
    DWORD written = 0;
    return WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) !=
           FALSE;
}

}  // namespace

void printOut(const std::wstring& text) {
    print(STD_OUTPUT_HANDLE, text);
}

void printError(const std::wstring& text) {
    if (!print(STD_ERROR_HANDLE, text))
        MessageBoxW(nullptr, text.c_str(), L"Gallery", MB_OK | MB_ICONERROR);
}

}  // namespace Gallery

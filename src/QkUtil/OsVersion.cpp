#include "QkUtil/OsVersion.h"

#include "QkDlg/Win32.h"

namespace QkDlg {

namespace {

bool isAtLeast(DWORD major, DWORD minor) {
    OSVERSIONINFOEXW wanted{};
    wanted.dwOSVersionInfoSize = sizeof wanted;
    wanted.dwMajorVersion = major;
    wanted.dwMinorVersion = minor;
    DWORDLONG conditions = VerSetConditionMask(0, VER_MAJORVERSION, VER_GREATER_EQUAL);
    conditions = VerSetConditionMask(conditions, VER_MINORVERSION, VER_GREATER_EQUAL);
    return VerifyVersionInfoW(&wanted, VER_MAJORVERSION | VER_MINORVERSION, conditions) != FALSE;
}

}  // namespace

const OsVersionFlags& osVersion() {
    static const OsVersionFlags flags{isAtLeast(5, 0), isAtLeast(5, 1), isAtLeast(6, 0),
                                      isAtLeast(6, 1), isAtLeast(6, 2)};
    return flags;
}

}  // namespace QkDlg

#pragma once

// The one door to the Windows headers: sets their macros, so that every source sees the same
// declarations (Unicode, Windows 7 and later, no min/max macros).

#ifndef UNICODE
#define UNICODE
#endif
#ifndef _UNICODE
#define _UNICODE  // NOLINT(bugprone-reserved-identifier): the C library's own name
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#endif

#include <windows.h>
// commctrl.h and windowsx.h need windows.h first.
#include <commctrl.h>
#include <windowsx.h>

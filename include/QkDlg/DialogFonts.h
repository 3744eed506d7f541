#pragma once

#include <string>

#include "QkDlg/Win32.h"

namespace QkDlg {

// Fonts by description. Each is made once, shared by everyone who asks for the same, and lives
// until the process ends: keep the handle, select it, never delete it. GUI thread only.

/// The font of that size in points (0: the default), face (empty: the default), weight as in
/// LOGFONT and style (0 plain, 1 italic, 2 underlined, 3 both), after substitution. Null when the
/// system cannot make it.
[[nodiscard]] HFONT GetFont(int size, const std::wstring& face, int weight, int style);

/// From now on `substFace` is used wherever `face` is asked for, at any size.
void AddFontSubstitution(const std::wstring& face, const std::wstring& substFace);

/// The same for one size in points, which becomes `substSize`.
void AddFontSubstitution(const std::wstring& face, int size, const std::wstring& substFace,
                         int substSize);

/// Face and size in points that GetFont uses where none is named: "Segoe UI" at 9, before
/// Windows 6.0 the system's message font.
int GetDefaultFont(std::wstring& faceOut);

/// The system's message font (SPI_GETNONCLIENTMETRICS), its height made positive. Returns its size
/// in points; 0 when the system does not tell.
int GetSystemMessageFont(LOGFONTW& logfontOut);

/// Face and size in points for converted dialogs. `faceOut` has room for `faceCapacity`
/// characters, at least 32, or the assertion report is raised. False before Windows 6.0: dialogs
/// keep their own font.
bool GetDialogFont(wchar_t* faceOut, int faceCapacity, int& sizeOut);

}  // namespace QkDlg

#pragma once

#include <memory>

#include "QkDlg/Win32.h"

namespace QkDlg {

struct GlobalDeleter {
    void operator()(HGLOBAL block) const { GlobalFree(block); }
};

/// Owner of a block of global memory. For a dialog template such a block is 64 bytes longer than
/// the template, so that a longer face name fits without moving the block.
using GlobalBlock = std::unique_ptr<void, GlobalDeleter>;

// Dialog templates with the dialog font, without editing a resource script. `templateName` is a
// resource name or MAKEINTRESOURCE; a null module means the program. What goes wrong with the
// resource is a broken contract and raises the assertion report of src/Dlg, unless told otherwise.

/// A private copy of a loaded resource (LoadResource) of `size` bytes. Null when memory is short.
[[nodiscard]] GlobalBlock CopyResourceToGlobal(HGLOBAL resourceData, DWORD size);

/// A private copy of a dialog template with the dialog font (GetDialogFont) and more style bits.
/// Null when the copy cannot be locked.
[[nodiscard]] GlobalBlock LoadDialogTemplate(HMODULE module, const wchar_t* templateName,
                                             DWORD extraStyle);

/// Gives a template as CopyResourceToGlobal gave it another font and more style bits; once, as the
/// spare bytes are the template's own from then on. Returns
/// the same block, or a larger one where the 64 bytes are not enough. A template that is cut off
/// or that finds no memory gets the style bits only and keeps its own font. Null when the block
/// cannot be locked. Size in points.
[[nodiscard]] GlobalBlock SetTemplateFont(GlobalBlock dialogTemplate, const wchar_t* faceName,
                                          WORD pointSize, DWORD extraStyle);

/// Runs a modal dialog and returns what EndDialog was given. With no style to add and no dialog
/// font (before Windows 6.0) the resource itself is run.
int RunModalDialog(HMODULE module, const wchar_t* templateName, HWND parent, DLGPROC dialogProc,
                   LPARAM initParam, DWORD extraStyle);

}  // namespace QkDlg

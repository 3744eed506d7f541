#pragma once

// What a page of the gallery is. A new page needs four things:
//   pages/Name.rc    its dialog (style WS_CHILD | DS_CONTROL, a margin of 8 units), included by
//                    Gallery.rc
//   Ids.h            its dialog id and control ids
//   pages/Name.cpp   its list of flat controls and, if it has one, its hook
//   PageTable.cpp    its row

#include <memory>
#include <span>

#include "QkDlg/QkDlg.h"
#include "QkDlg/QkXDlg.h"
#include "QkDlg/Win32.h"

namespace Gallery {

/// The control `id` of a page becomes a flat control of `type`.
struct FlatControl {
    int id;
    QkControlType type;
};

/// Sees each message of the page's dialog first, with the conventions of a dialog procedure.
/// WM_INITDIALOG comes while the controls are still standard ones, and its result is ignored;
/// kPageReady comes when they are flat.
using PageHook = INT_PTR (*)(HWND page, UINT message, WPARAM wParam, LPARAM lParam);

/// Tells a page's hook that its controls are ready; wParam is TRUE when they are flat and FALSE
/// when they stay plain.
constexpr UINT kPageReady = WM_APP;

struct Page {
    const wchar_t* name = nullptr;   // for --page
    const wchar_t* title = nullptr;  // for the reader
    int dialogId = 0;
    std::span<const FlatControl> (*flatControls)() = nullptr;
    PageHook hook = nullptr;
    // A page that the class library runs as a dialog of its own has this, and no list of controls.
    std::unique_ptr<QkDlg::QkXDlg> (*makeDialog)(bool flat) = nullptr;
};

/// All pages in the order of the navigation.
[[nodiscard]] std::span<const Page> pages();

}  // namespace Gallery

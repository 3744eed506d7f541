#pragma once

#include <vector>

#include "QkDlg/Win32.h"

namespace QkDlg {

// What a flat list does to the standard one beneath it. None of these keeps state, so host code
// that they run may delete the flat list's object.

/// The state images of all items, to be written back after a change of style that resets them.
/// Those of an owner-data list are its owner's, and are left alone.
class StateImages {
public:
    explicit StateImages(HWND list);

    /// Gives each item its state image again.
    void WriteBack() const;
    /// The same, and an unchecked box to each item that had neither a checked nor an unchecked one.
    void WriteBackAsCheckBoxes();

private:
    HWND m_list;
    std::vector<UINT> m_images;  ///< as bits of an item's state
};

/// The item as LVM_INSERTITEM of either character width takes it, with an unchecked box. Reads
/// only what the mask of `item` names, since older hosts have a shorter record.
[[nodiscard]] LVITEMW withUncheckedBox(const LVITEMW& item);

/// A press of the left button at a point of the client area of a list with check boxes. One on a
/// check box turns it over and is to go no further: true.
bool pressCheckBox(HWND list, POINT point, WPARAM keys);

/// Turns over the check box of the item that the selection started from, if there is one.
void toggleMarkedItem(HWND list);

/// A scroll request by the thumb of a scroll-bar window scrolls the list. False for others.
bool scrollByThumb(HWND list, UINT message, WPARAM wParam, LPARAM lParam);

/// Lets a window look as the named class does ("Explorer"), or, for null, as its own.
void setTheme(HWND hwnd, const wchar_t* name);

}  // namespace QkDlg

#pragma once

#include <vector>

#include "FlatLibrary.h"
#include "Handles.h"
#include "Page.h"

namespace Gallery {

/// The dialog of one page as a child of the main window, with its controls made flat.
class PageWindow {
public:
    /// `flat` may be null: then the controls stay as the system draws them.
    PageWindow(HWND parent, const Page& page, const FlatLibrary* flat);
    /// The window first, then the objects behind its controls.
    ~PageWindow();
    PageWindow(const PageWindow&) = delete;
    PageWindow& operator=(const PageWindow&) = delete;
    PageWindow(PageWindow&&) = delete;
    PageWindow& operator=(PageWindow&&) = delete;

    /// Null when the dialog could not be created.
    [[nodiscard]] HWND window() const { return window_; }

private:
    static INT_PTR CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND create(HWND parent, DLGPROC procedure, void* object) const;
    INT_PTR handle(UINT message, WPARAM wParam, LPARAM lParam);
    void emphasizeCaptions();
    void makeFlat();
    INT_PTR colour(HDC dc, HWND control) const;

    const Page& page_;
    std::unique_ptr<QkDlg::QkXDlg> dialog_;
    const FlatLibrary* flat_;
    HWND window_ = nullptr;
    UniqueFont captionFont_;
    std::vector<FlatObject> objects_;
};

}  // namespace Gallery

#pragma once

#include <memory>

#include "FlatLibrary.h"
#include "Handles.h"
#include "PageWindow.h"

namespace Gallery {

/// The navigation on one side, the chosen page on the other.
class MainWindow {
public:
    MainWindow(const FlatLibrary* flat, size_t firstPage);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    MainWindow(MainWindow&&) = delete;
    MainWindow& operator=(MainWindow&&) = delete;

    /// Null when there is no window, or no longer.
    [[nodiscard]] HWND window() const { return window_; }
    /// The dialog of the page shown, or null.
    [[nodiscard]] HWND page() const { return page_ ? page_->window() : nullptr; }

private:
    static INT_PTR CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    INT_PTR handle(UINT message, WPARAM wParam, LPARAM lParam);
    void initialize();
    void onCommand(int id, int notification);
    void showPage(size_t index);
    void fitAroundPage();
    void drawEntry(const DRAWITEMSTRUCT& item) const;
    [[nodiscard]] INT_PTR colour(HDC dc, HWND control) const;
    [[nodiscard]] COLORREF paletteColor(int flatIndex, int systemIndex) const;

    const FlatLibrary* flat_;
    size_t firstPage_;
    HWND window_ = nullptr;
    UniqueFont titleFont_;
    UniqueBrush panelBrush_;
    std::unique_ptr<PageWindow> page_;
};

}  // namespace Gallery

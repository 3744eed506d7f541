#pragma once

#include <memory>
#include <string>

#include "QkDlg/QkFlatBmpToggleBase.h"

namespace QkDlg {

/// A flat check box over a standard one of any style.
class QkFlatCheckbox : public QkFlatBmpToggleBase {
public:
    /// For the window of that control id.
    explicit QkFlatCheckbox(UINT id);

    void DrawImage(HDC hdc, HBITMAP bitmap, int x, int y) override;

    /// Where CreateInParent puts the window, in pixels of the parent's client area.
    struct Place {
        int x = 0;       ///< left edge
        int y = 0;       ///< upper edge
        int width = 0;   ///< of box, padding and caption
        int height = 0;  ///< of the window
    };

    /// Creates an automatic check box as a child of `parent` and makes it flat. Null when the
    /// system gives no window.
    [[nodiscard]] static std::unique_ptr<QkFlatCheckbox> CreateInParent(
        HWND parent, HINSTANCE instance, UINT id, const Place& place, const std::wstring& caption);

private:
    static LRESULT CALLBACK ParentProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR referenceData);
};

}  // namespace QkDlg

#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "QkUtil/Handles.h"

namespace QkDlgTest {

/// One message by which a control told its parent something. `code` is the notification or scroll
/// code, `position` that of the thumb messages.
struct Heard {
    UINT message = 0;
    int id = 0;
    int code = 0;
    int position = 0;

    bool operator==(const Heard&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Heard& heard);

using HeardList = std::vector<Heard>;

[[nodiscard]] Heard command(int id, int code);

struct HostOptions {
    COLORREF background = RGB(255, 255, 255);
    int x = 100;
    int y = 100;
    int width = 500;  ///< in pixels, like the height
    int height = 400;
    DWORD style = WS_POPUP | WS_CLIPCHILDREN;  ///< none with a frame
    bool rightToLeft = false;
};

/// A rectangle by position and size, in pixels.
[[nodiscard]] RECT area(int x, int y, int width, int height);

/// The same, given in pixels at 96 DPI.
[[nodiscard]] RECT scaledArea(int x, int y, int width, int height);

/// The DPI that the screen has for this process, and a length at 96 DPI as one at that DPI.
[[nodiscard]] int screenDpi();
[[nodiscard]] int scaled(int length);

/// A modeless dialog box without a frame that controls are put into. It keeps a list of what its
/// controls told it, and is destroyed with this object.
class HostDialog {
public:
    /// Sees a message before the host does. An answer ends the message with that result.
    using Handler = std::function<std::optional<LRESULT>(UINT message, WPARAM wp, LPARAM lp)>;

    explicit HostDialog(const HostOptions& options = {});
    ~HostDialog();
    HostDialog(const HostDialog&) = delete;
    HostDialog& operator=(const HostDialog&) = delete;

    [[nodiscard]] HWND window() const { return window_; }

    /// Adds a visible child window with the dialog's font.
    HWND add(const wchar_t* className, const wchar_t* text, DWORD style, const RECT& rect, int id,
             DWORD exStyle = 0);
    [[nodiscard]] HWND control(int id) const { return GetDlgItem(window_, id); }

    void onMessage(Handler handler) { handler_ = std::move(handler); }

    /// What the controls told their parent since the start or the last forget(), oldest first.
    [[nodiscard]] const HeardList& heard() const { return heard_; }
    [[nodiscard]] int timesHeard(const Heard& what) const;
    void forget() { heard_.clear(); }

private:
    static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wp, LPARAM lp);
    INT_PTR handle(UINT message, WPARAM wp, LPARAM lp);
    void record(UINT message, WPARAM wp, LPARAM lp);

    HostOptions options_;
    QkDlg::UniqueBrush brush_;
    HWND window_ = nullptr;
    Handler handler_;
    HeardList heard_;
};

/// Gives the keyboard focus to a control and lets the consequences happen.
void focus(HWND window);

/// The text of a window.
[[nodiscard]] std::wstring textOf(HWND window);

}  // namespace QkDlgTest

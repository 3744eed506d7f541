#include "support/HostDialog.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/MessageLoop.h"

namespace QkDlgTest {

namespace {

constexpr int kNormalDpi = 96;

// A dialog template as it lies in memory: no menu, the standard class, no title, a font.
struct alignas(DWORD) Template {
    DLGTEMPLATE header;
    WORD menu;
    WORD windowClass;
    WORD title;
    WORD pointSize;
    wchar_t face[9];
};

Template templateFor(const HostOptions& options) {
    Template result{{}, 0, 0, 0, 9, L"Segoe UI"};
    result.header.style = options.style | DS_SETFONT;
    result.header.dwExtendedStyle = options.rightToLeft ? WS_EX_LAYOUTRTL : 0UL;
    return result;
}

// The program before may have kept the keyboard for a moment after its end.
void bringToFront(HWND window) {
    const bool there = pumpUntil([window] {
        return GetForegroundWindow() == window || (SetForegroundWindow(window), false);
    });
    EXPECT_TRUE(there) << "the window did not get to the front";
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Heard& heard) {
    return out << "message " << heard.message << " from " << heard.id << " code " << heard.code
               << " position " << heard.position;
}

Heard command(int id, int code) {
    return {WM_COMMAND, id, code, 0};
}
RECT area(int x, int y, int width, int height) {
    return {x, y, x + width, y + height};
}

RECT scaledArea(int x, int y, int width, int height) {
    return area(scaled(x), scaled(y), scaled(width), scaled(height));
}

int screenDpi() {
    return GetDeviceCaps(QkDlg::WindowDc(nullptr).get(), LOGPIXELSX);
}

int scaled(int length) {
    return MulDiv(length, screenDpi(), kNormalDpi);
}

HostDialog::HostDialog(const HostOptions& options)
    : options_(options), brush_(QkDlg::solidBrush(options.background)) {
    const Template dialog = templateFor(options);
    window_ = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &dialog.header, nullptr,
                                         &procedure, reinterpret_cast<LPARAM>(this));
    EXPECT_NE(window_, nullptr) << "the host dialog was not created";
    SetWindowPos(window_, nullptr, options.x, options.y, options.width, options.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(window_, SW_SHOW);
    bringToFront(window_);
}

HostDialog::~HostDialog() {
    if (IsWindow(window_))
        DestroyWindow(window_);
}

HWND HostDialog::add(const wchar_t* className, const wchar_t* text, DWORD style, const RECT& rect,
                     int id, DWORD exStyle) {
    const HWND added = CreateWindowExW(
        exStyle, className, text, WS_CHILD | WS_VISIBLE | style, rect.left, rect.top,
        rect.right - rect.left, rect.bottom - rect.top, window_,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    EXPECT_NE(added, nullptr) << "no control of class " << testing::PrintToString(className);
    SendMessageW(added, WM_SETFONT, static_cast<WPARAM>(SendMessageW(window_, WM_GETFONT, 0, 0)),
                 TRUE);
    drain();
    return added;
}

int HostDialog::timesHeard(const Heard& what) const {
    return static_cast<int>(std::count(heard_.begin(), heard_.end(), what));
}

INT_PTR CALLBACK HostDialog::procedure(HWND window, UINT message, WPARAM wp, LPARAM lp) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lp);
        reinterpret_cast<HostDialog*>(lp)->window_ = window;
    }
    const auto host = reinterpret_cast<HostDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    return host ? host->handle(message, wp, lp) : FALSE;
}

INT_PTR HostDialog::handle(UINT message, WPARAM wp, LPARAM lp) {
    record(message, wp, lp);
    if (handler_) {
        if (const auto answer = handler_(message, wp, lp))
            return SetDlgMsgResult(window_, message, *answer);
    }
    switch (message) {
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            SetBkColor(reinterpret_cast<HDC>(wp), options_.background);
            return reinterpret_cast<INT_PTR>(brush_.get());
        default: return FALSE;
    }
}

void HostDialog::record(UINT message, WPARAM wp, LPARAM lp) {
    if (message == WM_COMMAND) {
        heard_.push_back(command(LOWORD(wp), HIWORD(wp)));
    } else if (message == WM_NOTIFY) {
        const auto& header = *reinterpret_cast<const NMHDR*>(lp);
        if (header.code != NM_CUSTOMDRAW)
            heard_.push_back(
                {message, static_cast<int>(header.idFrom), static_cast<int>(header.code)});
    } else if (message == WM_HSCROLL || message == WM_VSCROLL) {
        const int sender = GetDlgCtrlID(reinterpret_cast<HWND>(lp));
        heard_.push_back({message, sender, LOWORD(wp), HIWORD(wp)});
    }
}

void focus(HWND window) {
    bringToFront(GetAncestor(window, GA_ROOT));
    SetFocus(window);
    drain();
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

}  // namespace QkDlgTest

// Runs a dialog of its own with real mouse and keyboard, prints which handler got what, and ends
// with 0 if each input reached the handler that it should and the controls look flat.
#include <QkDlg/QkFlatToggleBtn.h>
#include <QkDlg/QkXDlg.h>

#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace {

using QkDlg::QkXDlg;

constexpr UINT kDialog = 120;
constexpr int kEdit = 1001;
constexpr int kSwitch = 1003;

int failures = 0;

void check(bool good, const char* what) {
    std::printf("%s %s\n", good ? "ok    " : "FAILED", what);
    failures += good ? 0 : 1;
}

class HostDialog : public QkXDlg {
public:
    explicit HostDialog(bool flat) : QkXDlg(kDialog) { m_bFlat = flat; }

    /// What the handlers have been told since the last question.
    std::string heard() {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_heard, {});
    }
    [[nodiscard]] HWND window() const { return m_shown; }

    bool OnInitDialog() override {
        const bool result = QkXDlg::OnInitDialog();
        m_shown = m_hWnd;
        note("OnInitDialog");
        return result;
    }
    bool OnOK() override { return note("OnOK"), QkXDlg::OnOK(); }
    bool OnCancel() override { return note("OnCancel"), QkXDlg::OnCancel(); }
    bool OnHelp() override { return note("OnHelp"), QkXDlg::OnHelp(); }
    bool OnClose() override { return note("OnClose"), QkXDlg::OnClose(); }
    bool OnCommand(WPARAM w, LPARAM l) override {
        note("OnCommand " + std::to_string(LOWORD(w)) + " " + std::to_string(HIWORD(w)));
        return QkXDlg::OnCommand(w, l);
    }

private:
    void note(const std::string& call) {
        const std::scoped_lock lock(m_mutex);
        m_heard += call + ';';
    }

    std::mutex m_mutex;
    std::string m_heard;
    HWND m_shown = nullptr;
};

// Input, sent from a second thread while the dialog runs in the first

void send(INPUT input) {
    SendInput(1, &input, sizeof input);
    Sleep(30);
}

void key(WORD code, DWORD flags = 0) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki = {code, static_cast<WORD>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC)), flags, 0, 0};
    send(input);
}

void tap(WORD code, WORD with = 0) {
    if (with)
        key(with);
    key(code);
    key(code, KEYEVENTF_KEYUP);
    if (with)
        key(with, KEYEVENTF_KEYUP);
}

struct ScreenReleaser {
    void operator()(HDC dc) const { ReleaseDC(nullptr, dc); }
};

COLORREF pixel(HWND window, int x, int y) {
    POINT at{x, y};
    ClientToScreen(window, &at);
    const std::unique_ptr<std::remove_pointer_t<HDC>, ScreenReleaser> screen(GetDC(nullptr));
    return GetPixel(screen.get(), at.x, at.y);
}

/// Waits until the handlers have heard `wanted`.
void expectHeard(HostDialog& dialog, const char* what, const std::string& wanted) {
    std::string all;
    for (int tries = 0; tries < 100 && all.find(wanted) == std::string::npos; ++tries) {
        all += dialog.heard();
        Sleep(30);
    }
    check(all.find(wanted) != std::string::npos, (std::string(what) + ": " + all).c_str());
}

void expectFlat(const HostDialog& dialog, bool flat) {
    const HWND ok = GetDlgItem(dialog.window(), IDOK);
    check((pixel(ok, 5, 5) == QkDlg::GetUIColor(QkDlg::UICLR_ACCENT)) == flat, "accent on OK");
    check((pixel(dialog.window(), 2, 2) == RGB(255, 255, 255)) == flat, "white ground");
    check((dynamic_cast<QkDlg::QkFlatToggleBtn*>(dialog.FindControl(kSwitch)) != nullptr) == flat,
          "a switch as described");
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(dialog.window(), WM_GETFONT, 0, 0)),
               sizeof font, &font);
    check(std::wstring(font.lfFaceName) == L"Tahoma", "the described font");
}

void type(HostDialog& dialog) {
    for (const wchar_t* letter = L"ABC"; *letter; ++letter)
        tap(static_cast<WORD>(*letter));
    expectHeard(dialog, "typing", "OnCommand 1001 768");
    check(dialog.GetItemText(kEdit) == L"abc", "the text is there");
    tap(VK_F1);
    expectHeard(dialog, "F1", "OnHelp");
}

/// One run of the dialog; `last` ends it.
template <typename Last>
void run(HostDialog& dialog, int wanted, const char* handler, Last last) {
    std::thread user([&] {
        expectHeard(dialog, "opening", "OnInitDialog");
        Sleep(300);
        expectFlat(dialog, dialog.IsFlat());
        last();
        expectHeard(dialog, "ending", handler);
    });
    check(dialog.DoModal() == wanted, handler);
    user.join();
}

}  // namespace

int main() {
    HostDialog standard(false);
    run(standard, IDCANCEL, "OnCancel", [] { tap(VK_ESCAPE); });
    HostDialog flat(true);
    run(flat, IDOK, "OnOK", [&] {
        type(flat);
        tap(VK_RETURN);
    });
    run(flat, IDCANCEL, "OnCancel", [] { tap(VK_ESCAPE); });
    run(flat, IDCANCEL, "OnClose;OnCancel", [] { tap(VK_F4, VK_MENU); });
    std::printf("%d failed\n", failures);
    return failures ? 1 : 0;
}

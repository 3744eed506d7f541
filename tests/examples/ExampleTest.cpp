// The example hosts as a person uses them: each is started, seen to be flat, and ended with real
// mouse and keyboard. They lie in the folder of this program.
#include <gtest/gtest.h>

#include <string>

#include "QkUtil/Handles.h"
#include "tests/support/ChildProcess.h"

namespace QkDlgTest {
namespace {

constexpr int kTries = 400;  // of 50 ms
constexpr COLORREF kAccent = RGB(27, 118, 192);

/// What a person does: the keys, then a click on the button.
struct Use {
    const wchar_t* program;
    const wchar_t* caption;
    int accent;        ///< the button in the accent colour
    const char* keys;  ///< virtual keys
    int checked;       ///< what they check, or 0
    int button;
    DWORD status;
};

void send(INPUT input) {
    SendInput(1, &input, sizeof input);
    Sleep(30);
}

void tap(WORD key) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    send(input);
    input.ki.dwFlags = KEYEVENTF_KEYUP;
    send(input);
}

void click(HWND window) {
    RECT at{};
    GetWindowRect(window, &at);
    SetCursorPos((at.left + at.right) / 2, (at.top + at.bottom) / 2);
    INPUT input{};
    input.type = INPUT_MOUSE;
    for (const DWORD flag :
         std::initializer_list<DWORD>{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
        input.mi.dwFlags = flag;
        send(input);
    }
}

/// The colour near the corner of another program's window, as the screen shows it.
COLORREF cornerOf(HWND window) {
    RECT at{};
    GetWindowRect(window, &at);
    return GetPixel(QkDlg::WindowDc(nullptr).get(), at.left + 5, at.top + 5);
}

GUITHREADINFO inputOf(HWND dialog) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
    return info;
}

template <typename Condition>
bool waitFor(Condition condition) {
    for (int tries = 0; tries < kTries; ++tries, Sleep(50))
        if (condition())
            return true;
    return false;
}

class Examples : public testing::TestWithParam<Use> {};

TEST_P(Examples, IsFlatAndAnswers) {
    const Use& use = GetParam();
    const Outcome run = runProgram(use.program, L"", [&use] {
        HWND dialog = nullptr;
        ASSERT_TRUE(waitFor([&] {
            dialog = FindWindowW(L"#32770", use.caption);
            return IsWindowVisible(dialog) && IsChild(dialog, inputOf(dialog).hwndFocus);
        }));
        for (const char* key = use.keys; *key; ++key)
            tap(static_cast<WORD>(*key));
        // A disabled one has the colour, too.
        EXPECT_TRUE(waitFor([&] {
            const HWND accent = GetDlgItem(dialog, use.accent);
            return IsWindowEnabled(accent) && cornerOf(accent) == kAccent;
        }));
        // A button that the space key still holds down would take the mouse.
        EXPECT_TRUE(!use.checked || waitFor([&] {
            return SendDlgItemMessageW(dialog, use.checked, BM_GETCHECK, 0, 0) == BST_CHECKED &&
                   !inputOf(dialog).hwndCapture;
        }));
        click(GetDlgItem(dialog, use.button));
    });
    EXPECT_EQ(run.status, use.status);
}

const Use kUses[] = {
    {L"CHost.exe", L"Close document", IDYES, "", 0, IDYES, 0},
    {L"CHost.exe", L"Close document", IDYES, "", 0, IDNO, 1},
    // The button is accented when there is a name; the space is for the switch, two tabs on.
    {L"CppHost.exe", L"Sign in", IDOK, "A", 0, IDOK, 0},
    {L"CppHost.exe", L"Sign in", IDOK, "A\t\t ", 1004, IDOK, 2},
    {L"CppHost.exe", L"Sign in", IDOK, "A", 0, IDCANCEL, 1},
#ifdef QKDLG_RUST_HOST
    {L"RustHost.exe", L"Export", IDOK, "", 0, IDOK, 0},
    {L"RustHost.exe", L"Export", IDOK, "\t ", 1002, IDOK, 2},
    {L"RustHost.exe", L"Export", IDOK, "", 0, IDCANCEL, 1},
#endif
};

INSTANTIATE_TEST_SUITE_P(All, Examples, testing::ValuesIn(kUses),
                         [](const testing::TestParamInfo<Use>& use) {
                             const std::wstring name = use.param.program;
                             return std::string(name.begin(), name.end() - 4) +
                                    std::to_string(use.index);
                         });

}  // namespace
}  // namespace QkDlgTest

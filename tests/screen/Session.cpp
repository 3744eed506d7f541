#include "Session.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <random>
#include <type_traits>

#include "Scene.h"
#include "gallery/Ids.h"
#include "support/MessageLoop.h"

namespace ScreenTest {

namespace {

using QkDlgTest::pump;

constexpr int kShort = 30;
constexpr int kHold = 300;
constexpr int kFadeTime = 500;
constexpr int kLongest = 5000;

void mouse(DWORD event, int data = 0) {
    mouse_event(event, 0, 0, static_cast<DWORD>(data), 0);
    pump(kShort / 2);
}

void moveTo(POINT to) {
    SetCursorPos(to.x, to.y);
    pump(kShort / 2);
}

void glide(POINT from, POINT to) {
    constexpr int kSteps = 5;
    for (int step = 1; step <= kSteps; ++step)
        moveTo(
            {from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps});
}

void park() {
    moveTo({GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1});
}

void key(int code) {
    const DWORD extended = code >= VK_PRIOR && code <= VK_DOWN ? KEYEVENTF_EXTENDEDKEY : 0;
    for (const DWORD direction : std::initializer_list<DWORD>{0, KEYEVENTF_KEYUP}) {
        keybd_event(static_cast<BYTE>(code), 0, extended | direction, 0);
        pump(kShort / 2);
    }
}

/// False when it takes too long.
bool await(const std::function<bool()>& done) {
    const ULONGLONG end = GetTickCount64() + kLongest;
    do {
        pump(kShort);
        if (done())
            return true;
    } while (GetTickCount64() < end);
    return false;
}

void awaitPaint(HWND window) {
    (void)await([window] { return !hasUnpainted(window); });
}

/// The library's own windows around scroll bars, which no host knows.
bool isHosts(HWND window) {
    constexpr const wchar_t* kHolder = L"SCROLLBARHOLDER";
    return className(window) != kHolder && className(GetParent(window)) != kHolder;
}

HWND makeCover() {
    WNDCLASSW cover{};
    cover.lpfnWndProc = DefWindowProcW;
    cover.lpszClassName = L"ScreenTestCover";
    cover.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_HIGHLIGHT + 1));
    RegisterClassW(&cover);
    return CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOPMOST, cover.lpszClassName, L"", WS_POPUP, 0,
                           0, 1, 1, nullptr, nullptr, nullptr, nullptr);
}

/// Wine scales the place that another process gives a window from the screen's DPI to 96. For a
/// thread that knows no DPI it leaves it as it is.
void moveInItsProcess(HWND window, int x, int y) {
    using SetAwareness = HANDLE WINAPI(HANDLE);
    static auto* const set = reinterpret_cast<SetAwareness*>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"user32"), "SetThreadDpiAwarenessContext")));
    const HANDLE before = set ? set(reinterpret_cast<HANDLE>(std::intptr_t{-1})) : nullptr;
    SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (set)
        set(before);
}

bool showsSame(const Frame& one, const Frame& other, const RECT& place) {
    for (LONG y = place.top; y < place.bottom; ++y) {
        if (!std::ranges::equal(one.row(place, y), other.row(place, y)))
            return false;
    }
    return true;
}

/// Plays a person, with real mouse and keyboard, and a host that changes its controls meanwhile.
class Session {
public:
    Session(HWND main, const Screen& screen, Report& report, unsigned seed)
        : main_(main),
          screen_(screen),
          report_(report),
          scene_(main),
          random_(seed),
          cover_(makeCover()) {}

    bool play(int milliseconds) {
        const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
        while (GetTickCount64() < end) {
            scene_.update();
            if (scene_.dialogs().empty())
                return false;
            chooseControl();
            actOnce();
            pump(kShort);
        }
        while (scene_.dialogs().size() > 1) {
            closeTopDialog();
            scene_.update();
        }
        return IsWindow(main_) != FALSE;
    }

private:
    int below(std::size_t limit) { return static_cast<int>(random_() % limit); }

    template <typename List>
    auto& one(List& list) {
        return list[random_() % std::size(list)];
    }

    // What changes stays until the watcher, too, knows where the windows are.
    void hold() {
        pump(kHold);
        (void)await([this, enough = report_.looks + 2] { return report_.looks >= enough; });
    }

    void chooseControl() {
        dialog_ = scene_.dialogs().front();
        std::vector<HWND> controls = withChildren(dialog_);
        std::erase_if(controls, [](HWND window) {
            return !IsWindowVisible(window) || className(window) == L"#32770" ||
                   (GetDlgCtrlID(window) == 0 && !GetWindow(window, GW_CHILD));
        });
        target_ = controls.empty() ? dialog_ : one(controls);
        GetWindowRect(target_, &place_);
    }

    void actOnce() {
        struct Act {
            const wchar_t* name = nullptr;
            void (Session::*play)() = nullptr;
            bool isHosts = false;
        };
        static constexpr Act kActs[] = {
            {L"hover", &Session::hover},
            {L"click", &Session::click},
            {L"drag", &Session::drag},
            {L"keys", &Session::pressKeys},
            {L"wheel", &Session::turnWheel},
            {L"cover", &Session::cover},
            {L"change the page", &Session::changePage},
            {L"repaint all", &Session::repaintAll},
            {L"disable and enable", &Session::disable, true},
            {L"hide and show", &Session::hide, true},
            {L"move", &Session::moveControl, true},
            {L"change the state", &Session::changeState, true},
            {L"change the state", &Session::changeState, true},
        };
        if (scene_.dialogs().size() > 1 && below(6) == 0)
            return closeTopDialog();
        // Mouse and keyboard every second time at least.
        const Act& act = kActs[below(below(2) == 0 ? 4 : std::size(kActs))];
        if (act.isHosts && !isHosts(target_))
            return;
        report_.act = act.name;
        (this->*act.play)();
    }

    POINT inside() {
        const auto width = static_cast<unsigned>(std::max(1L, place_.right - place_.left));
        const auto height = static_cast<unsigned>(std::max(1L, place_.bottom - place_.top));
        return {place_.left + below(width), place_.top + below(height)};
    }

    LRESULT tell(UINT message, WPARAM wp = 0, LPARAM lp = 0) const {
        return SendMessageW(target_, message, wp, lp);
    }

    void hover() {
        glide({place_.left - 3, place_.top - 3}, inside());
        pump(below(kHold));
        if (below(2) == 0)
            park();
    }

    void click() {
        moveTo(inside());
        mouse(MOUSEEVENTF_LEFTDOWN);
        pump(below(kHold) / 2);
        mouse(MOUSEEVENTF_LEFTUP);
    }

    // Out of the control, perhaps back again, or along it.
    void drag() {
        const POINT from = inside();
        const POINT to = below(2) == 0 ? inside() : POINT{place_.left - 8, place_.top - 8};
        moveTo(from);
        mouse(MOUSEEVENTF_LEFTDOWN);
        glide(from, to);
        if (below(2) == 0)
            glide(to, from);
        mouse(MOUSEEVENTF_LEFTUP);
    }

    void turnWheel() {
        moveTo(inside());
        for (int notch = 0; notch < 4; ++notch)
            mouse(MOUSEEVENTF_WHEEL, notch < 2 ? WHEEL_DELTA : -WHEEL_DELTA);
    }

    void pressKeys() {
        static constexpr int kKeys[][8] = {
            {VK_TAB, VK_TAB, VK_TAB, VK_TAB, VK_TAB, VK_TAB, VK_TAB, VK_TAB},
            {'A', 'M', 'S', '1', VK_SPACE, VK_BACK, VK_DELETE, VK_HOME},
            {VK_DOWN, VK_DOWN, VK_DOWN, VK_UP, VK_RIGHT, VK_LEFT, VK_NEXT, VK_PRIOR}};
        const auto& keys = one(kKeys);
        for (int times = 1 + below(6); times > 0; --times)
            key(one(keys));
    }

    void disable() {
        for (int times = 0; times < 2; ++times) {
            EnableWindow(target_, !IsWindowEnabled(target_));
            hold();
        }
    }

    void hide() {
        for (const int command : {SW_HIDE, SW_SHOWNA}) {
            ShowWindow(target_, command);
            hold();
        }
    }

    void changeState() {
        const std::wstring name = className(target_);
        if (name == L"ComboBox")
            tell(CB_SETCURSEL, static_cast<WPARAM>(below(4)));
        else if (name == L"msctls_progress32")
            tell(PBM_SETPOS, static_cast<WPARAM>(below(100)));
        else if (name == L"ScrollBar")
            SetScrollPos(target_, SB_CTL, below(100), TRUE);
        else if (name == L"SysListView32")
            tell(LVM_SCROLL, 0, below(60) - 30);
        else if (name == L"Button")
            changeButton();
        if (name != L"Button" && name != L"Static")
            return;
        std::array<wchar_t, 200> text{};
        tell(WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
        tell(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.data()));
    }

    void changeButton() {
        const auto style = LOWORD(GetWindowLongW(target_, GWL_STYLE));
        const DWORD type = style & BS_TYPEMASK;
        for (const WPARAM pressed : std::initializer_list<WPARAM>{TRUE, FALSE}) {
            tell(BM_SETSTATE, pressed);
            // The default moves to another button and back.
            if (type <= BS_DEFPUSHBUTTON)
                tell(BM_SETSTYLE, style ^ (pressed ? BS_DEFPUSHBUTTON : 0U), TRUE);
            pump(kShort);
        }
        if (type == BS_AUTOCHECKBOX || type == BS_CHECKBOX || type == BS_AUTO3STATE)
            tell(BM_SETCHECK, tell(BM_GETCHECK) == BST_UNCHECKED);
    }

    void moveControl() {
        RECT place = place_;
        MapWindowRect(HWND_DESKTOP, GetParent(target_), &place);
        for (const int offset : {6, 0}) {
            moveInItsProcess(target_, place.left + offset, place.top + offset / 2);
            hold();
        }
    }

    void cover() {
        const int width = place_.right - place_.left;
        for (int step = 0; step < 4; ++step) {
            SetWindowPos(cover_.get(), HWND_TOPMOST, place_.left - width / 2 + step * width / 4,
                         place_.top - 4, width + 1, place_.bottom - place_.top + 1 + below(40),
                         SWP_NOACTIVATE | SWP_SHOWWINDOW);
            pump(kShort * 2);
        }
        ShowWindow(cover_.get(), SW_HIDE);
    }

    void changePage() {
        HWND pages = GetDlgItem(main_, IDC_NAVIGATION);
        if (dialog_ != main_ || !pages)
            return;
        const int other = below(static_cast<std::size_t>(SendMessageW(pages, LB_GETCOUNT, 0, 0)));
        const auto there = static_cast<int>(SendMessageW(pages, LB_GETCURSEL, 0, 0));
        for (const int page : {other, there}) {
            RECT entry{};
            SendMessageW(pages, LB_GETITEMRECT, static_cast<WPARAM>(page),
                         reinterpret_cast<LPARAM>(&entry));
            MapWindowRect(pages, HWND_DESKTOP, &entry);
            moveTo({entry.left + 20, (entry.top + entry.bottom) / 2});
            mouse(MOUSEEVENTF_LEFTDOWN);
            mouse(MOUSEEVENTF_LEFTUP);
            // The page is there when the list answers again.
            (void)await([=] { return SendMessageW(pages, LB_GETCURSEL, 0, 0) == page; });
            awaitPaint(main_);
            hold();
        }
    }

    // What a repaint of everything changes was not painted as it should have been.
    void repaintAll() {
        park();
        pump(kFadeTime);
        awaitPaint(main_);
        const std::vector<HWND> dialogs = scene_.dialogs();
        Frame earlier{scene_.place(), {}};
        Frame before = earlier;
        Frame after = earlier;
        screen_.read(earlier);
        pump(kFadeTime);
        screen_.read(before);
        for (HWND dialog : dialogs)
            RedrawWindow(dialog, nullptr, nullptr,
                         RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
        RECT changed{};
        const bool same = await([&] {
            screen_.read(after);
            scene_.update();
            leaveOutWhatMoves(earlier, before);
            changed = {};
            for (std::size_t i = 0; i < after.pixels.size(); ++i) {
                if (before.pixels[i] == after.pixels[i] || !scene_.isJudged(i))
                    continue;
                const auto [x, y] = after.pointOf(i);
                const RECT pixel{x, y, x + 1, y + 1};
                UnionRect(&changed, &changed, &pixel);
            }
            return IsRectEmpty(&changed) != FALSE;
        });
        if (!same && scene_.dialogs() == dialogs)
            report_.add(L"other than a full repaint", before, changed,
                        scene_.nameAt({changed.left, changed.top}), &after);
    }

    // Controls that differ without being repainted, and the caret.
    void leaveOutWhatMoves(const Frame& earlier, const Frame& later) {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(main_, nullptr), &info);
        if (info.hwndCaret) {
            MapWindowRect(info.hwndCaret, HWND_DESKTOP, &info.rcCaret);
            scene_.leaveOut(info.rcCaret);
        }
        for (const Scene::Control& control : scene_.controls()) {
            if (!showsSame(earlier, later, control.place))
                scene_.leaveOut(control.place);
        }
    }

    void closeTopDialog() {
        report_.act = L"close the dialog";
        // A menu has the input to itself.
        if (IsWindowVisible(FindWindowW(L"#32768", nullptr)))
            key(VK_ESCAPE);
        else if (scene_.dialogs().front() != main_)
            PostMessageW(scene_.dialogs().front(), WM_CLOSE, 0, 0);
        hold();
    }

    struct WindowDestroyer {
        void operator()(HWND window) const { DestroyWindow(window); }
    };
    HWND main_;
    const Screen& screen_;
    Report& report_;
    Scene scene_;
    std::mt19937 random_;
    std::unique_ptr<std::remove_pointer_t<HWND>, WindowDestroyer> cover_;
    HWND dialog_ = nullptr;  ///< the topmost one
    HWND target_ = nullptr;  ///< the control of the act
    RECT place_{};           ///< its rectangle on the screen
};

}  // namespace

bool playSession(HWND main, const Screen& screen, Report& report, unsigned seed, int milliseconds) {
    return Session(main, screen, report, seed).play(milliseconds);
}

}  // namespace ScreenTest

#include "Session.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace ScreenTest {

namespace {

constexpr int kShort = 30;
constexpr int kHold = 300;
constexpr int kLookTime = 5000;
constexpr int kFadeTime = 500;
constexpr int kAnswerTime = 300;
constexpr int kPaintTime = 5000;
constexpr int kRoom = 40;
constexpr COLORREF kCoverColour = RGB(0, 160, 90);

void send(INPUT input) {
    SendInput(1, &input, sizeof input);
    pause(kShort / 2);
}

void mouse(DWORD flags, LONG dx = 0, LONG dy = 0, int data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = dx;
    input.mi.dy = dy;
    input.mi.mouseData = static_cast<DWORD>(data);
    input.mi.dwFlags = flags;
    send(input);
}

void moveTo(POINT to) {
    const auto absolute = [](LONG value, int metric) {
        return (value * 65536 + 32768) / GetSystemMetrics(metric);
    };
    mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, absolute(to.x, SM_CXSCREEN),
          absolute(to.y, SM_CYSCREEN));
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

void key(WORD code, bool shift = false) {
    const auto stroke = [](WORD which, DWORD flags) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = which;
        input.ki.dwFlags =
            flags | (which >= VK_PRIOR && which <= VK_DOWN ? KEYEVENTF_EXTENDEDKEY : 0);
        send(input);
    };
    if (shift)
        stroke(VK_SHIFT, 0);
    stroke(code, 0);
    stroke(code, KEYEVENTF_KEYUP);
    if (shift)
        stroke(VK_SHIFT, KEYEVENTF_KEYUP);
}

bool isPopupOpen(DWORD process) {
    HWND menu = FindWindowW(L"#32768", nullptr);
    DWORD owner = 0;
    GetWindowThreadProcessId(menu, &owner);
    return menu && owner == process && IsWindowVisible(menu);
}

BOOL CALLBACK collect(HWND window, LPARAM windows) {
    if (IsWindowVisible(window) && className(window) != L"#32770" &&
        (GetDlgCtrlID(window) != 0 || GetWindow(window, GW_CHILD)))
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

}  // namespace

void pause(int milliseconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    }
}

RECT watchedPlace(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    InflateRect(&place, kRoom, kRoom);
    const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    IntersectRect(&place, &place, &screen);
    return place;
}

Session::Session(DWORD process, HWND main, const Screen& screen, Report& report, unsigned seed)
    : process_(process),
      main_(main),
      screen_(screen),
      report_(report),
      scene_(process, watchedPlace(main)),
      random_(seed) {
    WNDCLASSW coverClass{};
    coverClass.lpfnWndProc = DefWindowProcW;
    coverClass.lpszClassName = L"ScreenTestCover";
    coverClass.hbrBackground = CreateSolidBrush(kCoverColour);
    RegisterClassW(&coverClass);
    cover_ = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOPMOST, coverClass.lpszClassName, L"",
                             WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
}

Session::~Session() {
    mouse(MOUSEEVENTF_LEFTUP);
    DestroyWindow(cover_);
}

void Session::waitForPaint() {
    const ULONGLONG end = GetTickCount64() + kPaintTime;
    do {
        pause(kShort);
    } while (hasUnpainted(main_) && GetTickCount64() < end);
}

// What changes stays until the watcher, too, knows where the windows are.
void Session::hold() {
    pause(kHold);
    const int before = report_.looks();
    const ULONGLONG end = GetTickCount64() + kLookTime;
    while (report_.looks() < before + 2 && GetTickCount64() < end)
        pause(kShort);
}

int Session::below(int limit) {
    return static_cast<int>(random_() % static_cast<unsigned>(limit));
}

bool Session::play(int milliseconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    while (GetTickCount64() < end) {
        scene_.update();
        if (!IsWindow(main_) || scene_.dialogs().empty())
            return false;
        chooseControl();
        actOnce();
    }
    while (scene_.dialogs().size() > 1) {
        closeTopDialog();
        scene_.update();
    }
    return IsWindow(main_) != FALSE;
}

void Session::chooseControl() {
    dialog_ = scene_.dialogs().front();
    std::vector<HWND> controls;
    EnumChildWindows(dialog_, &collect, reinterpret_cast<LPARAM>(&controls));
    target_ = controls.empty()
                  ? dialog_
                  : controls[static_cast<std::size_t>(below(static_cast<int>(controls.size())))];
    GetWindowRect(target_, &place_);
}

void Session::actOnce() {
    struct Act {
        const wchar_t* name;
        void (Session::*play)();
    };
    static constexpr Act kActs[] = {
        {L"hover", &Session::hover},
        {L"hover", &Session::hover},
        {L"click", &Session::click},
        {L"click", &Session::click},
        {L"drag out", &Session::dragOut},
        {L"drag along", &Session::dragAlong},
        {L"wheel", &Session::turnWheel},
        {L"tab", &Session::tab},
        {L"type", &Session::type},
        {L"arrow keys", &Session::arrows},
        {L"disable and enable", &Session::disable},
        {L"hide and show", &Session::hide},
        {L"change the state", &Session::changeState},
        {L"set the text again", &Session::setTextAgain},
        {L"move the default", &Session::moveDefault},
        {L"move the control", &Session::moveControl},
        {L"cover", &Session::cover},
        {L"change the page", &Session::changePage},
        {L"repaint all", &Session::repaintAll},
    };
    const bool hasDialogAbove = scene_.dialogs().size() > 1;
    if (hasDialogAbove && below(6) == 0) {
        report_.doing(L"close the dialog");
        closeTopDialog();
        return;
    }
    const Act& act = kActs[static_cast<std::size_t>(below(static_cast<int>(std::size(kActs))))];
    report_.doing(act.name);
    (this->*act.play)();
    pause(kShort);
}

POINT Session::inside() {
    const int width = std::max<int>(1, place_.right - place_.left);
    const int height = std::max<int>(1, place_.bottom - place_.top);
    return {place_.left + below(width), place_.top + below(height)};
}

LRESULT Session::tell(UINT message, WPARAM wParam, LPARAM lParam) const {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(target_, message, wParam, lParam, SMTO_ABORTIFHUNG, kAnswerTime, &result);
    return static_cast<LRESULT>(result);
}

void Session::hover() {
    glide({place_.left - 3, place_.top - 3}, inside());
    pause(below(kHold));
    if (below(2) == 0)
        park();
}

void Session::click() {
    moveTo(inside());
    mouse(MOUSEEVENTF_LEFTDOWN);
    pause(below(kHold) / 2);
    mouse(MOUSEEVENTF_LEFTUP);
}

void Session::dragOut() {
    const POINT from = inside();
    moveTo(from);
    mouse(MOUSEEVENTF_LEFTDOWN);
    glide(from, {place_.left - 8, place_.top - 8});
    if (below(2) == 0)
        glide({place_.left - 8, place_.top - 8}, from);
    mouse(MOUSEEVENTF_LEFTUP);
}

void Session::dragAlong() {
    const POINT from = inside();
    moveTo(from);
    mouse(MOUSEEVENTF_LEFTDOWN);
    glide(from, inside());
    mouse(MOUSEEVENTF_LEFTUP);
}

void Session::turnWheel() {
    moveTo(inside());
    for (int notch = 0; notch < 4; ++notch)
        mouse(MOUSEEVENTF_WHEEL, 0, 0, notch < 2 ? WHEEL_DELTA : -WHEEL_DELTA);
}

void Session::tab() {
    for (int times = 1 + below(5); times > 0; --times) {
        key(VK_TAB, below(4) == 0);
        pause(kShort);
    }
}

void Session::type() {
    for (int times = 1 + below(6); times > 0; --times) {
        static constexpr std::array<WORD, 8> kKeys{'A',      'M',     'S',       '1',
                                                   VK_SPACE, VK_BACK, VK_DELETE, VK_HOME};
        key(kKeys.at(static_cast<std::size_t>(below(kKeys.size()))));
    }
}

void Session::arrows() {
    for (int times = 1 + below(6); times > 0; --times) {
        static constexpr std::array<WORD, 7> kKeys{VK_DOWN, VK_DOWN, VK_UP,   VK_RIGHT,
                                                   VK_LEFT, VK_NEXT, VK_PRIOR};
        key(kKeys.at(static_cast<std::size_t>(below(kKeys.size()))));
    }
}

void Session::disable() {
    for (int times = 0; times < 2; ++times) {
        EnableWindow(target_, !IsWindowEnabled(target_));
        hold();
    }
}

void Session::hide() {
    ShowWindow(target_, SW_HIDE);
    hold();
    ShowWindow(target_, SW_SHOWNA);
    hold();
}

void Session::changeState() {
    const std::wstring name = className(target_);
    if (name == L"ComboBox") {
        tell(CB_SETCURSEL, static_cast<WPARAM>(below(4)));
    } else if (name == L"msctls_progress32") {
        tell(PBM_SETPOS, static_cast<WPARAM>(below(100)));
    } else if (name == L"ScrollBar") {
        SetScrollPos(target_, SB_CTL, below(100), TRUE);
    } else if (name == L"SysListView32") {
        tell(LVM_SCROLL, 0, below(60) - 30);
    } else if (name == L"Button") {
        tell(BM_SETSTATE, TRUE);
        pause(kShort);
        tell(BM_SETSTATE, FALSE);
        const auto type = static_cast<DWORD>(GetWindowLongW(target_, GWL_STYLE)) & BS_TYPEMASK;
        if (type == BS_AUTOCHECKBOX || type == BS_CHECKBOX || type == BS_AUTO3STATE)
            tell(BM_SETCHECK, tell(BM_GETCHECK) == BST_UNCHECKED);
    }
}

void Session::setTextAgain() {
    std::array<wchar_t, 200> text{};
    if (className(target_) != L"Button" && className(target_) != L"Static")
        return;
    tell(WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    tell(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.data()));
}

void Session::moveDefault() {
    const auto style = static_cast<DWORD>(GetWindowLongW(target_, GWL_STYLE));
    if (className(target_) != L"Button" || (style & BS_TYPEMASK) > BS_DEFPUSHBUTTON)
        return;
    for (int times = 0; times < 2; ++times) {
        const bool isDefault = (GetWindowLongW(target_, GWL_STYLE) & BS_TYPEMASK) != 0;
        tell(BM_SETSTYLE, ((style & 0xFFFFU) & ~1U) | (isDefault ? 0U : 1U), TRUE);
        pause(kShort);
    }
}

void Session::moveControl() {
    RECT place = place_;
    MapWindowRect(HWND_DESKTOP, GetParent(target_), &place);
    for (const int offset : {6, 0}) {
        SetWindowPos(target_, nullptr, place.left + offset, place.top + offset / 2, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        hold();
    }
}

void Session::cover() {
    const int width = place_.right - place_.left;
    for (int step = 0; step < 4; ++step) {
        SetWindowPos(cover_, HWND_TOPMOST, place_.left - width / 2 + step * width / 4,
                     place_.top - 4, width + 1, place_.bottom - place_.top + 1 + below(kRoom),
                     SWP_NOACTIVATE | SWP_SHOWWINDOW);
        pause(kShort * 2);
    }
    ShowWindow(cover_, SW_HIDE);
}

void Session::changePage() {
    HWND pages = GetWindow(main_, GW_CHILD);
    while (pages && className(pages) != L"ListBox")
        pages = GetWindow(pages, GW_HWNDNEXT);
    if (dialog_ != main_ || !pages)
        return;
    const auto there = static_cast<int>(SendMessageW(pages, LB_GETCURSEL, 0, 0));
    const auto go = [this, pages](int page) {
        RECT entry{};
        SendMessageW(pages, LB_GETITEMRECT, static_cast<WPARAM>(page),
                     reinterpret_cast<LPARAM>(&entry));
        MapWindowRect(pages, HWND_DESKTOP, &entry);
        moveTo({entry.left + 20, (entry.top + entry.bottom) / 2});
        mouse(MOUSEEVENTF_LEFTDOWN);
        mouse(MOUSEEVENTF_LEFTUP);
        // The page is there when the list answers again.
        const ULONGLONG end = GetTickCount64() + kLookTime;
        do
            pause(kShort);
        while (SendMessageW(pages, LB_GETCURSEL, 0, 0) != page && GetTickCount64() < end);
        waitForPaint();
        hold();
    };
    go(below(static_cast<int>(SendMessageW(pages, LB_GETCOUNT, 0, 0))));
    go(there);
}

// What a repaint of everything changes was not painted as it should have been. What moves by
// itself, and the caret, are left out.
void Session::repaintAll() {
    park();
    pause(kFadeTime);
    waitForPaint();
    const std::vector<HWND> dialogs = scene_.dialogs();
    Frame earlier{scene_.place(), {}, {}};
    Frame before = earlier;
    Frame after = earlier;
    screen_.read(earlier);
    pause(kFadeTime);
    screen_.read(before);
    for (HWND dialog : dialogs)
        RedrawWindow(dialog, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    RECT changed{};
    const ULONGLONG end = GetTickCount64() + kPaintTime;
    do {
        pause(kShort);
        screen_.read(after);
        scene_.update();
        changed = difference(earlier, before, after);
    } while (!IsRectEmpty(&changed) && GetTickCount64() < end);
    if (!IsRectEmpty(&changed) && scene_.dialogs() == dialogs)
        report_.add(L"other than a full repaint", before, changed,
                    scene_.nameAt({changed.left, changed.top}), &after);
}

/// Of what is judged and did not move by itself before.
RECT Session::difference(const Frame& earlier, const Frame& before, const Frame& after) const {
    RECT changed{};
    for (std::size_t i = 0; i < after.pixels.size(); ++i) {
        if (before.pixels[i] == after.pixels[i] || !scene_.isJudged(i))
            continue;
        const auto at = static_cast<LONG>(i);
        const POINT point{after.place.left + at % after.width(),
                          after.place.top + at / after.width()};
        if (movesByItself(point, earlier, before))
            continue;
        const RECT pixel{point.x, point.y, point.x + 1, point.y + 1};
        UnionRect(&changed, &changed, &pixel);
    }
    return changed;
}

bool Session::movesByItself(POINT point, const Frame& earlier, const Frame& later) const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(main_, nullptr), &info);
    RECT caret = info.rcCaret;
    if (info.hwndCaret)
        MapWindowRect(info.hwndCaret, HWND_DESKTOP, &caret);
    if (PtInRect(&caret, point))
        return true;
    return std::ranges::any_of(scene_.controls(), [&](const Scene::Control& control) {
        if (!PtInRect(&control.place, point))
            return false;
        for (LONG y = control.place.top; y < control.place.bottom; ++y) {
            const auto from = control.place.left - later.place.left;
            const auto to = control.place.right - later.place.left;
            if (!std::equal(earlier.row(y) + from, earlier.row(y) + to, later.row(y) + from))
                return true;
        }
        return false;
    });
}

void Session::closeTopDialog() {
    HWND top = scene_.dialogs().front();
    // A menu has the input to itself.
    if (isPopupOpen(process_))
        key(VK_ESCAPE);
    else if (top != main_)
        PostMessageW(top, WM_CLOSE, 0, 0);
    hold();
}

}  // namespace ScreenTest

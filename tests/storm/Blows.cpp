#include "storm/Blows.h"

#include <array>
#include <map>

#include "QkDlg/ColourFade.h"

namespace QkDlgTest {

namespace {

std::map<std::pair<HWND, UINT_PTR>, TIMERPROC> timers;
int shownDpi = 0;

template <typename Function>
Function* systemFunction(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}

UINT_PTR WINAPI setTimer(HWND window, UINT_PTR id, UINT, TIMERPROC procedure) {
    timers[{window, id}] = procedure;
    return id;
}

BOOL WINAPI killTimer(HWND window, UINT_PTR id) {
    return timers.erase({window, id}) != 0;
}

int WINAPI deviceCaps(HDC dc, int index) {
    static auto* const real = systemFunction<decltype(GetDeviceCaps)>(L"gdi32", "GetDeviceCaps");
    const bool asksDpi = index == LOGPIXELSX || index == LOGPIXELSY;
    return asksDpi && shownDpi != 0 ? shownDpi : real(dc, index);
}

// Messages

enum class Arg {
    None,
    Flag,
    Few,
    Arrows,
    Index,
    Point,
    Keys,
    Wheel,
    Text,
    Key,
    Char,
    Number,
    Font,
    Dc
};
using enum Arg;

struct Row {
    unsigned families;
    unsigned group;  ///< not compared where the kind differs in this
    Arg wp;
    Arg lp;
    std::vector<UINT> messages;
};

const Row kRows[] = {
    {kAny, kText, None, Text, {WM_SETTEXT, WM_SETTEXT}},
    {kAny, 0, None, None, {WM_GETTEXTLENGTH, WM_GETFONT, WM_SETFOCUS, WM_KILLFOCUS, WM_GETDLGCODE}},
    {kAny, 0, None, None, {WM_THEMECHANGED, WM_SYSCOLORCHANGE, WM_SETTINGCHANGE, WM_GETOBJECT}},
    {kAny, 0, None, None, {WM_DPICHANGED_BEFOREPARENT, WM_DPICHANGED_AFTERPARENT}},
    {kAny, 0, Flag, None, {WM_ENABLE, WM_SHOWWINDOW, WM_NCPAINT}},
    {kAny, 0, Few, None, {WM_CHANGEUISTATE, WM_UPDATEUISTATE, WM_QUERYUISTATE, WM_TIMER}},
    {kAny, 0, Font, Flag, {WM_SETFONT}},
    {kAny, 0, Dc, Few, {WM_ERASEBKGND, WM_PRINTCLIENT, WM_PRINT}},
    {kAny, 0, None, Point, {WM_NCHITTEST}},
    {kAny, kMouse, Keys, Point, {WM_MOUSEMOVE, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}},
    {kAny, kMouse, Keys, Point, {WM_LBUTTONUP, WM_LBUTTONUP}},
    {kAny, kMouse, Wheel, Point, {WM_MOUSEWHEEL, WM_MOUSEHWHEEL}},
    {kAny, kMouse, None, None, {WM_MOUSELEAVE, WM_CAPTURECHANGED, WM_CANCELMODE}},
    {kAny, kKeys, Key, Few, {WM_KEYDOWN, WM_KEYDOWN, WM_KEYUP, WM_SYSKEYDOWN, WM_SYSKEYUP}},
    {kAny, kKeys, Char, Few, {WM_CHAR}},
    {kAny & ~kListView, kFree, None, Number, {QkDlg::WM_FADECOLOR}},
    {kButton, 0, Few, None, {BM_SETCHECK}},
    {kButton, 0, Flag, None, {BM_SETSTATE, BM_SETIMAGE}},
    {kButton, kPlace, None, None, {BM_CLICK}},
    {kButton, kFree, Few, Flag, {BM_SETSTYLE}},
    {kEdit, 0, Index, Index, {EM_SETSEL, EM_LINESCROLL}},
    {kEdit, 0, Flag, Text, {EM_REPLACESEL}},
    {kEdit, 0, Flag, None, {EM_SETREADONLY, EM_SETMODIFY}},
    {kEdit, 0, Few, Few, {EM_SETMARGINS, EM_LIMITTEXT, EM_SCROLL}},
    {kEdit, 0, None, None, {EM_UNDO, EM_SCROLLCARET, WM_CLEAR}},
    {kEdit, kMask, Char, None, {EM_SETPASSWORDCHAR}},
    {kEdit, kFree, None, None, {WM_USER + 123}},  // turns the eye off
    // Wine's list box reads wild memory when told to begin before the first item.
    {kCombo, 0, None, Text, {CB_ADDSTRING, CB_SELECTSTRING}},
    {kCombo, 0, Index, Text, {CB_INSERTSTRING}},
    {kCombo, 0, Index, Few, {CB_DELETESTRING, CB_SETCURSEL, CB_SETITEMDATA, CB_SETTOPINDEX}},
    {kCombo, 0, Flag, None, {CB_RESETCONTENT, CB_SHOWDROPDOWN, CB_SETEXTENDEDUI}},
    {kCombo, 0, Few, Number, {CB_SETEDITSEL, CB_LIMITTEXT}},
    {kProgress, 0, Index, Number, {PBM_SETPOS, PBM_DELTAPOS, PBM_SETRANGE, PBM_SETRANGE32}},
    {kProgress, 0, Flag, Number, {PBM_STEPIT, PBM_SETBARCOLOR, PBM_SETMARQUEE}},
    {kProgress, 0, Few, None, {PBM_SETSTATE}},
    {kTrackbar | kSlider, 0, Flag, Index, {TBM_SETPOS, TBM_SETRANGEMIN, TBM_SETRANGEMAX}},
    {kTrackbar | kSlider, 0, Flag, Number, {TBM_SETRANGE, TBM_SETPAGESIZE}},
    {kScroll | kSlider, kRange, Index, Index, {SBM_SETPOS, SBM_SETRANGE, SBM_SETRANGEREDRAW}},
    {kScroll | kSlider, kRange, Arrows, None, {SBM_ENABLE_ARROWS}},
    {kListView, 0, Index, Flag, {LVM_DELETEITEM, LVM_ENSUREVISIBLE}},
    {kListView, 0, Few, Number, {LVM_DELETEALLITEMS, LVM_DELETECOLUMN}},
    {kListView, 0, Few, Few, {LVM_SETCOLUMNWIDTH}},  // no automatic one: rows have other insets
    {kListView, 0, Index, Index, {LVM_SCROLL}},
    {kListView, kFree, Few, Few, {LVM_SETVIEW, LVM_SETEXTENDEDLISTVIEWSTYLE, LVM_SETITEMCOUNT}},
    {kListView, kFree, Index, None, {LVM_SETHOTITEM, LVM_EDITLABELW}},
    {kListView | kEdit | kListBox, 0, Few, None, {WM_VSCROLL, WM_HSCROLL}},
    {kListBox, 0, None, Text, {LB_ADDSTRING}},
    {kListBox, 0, Index, None, {LB_DELETESTRING, LB_SETCURSEL, LB_SETTOPINDEX}},
    {kListBox, 0, Number, None, {LB_RESETCONTENT, LB_SETHORIZONTALEXTENT}},
};

constexpr int kKeyCodes[] = {VK_SPACE, VK_RETURN, VK_TAB,  VK_LEFT,  VK_RIGHT, VK_UP,     VK_DOWN,
                             VK_HOME,  VK_END,    VK_NEXT, VK_PRIOR, VK_BACK,  VK_DELETE, VK_F2,
                             VK_F4,    VK_F8,     VK_MENU, VK_SHIFT, VK_ADD,   'A'};
constexpr const wchar_t* kTexts[] = {
    L"",
    L"a",
    L"&OK",
    L"Some &text && more",
    L"several\r\nlines\r\n\r\nof it",
    L"a long text that does not fit into any of the controls here, nor into two of them at once"};

/// A sheet that controls print on.
HDC paper() {
    static const HDC dc = [] {
        const HDC screen = GetDC(nullptr);
        const HDC memory = CreateCompatibleDC(screen);
        SelectObject(memory, CreateCompatibleBitmap(screen, 200, 200));
        ReleaseDC(nullptr, screen);
        return memory;
    }();
    return dc;
}

LPARAM pointIn(HWND window, Dice& dice) {
    RECT rect{};
    GetClientRect(window, &rect);
    // Some miss.
    const LONG x = rect.right * (dice.roll(120) - 10) / 100;
    const LONG y = rect.bottom * (dice.roll(120) - 10) / 100;
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

LPARAM roll(Arg arg, HWND window, Dice& dice) {
    switch (arg) {
        case Flag: return dice.roll(2);
        case Few: return dice.roll(9);
        case Arrows: return dice.roll(ESB_DISABLE_BOTH + 1);
        case Index: return dice.oneIn(8) ? dice.roll(400) - 200 : dice.roll(8) - 1;
        case Point: return pointIn(window, dice);
        case Keys: return dice.oneIn(2) ? MK_LBUTTON : 0;
        case Wheel: return MAKELONG(0, static_cast<WORD>((dice.roll(7) - 3) * 60));
        case Text: return reinterpret_cast<LPARAM>(dice.one(kTexts));
        case Key: return dice.one(kKeyCodes);
        case Char: return dice.oneIn(6) ? VK_BACK : ' ' + dice.roll(90);
        case Number: return dice.roll(0x1000000);
        case Font:
            return reinterpret_cast<LPARAM>(
                GetStockObject(dice.oneIn(2) ? SYSTEM_FONT : DEFAULT_GUI_FONT));
        case Dc: return reinterpret_cast<LPARAM>(paper());
        default: return 0;
    }
}

/// Standard scroll bars and lists keep the loop to themselves until the button is up.
void releaseSoon(HWND window, LPARAM point) {
    std::array<wchar_t, 16> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    for (const wchar_t* const loops : {WC_SCROLLBARW, WC_LISTVIEWW}) {
        if (lstrcmpiW(name.data(), loops) == 0)
            PostMessageW(window, WM_LBUTTONUP, 0, point);
    }
}

// Deeds

/// What is in the queue; without the timers of the system's own controls, which go by the clock.
void deliver(bool timersToo) {
    MSG message{};
    for (int i = 0; i < 200 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
        if (timersToo || message.message != WM_TIMER)
            DispatchMessageW(&message);
    }
}

BOOL CALLBACK collect(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

/// Also one of those that controls made inside or beside themselves.
HWND someWindow(HWND host, Dice& dice) {
    std::vector<HWND> windows{host};
    EnumChildWindows(host, &collect, reinterpret_cast<LPARAM>(&windows));
    return dice.one(windows);
}

/// Mouse and keyboard as the system routes them. Press and release come together, because of loops
/// that wait for the release.
void realInput(HWND host, Dice& dice) {
    RECT rect{};
    GetWindowRect(host, &rect);
    for (int i = 0; i < 6; ++i) {
        std::array<INPUT, 2> inputs{};
        MOUSEINPUT& mouse = inputs[0].mi;
        const int what = dice.roll(4);
        if (what == 0) {
            mouse.dx = (rect.left + dice.roll(rect.right - rect.left)) * 65536 /
                       GetSystemMetrics(SM_CXSCREEN);
            mouse.dy = (rect.top + dice.roll(rect.bottom - rect.top)) * 65536 /
                       GetSystemMetrics(SM_CYSCREEN);
            mouse.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
        } else if (what == 1) {
            mouse.dwFlags = MOUSEEVENTF_LEFTDOWN;
            inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
        } else if (what == 2) {
            mouse.mouseData = static_cast<DWORD>(dice.oneIn(2) ? WHEEL_DELTA : -WHEEL_DELTA);
            mouse.dwFlags = MOUSEEVENTF_WHEEL;
        } else {
            inputs[0].type = inputs[1].type = INPUT_KEYBOARD;
            inputs[0].ki.wVk = inputs[1].ki.wVk = static_cast<WORD>(dice.one(kKeyCodes));
            inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
        }
        SendInput(what % 2 == 0 ? 1 : 2, inputs.data(), sizeof(INPUT));
    }
    deliver(true);
}

void setScrollInfo(HWND window, Dice& dice) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = dice.roll(20) - 10;
    info.nMax = info.nMin + dice.roll(200);
    info.nPage = static_cast<UINT>(dice.roll(20));
    info.nPos = dice.roll(250) - 20;
    SetScrollInfo(window, SB_CTL, &info, dice.roll(2));
}

void changeItems(HWND list, Dice& dice) {
    const auto index = static_cast<WPARAM>(dice.roll(8));
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.pszText = const_cast<wchar_t*>(dice.one(kTexts));
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = static_cast<UINT>(dice.roll(4));
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = 30 + dice.roll(80);
    column.pszText = item.pszText;
    const auto send = [&](UINT message, const auto& record) {
        SendMessageW(list, message, index, reinterpret_cast<LPARAM>(&record));
    };
    switch (dice.roll(6)) {
        case 0: return send(LVM_INSERTCOLUMNW, column);
        case 1: return send(LVM_SETITEMSTATE, item);
        case 2: return send(LVM_SETITEMTEXTW, item);
        default: return send(LVM_INSERTITEMW, item);
    }
}

/// What a host does in the middle of a notification.
void reactTo(Stage& stage, Actor& actor, int what) {
    switch (what) {
        case 0: return stage.makePlain(actor);
        case 1: EnableWindow(actor.window, FALSE); break;
        case 2: ShowWindow(actor.window, SW_HIDE); break;
        case 3: SetFocus(stage.host()); break;
        case 4: SetWindowTextW(actor.window, L"from within"); break;
        case 5:
            // Standard controls of other families do not bear it themselves.
            if ((actor.kind->family & (kButton | kScroll | kSlider)) == 0)
                break;
            stage.createWindow(actor);
            stage.makeFlat(actor);
            break;
        default: ReleaseCapture(); break;
    }
}

}  // namespace

// Once, so that their scopes end in the reverse order.
Surroundings::Surroundings()
    : caps_("GetDeviceCaps", &deviceCaps),
      set_("SetTimer", &setTimer),
      kill_("KillTimer", &killTimer) {
    contrast_.turn(false);
}

Surroundings::~Surroundings() {
    setDpi(0);
    timers.clear();
}

// The library asks the screen anew when the thread's DPI awareness is another.
void Surroundings::setDpi(int dpi) {
    using SetAwareness = void* WINAPI(void*);
    static auto* const set =
        systemFunction<SetAwareness>(L"user32", "SetThreadDpiAwarenessContext");
    static std::intptr_t context = -3;
    shownDpi = dpi;
    context = context == -3 ? -4 : -3;
    if (set)
        set(reinterpret_cast<void*>(context));
}

void Surroundings::fireTimers() {
    for (const auto& [key, procedure] : std::map(timers)) {
        const auto& [window, id] = key;
        if (!IsWindow(window))
            timers.erase(key);
        else if (timers.contains(key) && procedure)
            procedure(window, WM_TIMER, id, 0);
        else if (timers.contains(key))
            SendMessageW(window, WM_TIMER, id, 0);
    }
}

struct Blows::Deed {
    const char* name;
    unsigned families;
    unsigned group;
    int oneIn;  ///< dear ones are left out mostly
    void (*run)(Blows& b, Actor& a);
};

const std::vector<Blows::Deed>& Blows::deeds() {
    static const std::vector<Deed> all{
        {"EnableWindow", kAny & ~kScroll, 0, 1,
         [](Blows& b, Actor& a) { EnableWindow(a.window, !b.dice_.oneIn(3)); }},
        {"EnableWindow", kScroll, kRange, 1,
         [](Blows& b, Actor& a) { EnableWindow(a.window, !b.dice_.oneIn(3)); }},
        {"ShowWindow", kAny, 0, 1,
         [](Blows& b, Actor& a) { ShowWindow(a.window, b.dice_.oneIn(3) ? SW_HIDE : SW_SHOW); }},
        {"SetWindowPos", kAny, 0, 1,
         [](Blows& b, Actor& a) {
             constexpr std::array sizes{0, 1, 20, 90, 200};
             const int at = b.dice_.roll(200) - 20;
             const int width = b.dice_.one(sizes);
             const int height = b.dice_.one(sizes);
             const auto flags = static_cast<UINT>(b.dice_.roll(16));  // SWP_NOSIZE to SWP_NOREDRAW
             SetWindowPos(a.window, HWND_TOP, at, at, width, height, flags | SWP_NOACTIVATE);
         }},
        // A scroll bar that switched itself off or on takes it or not.
        {"SetFocus", kAny & ~kScroll, 0, 1, [](Blows&, Actor& a) { SetFocus(a.window); }},
        {"SetFocus", kScroll, kRange, 1, [](Blows&, Actor& a) { SetFocus(a.window); }},
        {"style", kAny, 0, 1,
         [](Blows& b, Actor& a) {
             const DWORD change =
                 a.kind->toggled & (1U << b.dice_.roll(16) | 1U << b.dice_.roll(32));
             SetWindowLongPtrW(
                 a.window, GWL_STYLE,
                 GetWindowLongPtrW(a.window, GWL_STYLE) ^ static_cast<LONG_PTR>(change));
         }},
        {"redraw", kAny, 0, 1, [](Blows& b, Actor& a) { b.redraw(a.window); }},
        {"redraw all", kAny, 0, 3, [](Blows& b, Actor&) { b.redraw(b.stage_.host()); }},
        {"WM_SETREDRAW pair", kAny, 0, 1,
         [](Blows& b, Actor& a) {
             // The second half shows a hidden window.
             const bool shown = (GetWindowLongPtrW(a.window, GWL_STYLE) & WS_VISIBLE) != 0;
             if (shown)
                 SendMessageW(a.window, WM_SETREDRAW, FALSE, 0);
             b.send(a, a.window);
             if (shown)
                 SendMessageW(a.window, WM_SETREDRAW, TRUE, 0);
         }},
        {"capture taken", kAny, kMouse, 1, [](Blows& b, Actor&) { SetCapture(b.stage_.host()); }},
        {"capture released", kAny, kMouse, 1, [](Blows&, Actor&) { ReleaseCapture(); }},
        {"SetScrollInfo", kScroll, 0, 1,
         [](Blows& b, Actor& a) { setScrollInfo(a.window, b.dice_); }},
        {"SetScrollInfo", kSlider, kRange, 1,
         [](Blows& b, Actor& a) { setScrollInfo(a.window, b.dice_); }},
        {"items", kListView, 0, 1, [](Blows& b, Actor& a) { changeItems(a.window, b.dice_); }},
        {"items", kListView, 0, 1, [](Blows& b, Actor& a) { changeItems(a.window, b.dice_); }},
        {"broadcast", kAny, 0, 4,
         [](Blows& b, Actor&) {
             constexpr std::array<UINT, 4> messages{WM_THEMECHANGED, WM_SYSCOLORCHANGE,
                                                    WM_SETTINGCHANGE, WM_DPICHANGED};
             RECT rect{};
             GetWindowRect(b.stage_.host(), &rect);
             const UINT message = b.dice_.one(messages);
             SendMessageW(b.stage_.host(), message, MAKEWPARAM(144, 144),
                          message == WM_DPICHANGED ? reinterpret_cast<LPARAM>(&rect) : 0);
         }},
        {"high contrast", kAny, 0, 1,
         [](Blows& b, Actor&) { b.surroundings_.turnContrast(b.dice_.oneIn(2)); }},
        {"DPI", kAny, 0, 2,
         [](Blows& b, Actor&) { Surroundings::setDpi(96 + 48 * b.dice_.roll(4)); }},
        {"timers", kAny, kRange, 1, [](Blows&, Actor&) { Surroundings::fireTimers(); }},
        {"message loop", kAny, 0, 3, [](Blows& b, Actor&) { deliver(b.free_); }},
        {"new window", kAny, 0, 2,
         [](Blows& b, Actor& a) {
             b.stage_.createWindow(a);
             b.stage_.makeFlat(a);
         }},
        {"object deleted", kAny, 0, 2, [](Blows& b, Actor& a) { b.stage_.makePlain(a); }},
        {"new object", kAny, 0, 1,
         [](Blows& b, Actor& a) {
             b.stage_.makePlain(a);
             b.stage_.makeFlat(a);
         }},
        {"dialog hidden and disabled", kAny, kFree, 6,
         [](Blows& b, Actor& a) {
             EnableWindow(b.stage_.host(), FALSE);
             ShowWindow(b.stage_.host(), SW_HIDE);
             b.send(a, a.window);
             EnableWindow(b.stage_.host(), TRUE);
             ShowWindow(b.stage_.host(), SW_SHOW);
         }},
        {"system colours", kAny, kFree, 12,
         [](Blows& b, Actor&) {
             const SystemColours scheme({{COLOR_WINDOW, RGB(b.dice_.roll(256), 0, 64)}});
             deliver(true);
         }},
        {"real input", kAny, kFree, 1,
         [](Blows& b, Actor&) { realInput(b.stage_.host(), b.dice_); }},
        {"to another window", kAny, kFree, 1,
         [](Blows& b, Actor& a) { b.send(a, someWindow(b.stage_.host(), b.dice_)); }},
        {"reaction", kAny, kFree, 1,
         [](Blows& b, Actor& a) {
             b.stage_.react(
                 [&stage = b.stage_, &a, what = b.dice_.roll(7)] { reactTo(stage, a, what); });
         }},
    };
    return all;
}

void Blows::redraw(HWND window) {
    constexpr UINT all = RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN;
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_UPDATENOW | (dice_.oneIn(2) ? all : 0));
}

void Blows::send(const Actor& actor, HWND window) {
    const unsigned differs = free_ ? 0 : actor.kind->differences | kFree;
    // What only one family knows means something else, or a pointer, to a window of another.
    const unsigned family = window == actor.window ? actor.kind->family : 0;
    while (true) {
        const Row& row = dice_.one(kRows);
        const UINT message = dice_.one(row.messages);
        if ((family ? (row.families & family) == 0 : row.families != kAny) ||
            (row.group & differs) != 0)
            continue;
        const auto wp = static_cast<WPARAM>(roll(row.wp, window, dice_));
        const LPARAM lp = roll(row.lp, window, dice_);
        *told_ += " message " + std::to_string(message) + ' ' + std::to_string(wp) + ' ' +
                  std::to_string(lp);
        if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK)
            releaseSoon(window, lp);
        SendMessageW(window, message, wp, lp);
        return;
    }
}

void Blows::strike(std::string& told) {
    Actor& actor = dice_.one(stage_.actors());
    const Deed& deed = dice_.one(deeds());
    const unsigned differs = free_ ? 0 : actor.kind->differences | kFree;
    told_ = &told;
    told = std::to_string(actor.id);
    if (dice_.oneIn(6) && (deed.families & actor.kind->family) != 0 &&
        (deed.group & differs) == 0 && dice_.oneIn(deed.oneIn)) {
        told += std::string(" ") + deed.name;
        deed.run(*this, actor);
    } else {
        send(actor, actor.window);
    }
}

}  // namespace QkDlgTest

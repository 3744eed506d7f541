#include "Messages.h"

#include <array>
#include <iterator>
#include <optional>
#include <vector>

#include "QkDlg/ColourFade.h"
#include "support/Input.h"
#include "support/MessageLoop.h"

namespace QkDlgTest {

namespace {

using TimerKey = std::pair<HWND, UINT_PTR>;

std::map<TimerKey, TIMERPROC> timers;
int shownDpi = 0;

UINT_PTR WINAPI setTimer(HWND window, UINT_PTR id, UINT, TIMERPROC procedure) {
    timers[{window, id}] = procedure;
    return id;
}

BOOL WINAPI killTimer(HWND window, UINT_PTR id) {
    return timers.erase({window, id}) != 0;
}

int WINAPI deviceCaps(HDC dc, int index) {
    static const auto real = reinterpret_cast<decltype(&GetDeviceCaps)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"gdi32"), "GetDeviceCaps")));
    const bool asksDpi = index == LOGPIXELSX || index == LOGPIXELSY;
    return asksDpi && shownDpi != 0 ? shownDpi : real(dc, index);
}

/// Of the thread, as a number that SetThreadDpiAwarenessContext takes; null on old systems.
void* setAwareness(std::intptr_t context) {
    using Set = void*(WINAPI*)(void*);
    static const auto set = reinterpret_cast<Set>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"user32"), "SetThreadDpiAwarenessContext")));
    return set ? set(reinterpret_cast<void*>(context)) : nullptr;
}

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
    Colour,
    Font,
    Dc
};
enum Group : unsigned {
    kPlainGroup = 0,
    kMouse = kOwnMouse,
    kKeys = kOwnKeys,
    kText = kOwnText,
    kMask = kOwnMask,
    kPosition = kOwnScrolling,
    kFree = 1U << 30
};

struct Row {
    const char* name;
    UINT message;
    Arg wp = Arg::None;
    Arg lp = Arg::None;
    unsigned families = kAny;
    unsigned group = kPlainGroup;  ///< not compared where the kind differs in this
};

#define ROW(message, ...) \
    { #message, message, __VA_ARGS__ }
const Row kRows[] = {
    ROW(WM_SETTEXT, Arg::None, Arg::Text, kAny, kText),
    ROW(WM_SETTEXT, Arg::None, Arg::Text, kAny, kText),
    ROW(WM_GETTEXTLENGTH),
    ROW(WM_SETFONT, Arg::Font, Arg::Flag),
    ROW(WM_GETFONT),
    ROW(WM_ENABLE, Arg::Flag),
    ROW(WM_SHOWWINDOW, Arg::Flag),
    ROW(WM_SETFOCUS),
    ROW(WM_KILLFOCUS),
    ROW(WM_MOUSEMOVE, Arg::Keys, Arg::Point, kAny, kMouse),
    ROW(WM_MOUSEMOVE, Arg::Keys, Arg::Point, kAny, kMouse),
    ROW(WM_MOUSELEAVE, Arg::None, Arg::None, kAny, kMouse),
    ROW(WM_LBUTTONDOWN, Arg::Keys, Arg::Point, kAny, kMouse),
    ROW(WM_LBUTTONUP, Arg::Keys, Arg::Point, kAny, kMouse),
    ROW(WM_LBUTTONUP, Arg::Keys, Arg::Point, kAny, kMouse),
    ROW(WM_LBUTTONDBLCLK, Arg::Keys, Arg::Point, kAny, kMouse),
    ROW(WM_MOUSEWHEEL, Arg::Wheel, Arg::Point, kAny, kMouse),
    ROW(WM_MOUSEHWHEEL, Arg::Wheel, Arg::Point, kAny, kMouse),
    ROW(WM_CAPTURECHANGED, Arg::None, Arg::None, kAny, kMouse),
    ROW(WM_CANCELMODE, Arg::None, Arg::None, kAny, kMouse),
    ROW(WM_KEYDOWN, Arg::Key, Arg::Few, kAny, kKeys),
    ROW(WM_KEYDOWN, Arg::Key, Arg::Few, kAny, kKeys),
    ROW(WM_KEYUP, Arg::Key, Arg::Few, kAny, kKeys),
    ROW(WM_CHAR, Arg::Char, Arg::Few, kAny, kKeys),
    ROW(WM_SYSKEYDOWN, Arg::Key, Arg::Few, kAny, kKeys),
    ROW(WM_SYSKEYUP, Arg::Key, Arg::Few, kAny, kKeys),
    ROW(WM_GETDLGCODE),
    ROW(WM_THEMECHANGED),
    ROW(WM_SYSCOLORCHANGE),
    ROW(WM_SETTINGCHANGE),
    ROW(WM_CHANGEUISTATE, Arg::Few),
    ROW(WM_UPDATEUISTATE, Arg::Few),
    ROW(WM_QUERYUISTATE),
    ROW(WM_ERASEBKGND, Arg::Dc),
    ROW(WM_PRINTCLIENT, Arg::Dc, Arg::Few),
    ROW(WM_PRINT, Arg::Dc, Arg::Index),
    ROW(WM_NCPAINT, Arg::Flag),
    ROW(WM_NCHITTEST, Arg::None, Arg::Point),
    ROW(WM_TIMER, Arg::Few),
    ROW(WM_GETOBJECT),
    ROW(WM_DPICHANGED_BEFOREPARENT),
    ROW(WM_DPICHANGED_AFTERPARENT),
    {"WM_FADECOLOR", QkDlg::WM_FADECOLOR, Arg::None, Arg::Colour, kAny & ~kListView, kFree},
    {"turn the eye off", WM_USER + 123, Arg::None, Arg::None, kEdit, kFree},
    ROW(BM_SETCHECK, Arg::Few, Arg::None, kButton),
    ROW(BM_SETSTATE, Arg::Flag, Arg::None, kButton),
    ROW(BM_CLICK, Arg::None, Arg::None, kButton),
    ROW(BM_SETSTYLE, Arg::Few, Arg::Flag, kButton, kFree),
    ROW(BM_SETIMAGE, Arg::Flag, Arg::None, kButton),
    ROW(EM_SETSEL, Arg::Index, Arg::Index, kEdit),
    ROW(EM_REPLACESEL, Arg::Flag, Arg::Text, kEdit),
    ROW(EM_SETREADONLY, Arg::Flag, Arg::None, kEdit),
    ROW(EM_SETPASSWORDCHAR, Arg::Char, Arg::None, kEdit, kMask),
    ROW(EM_SETMARGINS, Arg::Few, Arg::Few, kEdit),
    ROW(EM_LIMITTEXT, Arg::Few, Arg::None, kEdit),
    ROW(EM_SETMODIFY, Arg::Flag, Arg::None, kEdit),
    ROW(EM_UNDO, Arg::None, Arg::None, kEdit),
    ROW(EM_LINESCROLL, Arg::Index, Arg::Index, kEdit),
    ROW(EM_SCROLL, Arg::Few, Arg::None, kEdit),
    ROW(EM_SCROLLCARET, Arg::None, Arg::None, kEdit),
    ROW(WM_CLEAR, Arg::None, Arg::None, kEdit),
    ROW(CB_ADDSTRING, Arg::None, Arg::Text, kCombo),
    ROW(CB_INSERTSTRING, Arg::Index, Arg::Text, kCombo),
    ROW(CB_DELETESTRING, Arg::Index, Arg::None, kCombo),
    ROW(CB_RESETCONTENT, Arg::None, Arg::None, kCombo),
    ROW(CB_SETCURSEL, Arg::Index, Arg::None, kCombo),
    // Wine's list box reads wild memory when told to begin before the first item.
    ROW(CB_SELECTSTRING, Arg::None, Arg::Text, kCombo),
    ROW(CB_SETITEMDATA, Arg::Index, Arg::Few, kCombo),
    ROW(CB_SHOWDROPDOWN, Arg::Flag, Arg::None, kCombo),
    ROW(CB_SETEDITSEL, Arg::None, Arg::Colour, kCombo),
    ROW(CB_SETEXTENDEDUI, Arg::Flag, Arg::None, kCombo),
    ROW(CB_SETTOPINDEX, Arg::Index, Arg::None, kCombo),
    ROW(CB_LIMITTEXT, Arg::Few, Arg::None, kCombo),
    ROW(PBM_SETPOS, Arg::Index, Arg::None, kProgress),
    ROW(PBM_DELTAPOS, Arg::Index, Arg::None, kProgress),
    ROW(PBM_STEPIT, Arg::None, Arg::None, kProgress),
    ROW(PBM_SETRANGE, Arg::None, Arg::Colour, kProgress),
    ROW(PBM_SETRANGE32, Arg::Index, Arg::Colour, kProgress),
    ROW(PBM_SETBARCOLOR, Arg::None, Arg::Colour, kProgress),
    ROW(PBM_SETMARQUEE, Arg::Flag, Arg::Few, kProgress),
    ROW(PBM_SETSTATE, Arg::Few, Arg::None, kProgress),
    ROW(TBM_SETPOS, Arg::Flag, Arg::Index, kTrackbar | kSlider),
    ROW(TBM_SETRANGE, Arg::Flag, Arg::Colour, kTrackbar | kSlider),
    ROW(TBM_SETRANGEMIN, Arg::Flag, Arg::Index, kTrackbar | kSlider),
    ROW(TBM_SETRANGEMAX, Arg::Flag, Arg::Index, kTrackbar | kSlider),
    ROW(TBM_SETPAGESIZE, Arg::None, Arg::Index, kTrackbar | kSlider),
    ROW(SBM_SETPOS, Arg::Index, Arg::Flag, kScroll | kSlider, kPosition),
    ROW(SBM_SETRANGE, Arg::Index, Arg::Index, kScroll | kSlider, kPosition),
    ROW(SBM_SETRANGEREDRAW, Arg::Index, Arg::Index, kScroll | kSlider, kPosition),
    ROW(SBM_ENABLE_ARROWS, Arg::Arrows, Arg::None, kScroll | kSlider, kPosition),
    ROW(LVM_DELETEITEM, Arg::Index, Arg::None, kListView),
    ROW(LVM_DELETEALLITEMS, Arg::None, Arg::None, kListView),
    ROW(LVM_SETCOLUMNWIDTH, Arg::Few, Arg::Colour, kListView),
    ROW(LVM_DELETECOLUMN, Arg::Few, Arg::None, kListView),
    ROW(LVM_SETVIEW, Arg::Few, Arg::None, kListView, kFree),
    ROW(LVM_SETEXTENDEDLISTVIEWSTYLE, Arg::None, Arg::Few, kListView, kFree),
    ROW(LVM_ENSUREVISIBLE, Arg::Index, Arg::Flag, kListView),
    ROW(LVM_SCROLL, Arg::Index, Arg::Index, kListView),
    ROW(LVM_SETHOTITEM, Arg::Index, Arg::None, kListView, kFree),
    ROW(LVM_EDITLABELW, Arg::Index, Arg::None, kListView, kFree),
    ROW(LVM_SETITEMCOUNT, Arg::Few, Arg::None, kListView),
    ROW(WM_VSCROLL, Arg::Few, Arg::None, kListView | kEdit | kListBox),
    ROW(WM_HSCROLL, Arg::Few, Arg::None, kListView | kEdit | kListBox),
    ROW(LB_ADDSTRING, Arg::None, Arg::Text, kListBox),
    ROW(LB_DELETESTRING, Arg::Index, Arg::None, kListBox),
    ROW(LB_RESETCONTENT, Arg::None, Arg::None, kListBox),
    ROW(LB_SETCURSEL, Arg::Index, Arg::None, kListBox),
    ROW(LB_SETTOPINDEX, Arg::Index, Arg::None, kListBox),
    ROW(LB_SETHORIZONTALEXTENT, Arg::Colour, Arg::None, kListBox),
};
#undef ROW

constexpr int kKeyCodes[] = {VK_SPACE, VK_RETURN, VK_TAB,   VK_LEFT,  VK_RIGHT, VK_UP,     VK_DOWN,
                             VK_HOME,  VK_END,    VK_NEXT,  VK_PRIOR, VK_BACK,  VK_DELETE, VK_F4,
                             VK_F8,    VK_MENU,   VK_SHIFT, 'A',      VK_F2,    VK_ADD};
constexpr std::array kTexts{
    L"",
    L"a",
    L"&OK",
    L"Some &text && more",
    L"several\r\nlines\r\n\r\nof it",
    L"a long text that does not fit into any of the controls here, nor into two of them at once, "
    L"so that it has to be cut, wrapped, shrunk or scrolled: whatever the control does about it"};

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
        case Arg::None: return 0;
        case Arg::Flag: return dice.roll(2);
        case Arg::Arrows: return dice.roll(ESB_DISABLE_BOTH + 1);
        case Arg::Few: return dice.roll(9);
        case Arg::Index: return dice.oneIn(8) ? dice.roll(400) - 200 : dice.roll(8) - 1;
        case Arg::Point: return pointIn(window, dice);
        case Arg::Keys: return dice.roll(2) * MK_LBUTTON;
        case Arg::Wheel: return MAKELONG(0, static_cast<WORD>((dice.roll(7) - 3) * 60));
        case Arg::Text:
            return reinterpret_cast<LPARAM>(
                kTexts.at(static_cast<std::size_t>(dice.roll(static_cast<int>(kTexts.size())))));
        case Arg::Key: return kKeyCodes[dice.roll(static_cast<int>(std::size(kKeyCodes)))];
        case Arg::Char: return dice.oneIn(6) ? VK_BACK : ' ' + dice.roll(90);
        case Arg::Colour: return dice.roll(0x1000000);
        case Arg::Font:
            return reinterpret_cast<LPARAM>(
                GetStockObject(dice.oneIn(2) ? SYSTEM_FONT : DEFAULT_GUI_FONT));
        case Arg::Dc: return reinterpret_cast<LPARAM>(paper());
    }
    return 0;
}

/// The window, or in a storm without a twin sometimes one of those that are made inside.
BOOL CALLBACK collect(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

HWND someWindow(Stage& stage, Dice& dice) {
    std::vector<HWND> windows{stage.host()};
    EnumChildWindows(stage.host(), &collect, reinterpret_cast<LPARAM>(&windows));
    return windows[static_cast<std::size_t>(dice.roll(static_cast<int>(windows.size())))];
}

// What only SendInput does: the system routes it.
void realInput(Stage& stage, Dice& dice) {
    RECT rect{};
    GetWindowRect(stage.host(), &rect);
    std::vector<INPUT> inputs;
    for (int i = 0; i < 6; ++i) {
        INPUT input{};
        const auto mouse = [&](DWORD flags) {
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = flags;
            inputs.push_back(input);
        };
        switch (dice.roll(4)) {
            case 0:
                input.mi.dx = (rect.left + dice.roll(rect.right - rect.left)) * 65536 /
                              GetSystemMetrics(SM_CXSCREEN);
                input.mi.dy = (rect.top + dice.roll(rect.bottom - rect.top)) * 65536 /
                              GetSystemMetrics(SM_CYSCREEN);
                mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
                break;
            case 1:
                // Both at once: a standard scroll bar waits for the release.
                mouse(MOUSEEVENTF_LEFTDOWN);
                mouse(MOUSEEVENTF_LEFTUP);
                break;
            case 2:
                input.mi.mouseData = static_cast<DWORD>((dice.roll(3) - 1) * WHEEL_DELTA);
                mouse(MOUSEEVENTF_WHEEL);
                break;
            default:
                input.type = INPUT_KEYBOARD;
                input.ki.wVk = static_cast<WORD>(roll(Arg::Key, nullptr, dice));
                inputs.push_back(input);
                input.ki.dwFlags = KEYEVENTF_KEYUP;
                inputs.push_back(input);
                break;
        }
    }
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    drain();
}

/// Standard scroll bars and lists keep the loop to themselves until the button is up.
void releaseSoon(HWND window, UINT message, LPARAM lp) {
    std::array<wchar_t, 16> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    if ((message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) &&
        (lstrcmpiW(name.data(), WC_SCROLLBARW) == 0 || lstrcmpiW(name.data(), WC_LISTVIEWW) == 0))
        PostMessageW(window, WM_LBUTTONUP, 0, lp);
}

/// What is in the queue; without the timers of the system's own controls, which go by the clock.
void deliver(bool timersToo) {
    MSG message{};
    for (int i = 0; i < 200 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
        if (timersToo || message.message != WM_TIMER)
            DispatchMessageW(&message);
    }
}

void setScrollInfo(const Actor& actor, Dice& dice) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = dice.roll(20) - 10;
    info.nMax = info.nMin + dice.roll(200);
    info.nPage = static_cast<UINT>(dice.roll(20));
    info.nPos = dice.roll(250) - 20;
    SetScrollInfo(actor.window, SB_CTL, &info, dice.roll(2));
}

void changeItems(const Actor& actor, Dice& dice) {
    const auto ask = [&](UINT message, WPARAM wp, const void* record) {
        SendMessageW(actor.window, message, wp, reinterpret_cast<LPARAM>(record));
    };
    const auto index = static_cast<WPARAM>(dice.roll(8));
    auto* const text = reinterpret_cast<wchar_t*>(roll(Arg::Text, nullptr, dice));
    LVITEMW item{};
    item.pszText = text;
    item.iItem = static_cast<int>(index);
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = static_cast<UINT>(dice.roll(4));
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = 30 + dice.roll(80);
    column.pszText = text;
    switch (dice.roll(6)) {
        case 0: return ask(LVM_INSERTCOLUMNW, index, &column);
        case 1: return ask(LVM_SETITEMSTATE, index, &item);
        case 2: item.iSubItem = dice.roll(3); return ask(LVM_SETITEMTEXTW, index, &item);
        default: item.mask = LVIF_TEXT; return ask(LVM_INSERTITEMW, 0, &item);
    }
}

}  // namespace

ManualTimers::ManualTimers() : set_("SetTimer", &setTimer), kill_("KillTimer", &killTimer) {}

void ManualTimers::fire() {
    const auto now = timers;
    for (const auto& [key, procedure] : now) {
        const auto& [window, id] = key;
        if (!IsWindow(window))
            timers.erase(key);
        else if (!timers.contains(key))
            continue;
        else if (procedure)
            procedure(window, WM_TIMER, id, 0);
        else
            SendMessageW(window, WM_TIMER, id, 0);
    }
}

Surroundings::Surroundings() : caps_("GetDeviceCaps", &deviceCaps), awareness_(setAwareness(-3)) {
    contrast_.turn(false);
}

Surroundings::~Surroundings() {
    setDpi(0);
    setAwareness(reinterpret_cast<std::intptr_t>(awareness_));
}

void Surroundings::setDpi(int dpi) {
    static bool other = false;
    shownDpi = dpi;
    // The library asks the screen anew when the thread's awareness is another.
    other = !other;
    setAwareness(other ? -4 : -3);
}

struct Blow::Deed {
    const char* name;
    unsigned families;
    unsigned group;
    int oneIn;  ///< dear ones are left out mostly
    void (*run)(Blow& blow, Actor& actor);
};

std::span<const Blow::Deed> Blow::deeds() {
    static const Deed all[] = {
        {"EnableWindow", kAny, kPlainGroup, 1,
         [](Blow& b, Actor& a) { EnableWindow(a.window, !b.dice.oneIn(3)); }},
        {"ShowWindow", kAny, kPlainGroup, 1,
         [](Blow& b, Actor& a) { ShowWindow(a.window, b.dice.oneIn(3) ? SW_HIDE : SW_SHOW); }},
        {"SetWindowPos", kAny, kPlainGroup, 1,
         [](Blow& b, Actor& a) {
             constexpr std::array sizes{0, 1, 20, 90, 200};
             const int x = b.dice.roll(200) - 20;
             const int width = sizes.at(static_cast<std::size_t>(b.dice.roll(5)));
             const int height = sizes.at(static_cast<std::size_t>(b.dice.roll(5)));
             const UINT flags = static_cast<UINT>(b.dice.roll(16));  // NOSIZE ... NOREDRAW
             SetWindowPos(a.window, HWND_TOP, x, x, width, height, flags | SWP_NOACTIVATE);
         }},
        {"SetFocus", kAny, kPlainGroup, 1, [](Blow&, Actor& a) { SetFocus(a.window); }},
        {"GWL_STYLE", kAny, kPlainGroup, 1,
         [](Blow& b, Actor& a) {
             DWORD bit = 1U << b.dice.roll(32);
             for (int i = 0; i < 32 && (a.kind->toggledStyles & bit) == 0; ++i)
                 bit = bit << 1 | bit >> 31;
             const auto change = static_cast<LONG_PTR>(a.kind->toggledStyles & bit);
             SetWindowLongPtrW(a.window, GWL_STYLE,
                               GetWindowLongPtrW(a.window, GWL_STYLE) ^ change);
         }},
        {"RedrawWindow", kAny, kPlainGroup, 1,
         [](Blow& b, Actor& a) {
             const UINT flags = b.dice.oneIn(2) ? RDW_INVALIDATE | RDW_UPDATENOW
                                                : RDW_INVALIDATE | RDW_ERASE | RDW_FRAME |
                                                      RDW_UPDATENOW | RDW_ALLCHILDREN;
             RedrawWindow(b.dice.oneIn(3) ? b.stage.host() : a.window, nullptr, nullptr, flags);
         }},
        {"WM_SETREDRAW pair", kAny, kPlainGroup, 1,
         [](Blow& b, Actor& a) {
             // Redrawing shows a hidden window.
             if (!(GetWindowLongPtrW(a.window, GWL_STYLE) & WS_VISIBLE))
                 return;
             SendMessageW(a.window, WM_SETREDRAW, FALSE, 0);
             b.send(a);
             if (a.window)
                 SendMessageW(a.window, WM_SETREDRAW, TRUE, 0);
         }},
        {"capture taken", kAny, kMouse, 1, [](Blow& b, Actor&) { SetCapture(b.stage.host()); }},
        {"capture released", kAny, kMouse, 1, [](Blow&, Actor&) { ReleaseCapture(); }},
        {"SetScrollInfo", kScroll, kPlainGroup, 1,
         [](Blow& b, Actor& a) { setScrollInfo(a, b.dice); }},
        {"SetScrollInfo", kSlider, kPosition, 1,
         [](Blow& b, Actor& a) { setScrollInfo(a, b.dice); }},
        {"EnableScrollBar", kScroll | kSlider, kPosition, 1,
         [](Blow& b, Actor& a) {
             EnableScrollBar(a.window, SB_CTL, static_cast<UINT>(b.dice.roll(4)));
         }},
        {"list items", kListView, kPlainGroup, 1,
         [](Blow& b, Actor& a) { changeItems(a, b.dice); }},
        {"list items", kListView, kPlainGroup, 1,
         [](Blow& b, Actor& a) { changeItems(a, b.dice); }},
        {"broadcast", kAny, kPlainGroup, 4,
         [](Blow& b, Actor&) {
             constexpr std::array<UINT, 4> messages{WM_THEMECHANGED, WM_SYSCOLORCHANGE,
                                                    WM_SETTINGCHANGE, WM_DPICHANGED};
             RECT rect{};
             GetWindowRect(b.stage.host(), &rect);
             const UINT message = messages.at(static_cast<std::size_t>(b.dice.roll(4)));
             SendMessageW(b.stage.host(), message, MAKEWPARAM(144, 144),
                          message == WM_DPICHANGED ? reinterpret_cast<LPARAM>(&rect) : 0);
         }},
        {"dialog hidden or disabled", kAny, kPlainGroup, 6,
         [](Blow& b, Actor& a) {
             const HWND host = b.stage.host();
             EnableWindow(host, FALSE);
             const BOOL shown = ShowWindow(host, SW_HIDE);
             b.send(a);
             EnableWindow(host, TRUE);
             ShowWindow(host, shown ? SW_SHOW : SW_HIDE);
         }},
        {"high contrast", kAny, kPlainGroup, 1,
         [](Blow& b, Actor&) { b.surroundings.turnContrast(b.dice.oneIn(2)); }},
        {"DPI", kAny, kPlainGroup, 2,
         [](Blow& b, Actor&) { b.surroundings.setDpi(96 + 48 * b.dice.roll(4)); }},
        {"timers", kAny, kOwnScrolling, 1, [](Blow&, Actor&) { ManualTimers::fire(); }},
        {"timers", kAny, kOwnScrolling, 1, [](Blow&, Actor&) { ManualTimers::fire(); }},
        {"message loop", kAny, kPlainGroup, 3, [](Blow& b, Actor&) { deliver(b.free); }},
        {"new window", kAny, kPlainGroup, 2,
         [](Blow& b, Actor& a) {
             DestroyWindow(std::exchange(a.window, nullptr));
             b.stage.createWindow(a);
             if (b.stage.hasObjects()) {
                 a.holder.reset();
                 b.stage.makeFlat(a);
             }
         }},
        {"object deleted or made anew", kAny, kPlainGroup, 1,
         [](Blow& b, Actor& a) {
             if (!b.stage.hasObjects())
                 return;
             Stage::makePlain(a);
             if (!b.flatDice.oneIn(4))
                 b.stage.makeFlat(a);
         }},
        {"system colours", kAny, kFree, 12,
         [](Blow& b, Actor&) {
             const SystemColours scheme({{COLOR_WINDOW, RGB(b.dice.roll(256), 0, 64)}});
             drain();
         }},
        {"real input", kAny, kFree, 4, [](Blow& b, Actor&) { realInput(b.stage, b.dice); }},
        {"real input", kAny, kFree, 4, [](Blow& b, Actor&) { realInput(b.stage, b.dice); }},
        {"real input", kAny, kFree, 4, [](Blow& b, Actor&) { realInput(b.stage, b.dice); }},
        {"inner window", kAny, kFree, 1,
         [](Blow& b, Actor&) {
             const Row& row = kRows[b.dice.roll(42)];
             const HWND window = someWindow(b.stage, b.dice);
             SendMessageW(window, row.message, static_cast<WPARAM>(roll(row.wp, window, b.dice)),
                          roll(row.lp, window, b.dice));
         }},
        {"reaction in the next notification", kAny, kFree, 1,
         [](Blow& b, Actor& a) {
             const int what = b.dice.roll(6);
             b.stage.react([&stage = b.stage, &a, what] {
                 if (!a.window)
                     return;
                 switch (what) {
                     case 0: Stage::makePlain(a); break;
                     case 1: EnableWindow(a.window, FALSE); break;
                     case 2: ShowWindow(a.window, SW_HIDE); break;
                     case 3: SetFocus(stage.host()); break;
                     case 4: SetWindowTextW(a.window, L"from within"); break;
                     default: ReleaseCapture(); break;
                 }
             });
         }},
    };
    return all;
}

void Blow::send(Actor& actor) {
    const auto suits = [&](const Row& row) {
        const unsigned group = row.group & (actor.kind->differences | kFree);
        return (row.families & actor.kind->family) != 0 && (free || group == 0);
    };
    const Row* row = nullptr;
    do
        row = &kRows[dice.roll(static_cast<int>(std::size(kRows)))];
    while (!suits(*row));
    const auto wp = static_cast<WPARAM>(roll(row->wp, actor.window, dice));
    const LPARAM lp = roll(row->lp, actor.window, dice);
    trail += std::string(" ") + row->name + " " + std::to_string(wp) + " " + std::to_string(lp);
    releaseSoon(actor.window, row->message, lp);
    SendMessageW(actor.window, row->message, wp, lp);
}

void Blow::doSomething(Actor& actor) {
    const auto all = deeds();
    const Deed& deed = all[static_cast<std::size_t>(dice.roll(static_cast<int>(all.size())))];
    const unsigned group = deed.group & (actor.kind->differences | kFree);
    if ((deed.families & actor.kind->family) == 0 || (!free && group != 0) ||
        !dice.oneIn(deed.oneIn))
        return send(actor);
    trail += std::string(" ") + deed.name;
    deed.run(*this, actor);
}

void Blow::strike() {
    auto& actors = stage.actors();
    Actor& actor = actors[static_cast<std::size_t>(dice.roll(static_cast<int>(actors.size())))];
    trail += std::to_string(actor.id);
    if (dice.oneIn(6))
        doSomething(actor);
    else
        send(actor);
}

}  // namespace QkDlgTest

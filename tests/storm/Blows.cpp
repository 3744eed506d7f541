#include "storm/Blows.h"

#include <algorithm>
#include <array>

#include "QkDlg/ColourFade.h"
#include "QkUtil/Handles.h"

namespace QkDlgTest {

namespace {

// What messages carry

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
    static const QkDlg::MemoryDc dc(CreateCompatibleDC(nullptr));
    static const QkDlg::UniqueBitmap bitmap(
        CreateCompatibleBitmap(QkDlg::WindowDc(nullptr).get(), 200, 200));
    static const QkDlg::Selection selected(dc.get(), bitmap.get());
    return dc.get();
}

using Argument = LPARAM (*)(HWND, Dice&);

constexpr Argument none = [](HWND, Dice&) -> LPARAM { return 0; };
constexpr Argument aFlag = [](HWND, Dice& dice) -> LPARAM { return dice.roll(2); };
constexpr Argument aFew = [](HWND, Dice& dice) -> LPARAM { return dice.roll(9); };
constexpr Argument aNumber = [](HWND, Dice& dice) -> LPARAM { return dice.roll(0x1000000); };
constexpr Argument someArrows = [](HWND, Dice& dice) -> LPARAM { return dice.roll(4); };
constexpr Argument anIndex = [](HWND, Dice& dice) -> LPARAM {
    return dice.oneIn(8) ? dice.roll(400) - 200 : dice.roll(8) - 1;
};
bool isOfClass(HWND window, const wchar_t* wanted) {
    std::array<wchar_t, 16> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return lstrcmpiW(name.data(), wanted) == 0;
}
constexpr Argument aPoint = [](HWND window, Dice& dice) -> LPARAM {
    RECT rect{};
    GetClientRect(window, &rect);
    // Some miss, but not below a combo box, where flat lists begin higher than plain ones.
    const LONG lowest = isOfClass(window, WC_COMBOBOXW) ? 99 : 110;
    const LONG x = rect.right * (dice.roll(120) - 10) / 100;
    const LONG y = rect.bottom * std::min(dice.roll(120) - 10L, lowest) / 100;
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
};
constexpr Argument aButton = [](HWND, Dice& dice) -> LPARAM { return dice.oneIn(2); };
constexpr Argument aTurn = [](HWND, Dice& dice) -> LPARAM {
    return MAKELONG(0, static_cast<WORD>((dice.roll(7) - 3) * 60));
};
/// A flat list has a thinner edge than a plain one: with some fonts it shows a row more.
bool mayShowAnotherRow(HWND window) {
    const HWND parent = GetParent(window);
    const HWND combo = isOfClass(parent, WC_COMBOBOXW) ? parent : window;
    return isOfClass(combo, WC_COMBOBOXW) &&
           (GetWindowLongPtrW(combo, GWL_STYLE) & 3) == CBS_SIMPLE;
}
constexpr Argument aKey = [](HWND window, Dice& dice) -> LPARAM {
    const int key = dice.one(kKeyCodes);
    const bool pages = key == VK_NEXT || key == VK_PRIOR;
    return pages && mayShowAnotherRow(window) ? VK_HOME : key;
};
constexpr Argument aChar = [](HWND, Dice& dice) -> LPARAM {
    return dice.oneIn(6) ? VK_BACK : ' ' + dice.roll(90);
};
constexpr Argument aText = [](HWND, Dice& dice) {
    return reinterpret_cast<LPARAM>(dice.one(kTexts));
};
constexpr Argument aFont = [](HWND, Dice& dice) {
    return reinterpret_cast<LPARAM>(GetStockObject(dice.oneIn(2) ? SYSTEM_FONT : DEFAULT_GUI_FONT));
};
constexpr Argument aDc = [](HWND, Dice&) { return reinterpret_cast<LPARAM>(paper()); };

struct Row {
    unsigned families;
    unsigned group;  ///< not compared where the kind differs in this
    Argument wp;
    Argument lp;
    std::vector<UINT> messages;
};

const Row kRows[] = {
    {kAny, kText, none, aText, {WM_SETTEXT, WM_SETTEXT}},
    {kAny, 0, none, none, {WM_GETTEXTLENGTH, WM_GETFONT, WM_SETFOCUS, WM_KILLFOCUS, WM_GETDLGCODE}},
    {kAny, 0, none, none, {WM_THEMECHANGED, WM_SYSCOLORCHANGE, WM_SETTINGCHANGE, WM_GETOBJECT}},
    {kAny, 0, none, none, {WM_DPICHANGED_BEFOREPARENT, WM_DPICHANGED_AFTERPARENT}},
    {kAny, 0, aFlag, none, {WM_ENABLE, WM_SHOWWINDOW, WM_NCPAINT}},
    {kAny, 0, aFew, none, {WM_CHANGEUISTATE, WM_UPDATEUISTATE, WM_QUERYUISTATE, WM_TIMER}},
    {kAny, 0, aFont, aFlag, {WM_SETFONT}},
    {kAny, 0, aDc, aFew, {WM_ERASEBKGND, WM_PRINTCLIENT, WM_PRINT}},
    {kAny, 0, none, aPoint, {WM_NCHITTEST}},
    {kAny, kMouse, aButton, aPoint, {WM_MOUSEMOVE, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}},
    {kAny, kMouse, aButton, aPoint, {WM_LBUTTONUP, WM_LBUTTONUP}},
    {kAny, kMouse, aTurn, aPoint, {WM_MOUSEWHEEL, WM_MOUSEHWHEEL}},
    {kAny, kMouse, none, none, {WM_MOUSELEAVE, WM_CAPTURECHANGED, WM_CANCELMODE}},
    {kAny, kKeys, aKey, aFew, {WM_KEYDOWN, WM_KEYDOWN, WM_KEYUP, WM_SYSKEYDOWN, WM_SYSKEYUP}},
    {kAny, kKeys, aChar, aFew, {WM_CHAR}},
    {kAny & ~kListView, kFree, none, aNumber, {QkDlg::WM_FADECOLOR}},
    {kButton, 0, aFew, none, {BM_SETCHECK}},
    {kButton, 0, aFlag, none, {BM_SETSTATE, BM_SETIMAGE}},
    {kButton, kPlace, none, none, {BM_CLICK}},
    {kButton, kFree, aFew, aFlag, {BM_SETSTYLE}},
    {kEdit, 0, anIndex, anIndex, {EM_SETSEL, EM_LINESCROLL}},
    {kEdit, 0, aFlag, aText, {EM_REPLACESEL}},
    {kEdit, 0, aFlag, none, {EM_SETREADONLY, EM_SETMODIFY}},
    {kEdit, 0, aFew, aFew, {EM_SETMARGINS, EM_LIMITTEXT, EM_SCROLL}},
    {kEdit, 0, none, none, {EM_UNDO, EM_SCROLLCARET, WM_CLEAR}},
    {kEdit, kMask, aChar, none, {EM_SETPASSWORDCHAR}},
    {kEdit, kFree, none, none, {WM_USER + 123}},  // turns the eye off
    // Wine's list box reads wild memory when told to begin before the first item.
    {kCombo, 0, none, aText, {CB_ADDSTRING, CB_SELECTSTRING}},
    {kCombo, 0, anIndex, aText, {CB_INSERTSTRING}},
    {kCombo, 0, anIndex, aFew, {CB_DELETESTRING, CB_SETCURSEL, CB_SETITEMDATA, CB_SETTOPINDEX}},
    {kCombo, 0, aFlag, none, {CB_RESETCONTENT, CB_SHOWDROPDOWN, CB_SETEXTENDEDUI}},
    {kCombo, 0, aFew, aNumber, {CB_SETEDITSEL, CB_LIMITTEXT}},
    {kProgress, 0, anIndex, aNumber, {PBM_SETPOS, PBM_DELTAPOS, PBM_SETRANGE, PBM_SETRANGE32}},
    {kProgress, 0, aFlag, aNumber, {PBM_STEPIT, PBM_SETBARCOLOR, PBM_SETMARQUEE}},
    {kProgress, 0, aFew, none, {PBM_SETSTATE}},
    {kTrackbar | kSlider, 0, aFlag, anIndex, {TBM_SETPOS, TBM_SETRANGEMIN, TBM_SETRANGEMAX}},
    {kTrackbar | kSlider, 0, aFlag, aNumber, {TBM_SETRANGE, TBM_SETPAGESIZE}},
    {kScroll | kSlider, kRange, anIndex, anIndex, {SBM_SETPOS, SBM_SETRANGE, SBM_SETRANGEREDRAW}},
    {kScroll | kSlider, kRange, someArrows, none, {SBM_ENABLE_ARROWS}},
    {kListView, 0, anIndex, aFlag, {LVM_DELETEITEM, LVM_ENSUREVISIBLE}},
    {kListView, 0, aFew, aNumber, {LVM_DELETEALLITEMS, LVM_DELETECOLUMN}},
    {kListView, 0, aFew, aFew, {LVM_SETCOLUMNWIDTH}},  // no automatic one: rows have other insets
    {kListView, 0, anIndex, anIndex, {LVM_SCROLL}},
    {kListView, kFree, aFew, aFew, {LVM_SETVIEW, LVM_SETEXTENDEDLISTVIEWSTYLE, LVM_SETITEMCOUNT}},
    {kListView, kFree, anIndex, none, {LVM_SETHOTITEM, LVM_EDITLABELW}},
    {kListView | kEdit | kListBox, 0, aFew, none, {WM_VSCROLL, WM_HSCROLL}},
    {kListBox, 0, none, aText, {LB_ADDSTRING}},
    {kListBox, 0, anIndex, none, {LB_DELETESTRING, LB_SETCURSEL, LB_SETTOPINDEX}},
    {kListBox, 0, aNumber, none, {LB_RESETCONTENT, LB_SETHORIZONTALEXTENT}},
};

/// Strikes an actor.
struct Blow {
    Stage& stage;
    Dice& dice;
    bool free;
    std::string& told;
    Actor& actor;

    void send(HWND window) const;
    void sendSome() const { send(actor.window); }
    void redraw(HWND window) const;
};

void Blow::redraw(HWND window) const {
    constexpr UINT all = RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN;
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_UPDATENOW | (dice.oneIn(2) ? all : 0));
}

/// Standard scroll bars and lists keep the loop to themselves until the button is up.
void releaseSoon(HWND window, LPARAM point) {
    if (isOfClass(window, WC_SCROLLBARW) || isOfClass(window, WC_LISTVIEWW))
        PostMessageW(window, WM_LBUTTONUP, 0, point);
}

void Blow::send(HWND window) const {
    const unsigned differs = free ? 0 : actor.kind->differences | kFree;
    // What only one family knows means something else, or a pointer, to a window of another.
    const unsigned family = window == actor.window ? actor.kind->family : kAny;
    while (true) {
        const Row& row = dice.one(kRows);
        const UINT message = dice.one(row.messages);
        if ((row.families & family) != family || (row.group & differs) != 0)
            continue;
        const auto wp = static_cast<WPARAM>(row.wp(window, dice));
        const LPARAM lp = row.lp(window, dice);
        told += " message " + std::to_string(message) + ' ' + std::to_string(wp) + ' ' +
                std::to_string(lp);
        if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK)
            releaseSoon(window, lp);
        SendMessageW(window, message, wp, lp);
        return;
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

/// Also to one of the windows that controls made inside or beside themselves.
void sendToSomeWindow(const Blow& b) {
    std::vector<HWND> windows{b.stage.host()};
    EnumChildWindows(b.stage.host(), &collect, reinterpret_cast<LPARAM>(&windows));
    b.send(b.dice.one(windows));
}

/// Mouse and keyboard as the system routes them. Press and release come together, because of loops
/// that wait for the release.
void inputForReal(const Blow& b) {
    RECT rect{};
    GetWindowRect(b.stage.host(), &rect);
    for (int i = 0; i < 6; ++i) {
        const int what = b.dice.roll(4);
        if (what == 0) {
            const int x = rect.left + b.dice.roll(rect.right - rect.left);
            SetCursorPos(x, rect.top + b.dice.roll(rect.bottom - rect.top));
        } else if (what == 1) {
            mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
            mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        } else if (what == 2) {
            const int turn = b.dice.oneIn(2) ? WHEEL_DELTA : -WHEEL_DELTA;
            mouse_event(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(turn), 0);
        } else {
            const auto key = static_cast<BYTE>(b.dice.one(kKeyCodes));
            keybd_event(key, 0, 0, 0);
            keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
        }
    }
    deliver(true);
}

void enable(const Blow& b) {
    EnableWindow(b.actor.window, !b.dice.oneIn(3));
}

void focus(const Blow& b) {
    SetFocus(b.actor.window);
}

void place(const Blow& b) {
    constexpr std::array sizes{0, 1, 20, 90, 200};
    const int at = b.dice.roll(200) - 20;
    const int width = b.dice.one(sizes);
    const int height = b.dice.one(sizes);
    const auto flags = static_cast<UINT>(b.dice.roll(16));  // SWP_NOSIZE to SWP_NOREDRAW
    SetWindowPos(b.actor.window, HWND_TOP, at, at, width, height, flags | SWP_NOACTIVATE);
}

void switchStyle(const Blow& b) {
    const DWORD bits = 1U << b.dice.roll(16) | 1U << b.dice.roll(32);
    SetWindowLongPtrW(b.actor.window, GWL_STYLE,
                      GetWindowLongPtrW(b.actor.window, GWL_STYLE) ^
                          static_cast<LONG_PTR>(b.actor.kind->toggled & bits));
}

void sendUndrawn(const Blow& b) {
    // The second half shows a hidden window.
    const bool shown = (GetWindowLongPtrW(b.actor.window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (shown)
        SendMessageW(b.actor.window, WM_SETREDRAW, FALSE, 0);
    b.sendSome();
    if (shown)
        SendMessageW(b.actor.window, WM_SETREDRAW, TRUE, 0);
}

void setScrollInfo(const Blow& b) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = b.dice.roll(20) - 10;
    info.nMax = info.nMin + b.dice.roll(200);
    info.nPage = static_cast<UINT>(b.dice.roll(20));
    info.nPos = b.dice.roll(250) - 20;
    SetScrollInfo(b.actor.window, SB_CTL, &info, b.dice.roll(2));
}

void changeItems(const Blow& b) {
    const auto index = static_cast<WPARAM>(b.dice.roll(8));
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.pszText = const_cast<wchar_t*>(b.dice.one(kTexts));
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = static_cast<UINT>(b.dice.roll(4));
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = 30 + b.dice.roll(80);
    column.pszText = item.pszText;
    constexpr std::array<UINT, 6> messages{LVM_INSERTCOLUMNW, LVM_SETITEMSTATE, LVM_SETITEMTEXTW,
                                           LVM_INSERTITEMW,   LVM_INSERTITEMW,  LVM_INSERTITEMW};
    const UINT message = b.dice.one(messages);
    SendMessageW(b.actor.window, message, index,
                 message == LVM_INSERTCOLUMNW ? reinterpret_cast<LPARAM>(&column)
                                              : reinterpret_cast<LPARAM>(&item));
}

void broadcast(const Blow& b) {
    constexpr std::array<UINT, 4> messages{WM_THEMECHANGED, WM_SYSCOLORCHANGE, WM_SETTINGCHANGE,
                                           WM_DPICHANGED};
    RECT rect{};
    GetWindowRect(b.stage.host(), &rect);
    const UINT message = b.dice.one(messages);
    SendMessageW(b.stage.host(), message, MAKEWPARAM(144, 144),
                 message == WM_DPICHANGED ? reinterpret_cast<LPARAM>(&rect) : 0);
}

void sendWithoutDialog(const Blow& b) {
    EnableWindow(b.stage.host(), FALSE);
    ShowWindow(b.stage.host(), SW_HIDE);
    b.sendSome();
    EnableWindow(b.stage.host(), TRUE);
    ShowWindow(b.stage.host(), SW_SHOW);
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
            if ((actor.kind->family & (kButton | kScroll | kSlider)) != 0)
                stage.renew(actor);
            break;
        default: ReleaseCapture(); break;
    }
}

struct Deed {
    const char* name;
    unsigned families;
    unsigned group;
    int oneIn;  ///< dear ones are left out mostly
    void (*run)(const Blow& b);
};

const Deed kDeeds[] = {
    {"EnableWindow", kAny & ~kScroll, 0, 1, &enable},
    {"EnableWindow", kScroll, kRange, 1, &enable},
    {"ShowWindow", kAny, 0, 1,
     [](const Blow& b) { ShowWindow(b.actor.window, b.dice.oneIn(3) ? SW_HIDE : SW_SHOW); }},
    {"SetWindowPos", kAny, 0, 1, &place},
    // A scroll bar that switched itself off or on takes it or not.
    {"SetFocus", kAny & ~kScroll, 0, 1, &focus},
    {"SetFocus", kScroll, kRange, 1, &focus},
    {"style", kAny, 0, 1, &switchStyle},
    {"redraw", kAny, 0, 1, [](const Blow& b) { b.redraw(b.actor.window); }},
    {"redraw all", kAny, 0, 3, [](const Blow& b) { b.redraw(b.stage.host()); }},
    {"WM_SETREDRAW pair", kAny, 0, 1, &sendUndrawn},
    {"capture taken", kAny, kMouse, 1, [](const Blow& b) { SetCapture(b.stage.host()); }},
    {"capture released", kAny, kMouse, 1, [](const Blow&) { ReleaseCapture(); }},
    {"SetScrollInfo", kScroll, 0, 1, &setScrollInfo},
    {"SetScrollInfo", kSlider, kRange, 1, &setScrollInfo},
    {"items", kListView, 0, 1, &changeItems},
    {"items", kListView, 0, 1, &changeItems},
    {"broadcast", kAny, 0, 4, &broadcast},
    {"high contrast", kAny, 0, 1, [](const Blow& b) { b.stage.contrast.turn(b.dice.oneIn(2)); }},
    {"DPI", kAny, 0, 2, [](const Blow& b) { setDpi(96 + 48 * b.dice.roll(4)); }},
    {"timers", kAny, kRange, 1, [](const Blow&) { fireTimers(); }},
    {"message loop", kAny, 0, 3, [](const Blow& b) { deliver(b.free); }},
    {"new window", kAny, 0, 2, [](const Blow& b) { b.stage.renew(b.actor); }},
    {"object deleted", kAny, 0, 2, [](const Blow& b) { b.stage.makePlain(b.actor); }},
    {"new object", kAny, 0, 1,
     [](const Blow& b) {
         b.stage.makePlain(b.actor);
         b.stage.makeFlat(b.actor);
     }},
    {"dialog hidden and disabled", kAny, kFree, 6, &sendWithoutDialog},
    {"system colours", kAny, kFree, 12,
     [](const Blow& b) {
         const SystemColours scheme({{COLOR_WINDOW, RGB(b.dice.roll(256), 0, 64)}});
         deliver(true);
     }},
    {"real input", kAny, kFree, 1, &inputForReal},
    {"to another window", kAny, kFree, 1, &sendToSomeWindow},
    {"reaction", kAny, kFree, 1,
     [](const Blow& b) {
         b.stage.react([&stage = b.stage, &actor = b.actor, what = b.dice.roll(7)] {
             reactTo(stage, actor, what);
         });
     }},
};

}  // namespace

void strike(Stage& stage, Dice& dice, bool free, std::string& told) {
    Actor& actor = dice.one(stage.actors());
    const Deed& deed = dice.one(kDeeds);
    const unsigned differs = free ? 0 : actor.kind->differences | kFree;
    const Blow blow{stage, dice, free, told, actor};
    told = std::to_string(actor.id);
    if (dice.oneIn(6) && (deed.families & actor.kind->family) != 0 && (deed.group & differs) == 0 &&
        dice.oneIn(deed.oneIn)) {
        told += std::string(" ") + deed.name;
        deed.run(blow);
    } else {
        blow.sendSome();
    }
}

}  // namespace QkDlgTest

// What every control owes its host and its user, whatever its type.
#include <memory>
#include <ostream>
#include <tuple>

#include "Exports/ControlFactory.h"
#include "QkDlg/QkDlg.h"
#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxSimple.h"
#include "QkDlg/QkFlatListView.h"
#include "QkDlg/QkFlatSlider.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kFirst = 101;
constexpr auto kButton = WC_BUTTONW;

/// Spoils the memory of what it deletes, so that a later call into it is a fault.
struct Spoiler {
    void operator()(QkCustomControl* control) const {
        void* const memory = dynamic_cast<void*>(control);
        std::destroy_at(control);
        SecureZeroMemory(memory, sizeof *control);
        ::operator delete(memory);
    }
};
using Flat = std::unique_ptr<QkCustomControl, Spoiler>;

template <int type>
QkCustomControl* make() {
    return makeControl(type, kFirst).release();
}
template <typename Control, bool... vertical>
QkCustomControl* makeA() {
    return new Control(kFirst, vertical...);
}

struct Kind {
    const char* name;
    QkCustomControl* (*make)();
    const wchar_t* windowClass;
    DWORD style = 0;
    bool paintsAll = true;  ///< the standard control paints nothing of it

    [[nodiscard]] bool isButton() const { return windowClass == kButton; }
};

std::ostream& operator<<(std::ostream& out, const Kind& kind) {
    return out << kind.name;
}

constexpr DWORD kOwnerDrawn = CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;

const Kind kLikePlainOnes[] = {
    {"push", make<QK_PUSH_BUTTON>, kButton, BS_PUSHBUTTON | BS_NOTIFY},
    {"blue", make<QK_BLUE_BUTTON>, kButton, BS_DEFPUSHBUTTON | BS_MULTILINE},
    {"split", make<QK_SPLIT_BUTTON>, kButton, BS_SPLITBUTTON},
    {"drop", make<QK_DROP_BUTTON>, kButton, BS_SPLITBUTTON},
    {"radio", make<QK_RADIO_BUTTON>, kButton, BS_AUTORADIOBUTTON | BS_NOTIFY},
    {"check", make<QK_CHECK_BOX>, kButton, BS_AUTOCHECKBOX | BS_NOTIFY},
    {"list", make<QK_COMBO_DROPDOWN_LIST>, WC_COMBOBOXW, CBS_DROPDOWNLIST},
    {"ownerdrawn", make<QK_COMBO_DROPDOWN_LIST>, WC_COMBOBOXW, kOwnerDrawn},
    {"combo", makeA<QkFlatComboBoxDropdown>, WC_COMBOBOXW, CBS_DROPDOWN | CBS_AUTOHSCROLL},
    {"simple", makeA<QkFlatComboBoxSimple>, WC_COMBOBOXW, CBS_SIMPLE | CBS_AUTOHSCROLL, false},
    {"edit", make<QK_EDIT>, WC_EDITW, ES_AUTOHSCROLL, false},
};
const Kind kOthers[] = {
    {"settings", make<QK_SETTINGS_BUTTON>, kButton},
    {"switch", make<QK_TOGGLE>, kButton, BS_AUTOCHECKBOX},
    {"progress", make<QK_PROGRESS_BAR>, PROGRESS_CLASSW},
    {"scrollbar", makeA<QkFlatScrollbar, true>, WC_SCROLLBARW, SBS_VERT},
    {"slider", makeA<QkFlatSlider, true>, WC_STATICW},
    {"label", make<QK_STATIC_TEXT>, WC_STATICW, 0, false},
    {"password", make<QK_PASSWORD>, WC_EDITW, ES_AUTOHSCROLL, false},
    {"listview", makeA<QkFlatListView>, WC_LISTVIEWW, LVS_REPORT, false},
};

class AllControlsTest : public WindowTest, public testing::WithParamInterface<Kind> {
protected:
    // Brushes that edits keep, and what the system draws open lists with.
    AllControlsTest() { allowGdiGrowth(6); }

    HWND add(int id) {
        const Kind& kind = GetParam();
        const int top = 20 + (id - kFirst) * 120;
        const HWND window = host_.add(kind.windowClass, L"&Text", kind.style | WS_TABSTOP,
                                      scaledArea(20, top, 140, 30), id);
        for (const wchar_t* item : {L"Item 1", L"Item 2", L"Item 3"})
            SendMessageW(window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        return window;
    }
    static Flat flatten(HWND window) {
        Flat control(GetParam().make());
        control->Attach(window);
        drain();
        return control;
    }

    HostDialog host_{{.width = scaled(200), .height = scaled(260)}};
};

void useWithMouseAndKeyboard(HWND window) {
    const RECT client(area(0, 0, static_cast<int>(clientBox(window).right), scaled(20)));
    click(window, client.right / 2, client.bottom / 2);
    doubleClick(window);
    click(window, client.right - scaled(7), client.bottom / 2);
    for (const int key : {VK_SPACE, VK_DOWN, VK_RETURN, VK_F4, VK_UP, VK_ESCAPE})
        keyTap(key);
    keyDown(VK_MENU);
    keyTap('T');
    keyTap(VK_DOWN);
    keyUp(VK_MENU);
    wheel(-1);
    typeText(L"it");
    keyTap(VK_TAB);
}

using PlainTwinTest = AllControlsTest;

TEST_P(PlainTwinTest, ParentAndScreenReaderHearWhatAPlainControlTells) {
    enum class Course { Plain, MadeFlat, DeletedEarly };
    std::vector<Image> looks;
    const auto used = [&](Course course) {
        const HWND window = add(kFirst);
        const HWND next = add(kFirst + 1);
        Flat control = course == Course::Plain ? nullptr : flatten(window);
        const Flat second = course == Course::Plain ? nullptr : flatten(next);
        if (course == Course::DeletedEarly)
            control.reset();
        drain();
        const std::wstring told = accessible(window);
        looks.push_back(onScreen(window));
        SetFocus(nullptr);
        host_.forget();
        useWithMouseAndKeyboard(window);
        std::tuple result(host_.heard(), told, textOf(window),
                          SendMessageW(window, BM_GETCHECK, 0, 0),
                          SendMessageW(window, CB_GETCURSEL, 0, 0));
        DestroyWindow(window);
        DestroyWindow(next);
        return result;
    };
    const auto plain = used(Course::Plain);
    EXPECT_GE(std::get<0>(plain).size(), 4U);
    EXPECT_EQ(used(Course::MadeFlat), plain);
    EXPECT_EQ(used(Course::DeletedEarly), plain);
    // Version 5 of the common controls draws no split buttons.
    if (GetParam().paintsAll && GetParam().style != BS_SPLITBUTTON) {
        EXPECT_NE(looks[1], looks[0]);
        EXPECT_NE(looks[2], looks[1]) << "the standard look is back at once";
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, PlainTwinTest, testing::ValuesIn(kLikePlainOnes),
                         testing::PrintToStringParamName());

/// What hosts and system send to controls; each takes what its class knows.
const std::tuple<UINT, WPARAM, LPARAM> kMessages[] = {
    {BM_SETSTATE, TRUE, 0},
    {BM_SETSTATE, FALSE, 0},
    {BM_SETCHECK, TRUE, 0},
    {BM_CLICK, 0, 0},
    {BM_SETCHECK, FALSE, 0},
    {WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"Another")},
    {WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEACCEL), 0},
    {WM_THEMECHANGED, 0, 0},
    {WM_SETFOCUS, 0, 0},
    {WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(9, 9)},
    {WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(9, 9)},
    {WM_LBUTTONUP, 0, MAKELPARAM(9, 9)},
    {WM_KEYDOWN, VK_DOWN, 0},
    {WM_KEYDOWN, VK_F4, 0},
    {WM_KEYDOWN, VK_F4, 0},
    {WM_SYSKEYDOWN, VK_DOWN, 1L << 29},
    {WM_MOUSEWHEEL, MAKEWPARAM(0, 0xFF88), 0},
    {CB_SHOWDROPDOWN, TRUE, 0},
    {CB_SHOWDROPDOWN, FALSE, 0},
    {CB_SETCURSEL, 1, 0},
    {CB_DELETESTRING, 1, 0},
    {PBM_SETPOS, 50, 0},
    {WM_ENABLE, FALSE, 0},
    {WM_ENABLE, TRUE, 0},
    {WM_CANCELMODE, 0, 0},
    {WM_KILLFOCUS, 0, 0},
};

TEST_P(AllControlsTest, StaysFlatWhateverItGetsAndLeaksNothing) {
    const HWND window = add(kFirst);
    const Flat control = flatten(window);
    const HWND edit = FindWindowExW(window, nullptr, WC_EDITW, nullptr);
    const auto step = [&](UINT message, WPARAM wParam, LPARAM lParam) {
        SendMessageW(window, message, wParam, lParam);
        const bool isInput = (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
                             (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
        EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE) && GetParam().isButton() && !isInput)
            << message << " leaves what is to be painted";
        UpdateWindow(window);
        // A pressed switch follows the real mouse at each painting. An edit paints itself.
        if (!GetParam().paintsAll || GetCapture() == window)
            return;
        Box part = clientBox(window);
        part.left = edit ? windowBox(edit).right - windowBox(window).left : 0;
        EXPECT_THAT(onScreen(window).part(part), looksLike(printed(window).part(part))) << message;
    };
    host_.onMessage([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_COMMAND && HIWORD(wParam) == CBN_SELCHANGE)
            step(CB_SETCURSEL, 0, 0);
        return std::nullopt;
    });
    HighContrast contrast;
    for (const bool high : {true, false}) {
        contrast.turn(high);
        control->Refresh();
        drain();
        step(BM_SETSTYLE, GetParam().style & BS_TYPEMASK, TRUE);
        for (const auto& [message, wParam, lParam] : kMessages)
            step(message, wParam, lParam);
        EXPECT_TRUE(doesNotLeak(10, [&] {
            for (const auto& [message, wParam, lParam] : kMessages)
                SendMessageW(window, message, wParam, lParam);
            static_cast<void>(printed(window));
        }));
    }
    host_.onMessage({});
    ShowWindow(window, SW_HIDE);
    for (const auto& [message, wParam, lParam] : kMessages)
        SendMessageW(window, message, wParam, lParam);
    EXPECT_FALSE(IsWindowVisible(window)) << "shown by a message";
}

TEST_P(AllControlsTest, IsNotTouchedWhenTheHostEndsItWhileItIsToldOrPaints) {
    struct End {
        UINT told = 0;
        bool withWindow = false;
    };
    for (const End& end :
         {End{WM_COMMAND}, End{WM_COMMAND, true}, End{WM_NOTIFY}, End{WM_VSCROLL}, End{WM_DRAWITEM},
          End{WM_ERASEBKGND}, End{WM_CTLCOLORSTATIC}, End{WM_CTLCOLORBTN}}) {
        const HWND window = add(kFirst);
        Flat control = flatten(window);
        host_.onMessage([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message != end.told)
                return std::nullopt;
            control.reset();
            if (end.withWindow)
                DestroyWindow(window);
            return std::nullopt;
        });
        click(window, clientBox(window).right - scaled(7), scaled(10));
        keyTap(VK_DOWN);
        InvalidateRect(window, nullptr, TRUE);
        drain();
        host_.onMessage({});
        EXPECT_EQ(IsWindow(window) != FALSE, control || !end.withWindow);
        DestroyWindow(window);
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, AllControlsTest, testing::ValuesIn(kLikePlainOnes),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Others, AllControlsTest, testing::ValuesIn(kOthers),
                         testing::PrintToStringParamName());

}  // namespace

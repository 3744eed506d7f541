#include <initializer_list>
#include <memory>
#include <tuple>

#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxDropdownList.h"
#include "QkDlg/QkFlatComboBoxSimple.h"
#include "support/ChildProcess.h"
#include "support/Paper.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr COLORREF kLine = 0xDFDFDF, kHover = 0xFBF3E5, kWhite = 0xFFFFFF, kGround = 0x78C878;
constexpr DWORD kSimple = CBS_SIMPLE | CBS_AUTOHSCROLL, kEditable = CBS_DROPDOWN | CBS_AUTOHSCROLL;
constexpr DWORD kOwnerDrawn = CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;

constexpr auto isDark = [](COLORREF colour) { return GetRValue(colour) < 0x60; };

LRESULT send(HWND window, UINT message, WPARAM wParam = 0, const void* lParam = nullptr) {
    return SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(lParam));
}

/// Spoils the memory of what it deletes, so that a later call into it is a fault.
struct Spoiler {
    void operator()(QkFlatComboBoxBase* control) const {
        std::destroy_at(control);
        SecureZeroMemory(control, sizeof *control);
        ::operator delete(control);
    }
};
using Flat = std::unique_ptr<QkFlatComboBoxBase, Spoiler>;

Flat flat(HWND combo) {
    Flat control(new QkFlatComboBoxDropdownList(101));
    switch (GetWindowLongPtrW(combo, GWL_STYLE) & 3) {
        case CBS_SIMPLE: control.reset(new QkFlatComboBoxSimple(101)); break;
        case CBS_DROPDOWN: control.reset(new QkFlatComboBoxDropdown(101)); break;
    }
    control->Attach(combo);
    drain();
    return control;
}

void expectBorder(const Image& shown) {
    const int right = shown.width() - 1, bottom = shown.height() - 1;
    for (const POINT at : {POINT{0, bottom / 2}, {right / 2, 0}, {right / 2, bottom}, {right, 3}})
        EXPECT_EQ(shown.at(at.x, at.y), kLine) << at.x << "," << at.y;
}

struct ComboBoxTest : WindowTest {
    /// The process keeps a brush for edits, and the system what open lists are drawn with.
    static void SetUpTestSuite() {
        HostDialog host;
        for (const DWORD style : {kSimple, kEditable, kOwnerDrawn}) {
            const Flat control = flat(addTo(host, style, 99));
            send(control->GetWindow(), CB_SHOWDROPDOWN, TRUE);
            pump(20);
        }
    }
    static HWND addTo(HostDialog& host, DWORD style, int items, int top = 30) {
        const HWND combo = host.add(L"combobox", L"", style | WS_TABSTOP | WS_VSCROLL,
                                    scaledArea(30, top, 160, 150), 71 + top);
        for (int i = 1; i <= items; ++i)
            send(combo, CB_ADDSTRING, 0, (L"Item " + std::to_wstring(i)).c_str());
        send(combo, CB_SETCURSEL, 1);
        return combo;
    }
    void make(DWORD style = CBS_DROPDOWNLIST, int items = 5) {
        combo_ = addTo(*host_, style, items);
        control_ = flat(combo_);
    }
    [[nodiscard]] Box button() const {
        return Box(static_cast<const QkFlatComboBoxDropdownBase&>(*control_).GetButtonRect());
    }
    void moveToButton() const { moveTo(combo_, button().left + scaled(8), scaled(8)); }
    [[nodiscard]] Image shown() const { return onScreen(combo_); }

    HWND combo_ = nullptr;
    Flat control_;  // outlives its window
    HostOptions options_{.background = kGround, .width = scaled(300), .height = scaled(260)};
    std::optional<HostDialog> host_{std::in_place, options_};
};

struct ComboStyleTest : ComboBoxTest, testing::WithParamInterface<DWORD> {};
INSTANTIATE_TEST_SUITE_P(Styles, ComboStyleTest,
                         testing::Values(kSimple, kEditable, CBS_DROPDOWNLIST, kOwnerDrawn));

TEST_P(ComboStyleTest, ButtonAndListStandWhereArrowAndItemSayInsideFlatBorders) {
    make(GetParam(), 300);
    send(combo_, CB_SHOWDROPDOWN, TRUE);
    const HWND list = control_->GetListWindow();
    const Box item = windowBox(control_->GetItemWindow()), box = windowBox(list);
    expectBorder(onDesktop({box.left, box.top, box.right, box.bottom}));
    const LRESULT top = send(list, LB_GETTOPINDEX);
    click(list, clientBox(list).right + scaled(6), clientBox(list).bottom - scaled(6));
    EXPECT_EQ(send(list, LB_GETTOPINDEX), top + 1) << "the scroll bar works";
    EXPECT_TRUE(box.top == item.bottom + 2 || GetParam() != kSimple);
    EXPECT_EQ(shown().at(0, 0), GetParam() == kSimple ? kGround : kLine);
    if (GetParam() == kSimple)
        return;
    const int gap = windowBox(combo_).left + button().left - item.right;
    EXPECT_TRUE(gap == 1 || GetParam() != kEditable) << "the button begins beside the edit";
    EXPECT_EQ(shown().at(button().left, 3), kLine);
    expectBorder(shown());
    EnableWindow(combo_, FALSE);
    EXPECT_FALSE(shown().contains(kGround)) << "what the host answers for its labels";
}

TEST_F(ComboBoxTest, LongItemLosesCharactersAndGetsNothingInstead) {
    make();
    send(combo_, CB_INSERTSTRING, 0, std::wstring(99, L'\'').c_str());
    send(combo_, CB_SETCURSEL, 0);
    const int height = shown().height(), right = button().left - 2;
    EXPECT_THAT(shown().part(Box(right - scaled(9), 1, right, height / 2)),
                testing::Not(isFilledWith(kWhite)));
    EXPECT_THAT(shown().part(Box(1, height * 5 / 8, right, height - 1)), isFilledWith(kWhite));
}

TEST_F(ComboBoxTest, HighContrastShowsSystemColoursOnlyAndNeverFades) {
    const SystemColours scheme({{COLOR_WINDOW, 1},
                                {COLOR_WINDOWTEXT, 0xFF},
                                {COLOR_HIGHLIGHTTEXT, 0xFE},
                                {COLOR_GRAYTEXT, 0xFD}});
    make();
    const HighContrast contrast;
    SetFocus(combo_);
    control_->Refresh();
    EXPECT_EQ(shown().boundingBoxOf(GetSysColor(COLOR_HIGHLIGHT)),
              Box(1, 1, button().left - 1, button().bottom - 1));
    EXPECT_TRUE(shown().contains(0xFE) && !shown().contains(0xFF));
    SetFocus(addTo(*host_, CBS_DROPDOWNLIST, 1, 90));
    moveToButton();
    pump(150);
    EXPECT_EQ(shown().at(button().left + 2, 3), 1U);
    EXPECT_TRUE(shown().contains(0xFF) && !shown().contains(kWhite));
    EnableWindow(combo_, FALSE);
    EXPECT_TRUE(shown().contains(0xFD));
}

TEST_F(ComboBoxTest, ButtonFadesUnderTheMouseInBothDirectionsUnlessThereAreFewColours) {
    for (const bool mirrored : {false, true}) {
        options_.rightToLeft = mirrored;
        host_.emplace(options_);
        make();
        const Image idle = shown();
        const int middle = idle.width() / 2, bottom = idle.height() - 1;
        const Box text(mirrored ? middle : 1, 1, idle.width() - (mirrored ? 1 : middle), bottom);
        EXPECT_TRUE(idle.part(text).boundingBoxOf(isDark));
        const MessageSpy spy(combo_, {WM_FADECOLOR});
        auto depth = std::make_unique<ScreenDepth>(16);
        moveToButton();
        depth.reset();
        moveTo(combo_, scaled(20), 5);
        pump(50);
        EXPECT_EQ(spy.count(WM_FADECOLOR), 0) << "the item is not the button";
        moveToButton();
        EXPECT_TRUE(pumpUntil([&] { return spy.count(WM_FADECOLOR) == 10; }));
        EXPECT_EQ(shown().at(mirrored ? 3 : shown().width() - 3, 3), kHover);
        expectBorder(shown());
        EnableWindow(combo_, FALSE);
        EXPECT_FALSE(shown().boundingBoxOf(isDark)) << "text and arrow are grey";
        EnableWindow(combo_, TRUE);
        EXPECT_THAT(shown(), looksLike(idle));
    }
}

TEST_P(ComboStyleTest, EveryMessageLeavesTheFlatLookWithinNotificationsToo) {
    make(GetParam());
    const HWND item = control_->GetItemWindow();
    const auto step = [&](UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        SendMessageW(combo_, message, wParam, lParam);
        // What is on the screen is what the flat combo prints; an edit shows itself.
        Box part = clientBox(combo_);
        part.left = item == combo_ ? 0 : windowBox(item).right - windowBox(combo_).left;
        const Image flatLook = GetParam() == kSimple ? shown() : printed(combo_);
        EXPECT_THAT(shown().part(part), looksLike(flatLook.part(part))) << message;
    };
    host_->onMessage([&](UINT message, WPARAM wp, LPARAM) {
        if (message == WM_COMMAND && HIWORD(wp) == CBN_SELCHANGE)
            step(CB_SETCURSEL, 0);
        return std::optional<LRESULT>();
    });
    for (const UINT message : std::initializer_list<UINT>{WM_LBUTTONDOWN, WM_LBUTTONUP})
        step(message, MK_LBUTTON, MAKELPARAM(clientBox(combo_).right - scaled(6), 3));
    for (const WPARAM key :
         std::initializer_list<WPARAM>{VK_DOWN, VK_RETURN, VK_DOWN, VK_F4, VK_F4})
        step(WM_KEYDOWN, key);
    step(WM_SYSKEYDOWN, VK_DOWN, 1L << 29);
    step(WM_MOUSEWHEEL, MAKEWPARAM(0, 0xFF88));
    for (const UINT message : std::initializer_list<UINT>{
             CB_SETCURSEL, CB_DELETESTRING, WM_SETTEXT, WM_THEMECHANGED, WM_SETFOCUS, WM_KILLFOCUS,
             WM_CANCELMODE, CB_SHOWDROPDOWN, WM_ENABLE, CB_RESETCONTENT})
        for (const WPARAM on : std::initializer_list<WPARAM>{1, 0})
            step(message, on);
}

TEST_P(ComboStyleTest, ParentAndScreenReaderHearWhatAPlainComboTells) {
    const HWND other = addTo(*host_, CBS_DROPDOWNLIST, 1, 90);
    const auto tryCombo = [&](bool isFlat) {
        const HWND combo = addTo(*host_, GetParam(), 8);
        const Flat control = isFlat ? flat(combo) : nullptr;
        const Accessible told = accessible(combo);
        SetFocus(other);
        host_->forget();
        click(combo, clientBox(combo).right - scaled(6), scaled(8));
        for (const int key : {VK_DOWN, VK_RETURN, VK_F4, VK_UP, VK_ESCAPE})
            keyTap(key);
        wheel(-1);
        keyDown(VK_MENU);
        keyTap(VK_DOWN);
        keyUp(VK_MENU);
        typeText(L"it");
        keyTap(VK_TAB);
        std::tuple heard(host_->heard(), send(combo, CB_GETCURSEL), textOf(combo), told);
        DestroyWindow(combo);
        return heard;
    };
    const auto plain = tryCombo(false);
    EXPECT_GE(std::get<0>(plain).size(), 5U);
    EXPECT_EQ(tryCombo(true), plain);
}

TEST_P(ComboStyleTest, ObjectDeletedEarlyLeavesAWorkingStandardCombo) {
    for (const bool told : {false, true}) {
        make(GetParam(), 50);
        host_->onMessage([&](UINT message, WPARAM wp, LPARAM) {
            if (message == WM_DRAWITEM ? told
                                       : message == WM_COMMAND && HIWORD(wp) == CBN_SELCHANGE)
                control_.reset();
            return std::optional<LRESULT>();
        });
        send(combo_, CB_SHOWDROPDOWN, TRUE);
        if (!told)
            control_.reset();
        send(combo_, WM_KEYDOWN, VK_DOWN);
        drain();
        EXPECT_EQ(control_, nullptr);
        send(combo_, CB_SETCURSEL, 4);
        EXPECT_EQ(send(combo_, CB_GETCURSEL), 4);
        DestroyWindow(combo_);
    }
}

TEST_P(ComboStyleTest, PaintingLeaksNothing) {
    make(GetParam());
    const Paper paper(combo_);
    EXPECT_TRUE(doesNotLeak(paintRounds(), [&] { control_->Paint(paper.dc()); }));
    EXPECT_TRUE(doesNotLeak(99, [&] { (control_->Refresh(), control_->OnAnimateColor(kHover)); }));
}

struct ComboWithoutButton : QkFlatComboBoxDropdownBase {
    ComboWithoutButton() : QkFlatComboBoxDropdownBase(1) {}
};
const ChildRegistration kList("ComboWithoutList", [] { QkFlatComboBoxDropdownList(1).Attach({}); });
const ChildRegistration kEdit("ComboWithoutEdit", [] { QkFlatComboBoxDropdown(1).Attach({}); });
const ChildRegistration kButton("ComboWithoutButton", [] { ComboWithoutButton().Attach({}); });

TEST(ComboBoxContractTest, BrokenOnesAreReported) {
    expectAssertReport("ComboWithoutList", "src/QkCustCombo", 78);
    expectAssertReport("ComboWithoutButton", "src/QkCustCombo", 192);
    expectAssertReport("ComboWithoutEdit", "src/QkCustCombo", 383);
}

}  // namespace

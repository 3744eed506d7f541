#include <memory>

#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxDropdownList.h"
#include "QkDlg/QkFlatComboBoxSimple.h"
#include "QkUtil/Rects.h"
#include "support/ChildProcess.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr COLORREF kLine = 0xDFDFDF, kGround = 0x78C878;
constexpr DWORD kSimple = CBS_SIMPLE | CBS_AUTOHSCROLL, kEditable = CBS_DROPDOWN | CBS_AUTOHSCROLL;
constexpr DWORD kOwnerDrawn = CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;

constexpr auto isDark = [](COLORREF colour) { return GetRValue(colour) < 0x60; };

LRESULT send(HWND window, UINT message, WPARAM wParam = 0, const void* lParam = nullptr) {
    return SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(lParam));
}

using Flat = std::unique_ptr<QkFlatComboBoxBase>;

Flat flat(HWND combo) {
    Flat control = std::make_unique<QkFlatComboBoxDropdownList>(101);
    switch (GetWindowLongPtrW(combo, GWL_STYLE) & 3) {
        case CBS_SIMPLE: control = std::make_unique<QkFlatComboBoxSimple>(101); break;
        case CBS_DROPDOWN: control = std::make_unique<QkFlatComboBoxDropdown>(101); break;
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
    // The process keeps a brush for edits, and the system what open lists are drawn with.
    ComboBoxTest() { allowGdiGrowth(6); }

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
        const auto buttonColour = [&] { return shown().at(mirrored ? 3 : idle.width() - 3, 3); };
        auto depth = std::make_unique<ScreenDepth>(16);
        moveToButton();
        pump(300);
        EXPECT_EQ(buttonColour(), kWhite);
        depth.reset();
        moveTo(combo_, scaled(20), 5);
        pump(50);
        EXPECT_EQ(buttonColour(), kWhite) << "the item is not the button";
        moveToButton();
        EXPECT_TRUE(pumpUntil([&] { return buttonColour() == kHover; }));
        expectBorder(shown());
        EnableWindow(combo_, FALSE);
        EXPECT_FALSE(shown().boundingBoxOf(isDark)) << "text and arrow are grey";
        EnableWindow(combo_, TRUE);
        EXPECT_THAT(shown(), looksLike(idle));
    }
}

struct ComboWithoutButton : QkFlatComboBoxDropdownBase {
    ComboWithoutButton() : QkFlatComboBoxDropdownBase(1) {}
};
const BrokenContract kContracts[] = {
    {"src/QkCustCombo", 78, [] { QkFlatComboBoxDropdownList(1).Attach({}); }},
    {"src/QkCustCombo", 192, [] { ComboWithoutButton().Attach({}); }},
    {"src/QkCustCombo", 383, [] { QkFlatComboBoxDropdown(1).Attach({}); }},
};

// As in dialogs that lay their controls out when they get their size.
TEST_F(ComboBoxTest, EditableOneThatWasMadeWithoutASizeGetsItsButtonWithIt) {
    make(kEditable);
    const Box expected = button();
    const RECT place = windowRectIn(combo_, host_->window());
    for (const int width : {0, 4, 10}) {
        const HWND combo = host_->add(L"combobox", L"", kEditable, area(0, 0, width, 150), 72);
        const auto control = std::make_unique<QkFlatComboBoxDropdown>(72);
        control->Attach(combo);
        SetWindowPos(combo, nullptr, place.left, place.top, place.right - place.left, 150, 0);
        drain();
        moveTo(combo, 1, 1);
        EXPECT_EQ(Box(control->GetButtonRect()), expected) << "made with a width of " << width;
        DestroyWindow(combo);
    }
}

}  // namespace

#include <array>
#include <memory>
#include <new>
#include <optional>
#include <tuple>

#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxDropdownList.h"
#include "QkDlg/QkFlatComboBoxSimple.h"
#include "support/ChildProcess.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kFirst = 101;
constexpr int kSecond = 102;

constexpr COLORREF kLine = RGB(223, 223, 223);
constexpr COLORREF kHover = RGB(229, 243, 251);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kGround = RGB(120, 200, 120);

constexpr std::array<DWORD, 3> kStyles{CBS_SIMPLE, CBS_DROPDOWN, CBS_DROPDOWNLIST};

bool isDark(COLORREF colour) {
    return GetRValue(colour) < 0x60;
}

COMBOBOXINFO infoOf(HWND combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    return info;
}

/// A window in the coordinates of the dialog that it belongs to.
Box boxIn(HWND window, HWND of) {
    RECT rect{};
    GetWindowRect(window, &rect);
    MapWindowPoints(HWND_DESKTOP, of, reinterpret_cast<POINT*>(&rect), 2);
    return Box(rect);
}

class ComboBoxTest : public WindowTest {
protected:
    /// The process keeps a brush for edits, and the system what open lists are drawn with.
    static void SetUpTestSuite() {
        HostDialog host;
        for (const DWORD style : kStyles) {
            const HWND combo =
                host.add(L"combobox", L"", style | WS_VSCROLL, scaledArea(0, 0, 99, 99), kFirst);
            fill(combo, 99);
            const auto control = flatFor(combo, style);
            SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
            pump(20);
        }
    }

    HWND addCombo(DWORD style, int items = 5, int id = kFirst) {
        const int row = id - kFirst;
        const HWND combo = host_.add(L"combobox", L"", style | WS_TABSTOP | WS_VSCROLL,
                                     scaledArea(30, 30 + 60 * row, 160, 150), id);
        fill(combo, items);
        return combo;
    }

    static void fill(HWND combo, int items) {
        for (int i = 0; i < items; ++i) {
            const std::wstring text = L"Item " + std::to_wstring(i + 1);
            SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        }
        SendMessageW(combo, CB_SETCURSEL, 1, 0);
    }

    template <typename Control>
    static std::unique_ptr<Control> flat(HWND window) {
        auto control = std::make_unique<Control>(static_cast<UINT>(GetDlgCtrlID(window)));
        control->Attach(window);
        drain();
        return control;
    }

    /// The flat control for a style.
    static std::unique_ptr<QkFlatComboBoxBase> flatFor(HWND window, DWORD style) {
        switch (style & 3) {
            case CBS_SIMPLE: return flat<QkFlatComboBoxSimple>(window);
            case CBS_DROPDOWN: return flat<QkFlatComboBoxDropdown>(window);
            default: return flat<QkFlatComboBoxDropdownList>(window);
        }
    }

    static void choose(HWND combo, int index) {
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    }
    static bool isOpen(HWND combo) { return SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0) != 0; }

    /// The middle of the arrow button.
    static POINT onButton(const QkFlatComboBoxDropdownBase& control) {
        const RECT& button = control.GetButtonRect();
        return {(button.left + button.right) / 2, (button.top + button.bottom) / 2};
    }
    /// The button's ground, beside the arrow.
    static COLORREF buttonColour(const QkFlatComboBoxDropdownBase& control) {
        return onScreen(control.GetWindow()).at(control.GetButtonRect().left + 2, 3);
    }

    HostDialog host_{{.width = scaled(300), .height = scaled(260)}};
};

// Places

TEST_F(ComboBoxTest, DropDownListHasItsButtonAndItsListWhereTheArrowAndTheItemSay) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    // The arrow's bitmaps have these widths in the eight sizes.
    constexpr std::array arrows{10, 13, 15, 20, 25, 30, 40, 50};
    const int button = arrows[dpiBucket(screenDpi())] + 2 * scaled(6);
    const Box client = clientBox(combo);
    EXPECT_EQ(Box(control->GetButtonRect()),
              Box(client.right - button, 0, client.right, client.bottom));
    EXPECT_EQ(control->GetItemWindow(), combo) << "it names no item window, or itself";
    const Box item = windowBox(combo);
    const Box list = windowBox(control->GetListWindow());
    EXPECT_EQ(Box(list.left, list.top, list.right, 0),
              Box(item.left - 2, item.bottom + 1, item.right + 2, 0));
}

TEST_F(ComboBoxTest, EditableComboHasItsButtonBesideTheEdit) {
    const HWND combo = addCombo(CBS_DROPDOWN);
    const auto control = flat<QkFlatComboBoxDropdown>(combo);
    const Box edit = boxIn(infoOf(combo).hwndItem, combo);
    EXPECT_EQ(control->GetButtonRect().left, edit.right + 1);
    EXPECT_EQ(control->GetButtonRect().right, clientBox(combo).right);
    const Box item = windowBox(infoOf(combo).hwndItem);
    const Box list = windowBox(control->GetListWindow());
    EXPECT_EQ(Box(list.left, list.top, list.right, 0),
              Box(item.left - 2, item.bottom + 1, item.right + 2, 0));
}

TEST_F(ComboBoxTest, SimpleComboHasItsListUnderTheEditInEverySize) {
    const HWND combo = addCombo(CBS_SIMPLE);
    const auto control = flat<QkFlatComboBoxSimple>(combo);
    const auto expectAligned = [&] {
        const Box item = boxIn(infoOf(combo).hwndItem, combo);
        const Box list = boxIn(control->GetListWindow(), combo);
        EXPECT_EQ(Box(list.left, list.top, list.right, 0),
                  Box(item.left - 2, item.bottom + 2, item.right + 2, 0));
    };
    expectAligned();
    SetWindowPos(combo, nullptr, 0, 0, scaled(120), scaled(110), SWP_NOMOVE | SWP_NOZORDER);
    expectAligned();
}

TEST_F(ComboBoxTest, ResizedComboTakesItsButtonAlong) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    SetWindowPos(combo, nullptr, 0, 0, scaled(240), scaled(150), SWP_NOMOVE | SWP_NOZORDER);
    drain();
    EXPECT_EQ(control->GetButtonRect().right, clientBox(combo).right);
    EXPECT_EQ(onScreen(combo).at(control->GetButtonRect().left, 3), kLine);
    moveTo(combo, onButton(*control).x, onButton(*control).y);
    EXPECT_TRUE(pumpUntil([&] { return buttonColour(*control) == kHover; }));
}

TEST_F(ComboBoxTest, EdgesGoAndListsOfTheProcessLoseTheirShadowForGood) {
    const HWND combo = host_.add(L"combobox", L"", CBS_DROPDOWNLIST, scaledArea(30, 30, 160, 150),
                                 kFirst, WS_EX_DLGMODALFRAME);
    const HWND list = infoOf(combo).hwndList;
    SetClassLongPtrW(list, GCL_STYLE,
                     static_cast<LONG_PTR>(GetClassLongPtrW(list, GCL_STYLE) | CS_DROPSHADOW));
    flat<QkFlatComboBoxDropdownList>(combo).reset();
    EXPECT_EQ(GetWindowLongPtrW(combo, GWL_EXSTYLE) & (WS_EX_CLIENTEDGE | WS_EX_DLGMODALFRAME), 0);
    EXPECT_EQ(clientBox(combo).right, boxIn(combo, combo).right) << "the edge's room is used";
    const HWND other = addCombo(CBS_DROPDOWNLIST, 1, kSecond);
    EXPECT_EQ(GetClassLongPtrW(infoOf(other).hwndList, GCL_STYLE) & CS_DROPSHADOW, 0U);
}

// Pictures

TEST_F(ComboBoxTest, ItemButtonAndBordersAreOnTheScreen) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    const Image shown = onScreen(combo);
    const RECT& button = control->GetButtonRect();
    const int right = shown.width() - 1;
    const int bottom = shown.height() - 1;
    for (const POINT border : {POINT{0, 0},
                               {right, bottom},
                               {right / 2, 0},
                               {right, bottom / 2},
                               {0, bottom / 2},
                               {right / 2, bottom},
                               {button.left, bottom / 2}})
        EXPECT_EQ(shown.at(border.x, border.y), kLine) << border.x << "," << border.y;
    const Box item(1, 1, button.left, bottom);
    const auto text =
        shown.part(item).boundingBoxOf([](COLORREF colour) { return colour != kWhite; });
    ASSERT_TRUE(text);
    EXPECT_NEAR(text->left + 1, scaled(6), scaled(2));
    EXPECT_NEAR(text->top + text->bottom + 2, shown.height(), scaled(4));
    const auto arrow =
        shown.part(Box(button.left + 1, 1, right, bottom)).boundingBoxOf([](COLORREF colour) {
            return colour != kWhite;
        });
    ASSERT_TRUE(arrow);
    EXPECT_NEAR(arrow->left + arrow->right, button.right - button.left - 2, scaled(2));
}

TEST_F(ComboBoxTest, ArrowLooksTheSameAtEveryPaintAndGreyWhenDisabled) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    const Image first = onScreen(combo);
    for (int i = 0; i < 3; ++i) {
        InvalidateRect(combo, nullptr, FALSE);
        drain();
    }
    EXPECT_THAT(onScreen(combo), looksLike(first));
    EnableWindow(combo, FALSE);
    const Image disabled = onScreen(combo);
    EXPECT_FALSE(disabled.boundingBoxOf([](COLORREF colour) { return GetRValue(colour) < 0x80; }));
    const RECT& button = control->GetButtonRect();
    const Box buttonBox(button.left, 0, button.right, button.bottom);
    EXPECT_THAT(disabled.part(buttonBox), testing::Not(looksLike(first.part(buttonBox))));
    EnableWindow(combo, TRUE);
    control->Refresh();
    drain();
    EXPECT_THAT(onScreen(combo), looksLike(first));
}

TEST_F(ComboBoxTest, LongItemLosesCharactersAndGetsNothingInstead) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST, 0);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    const std::wstring text = L"Wide mixed text (i, l, W) that is much too long for this box";
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    choose(combo, 0);
    const Image shown = onScreen(combo);

    const HDC dc = GetDC(combo);
    const HFONT font = CreateFontW(-MulDiv(9, screenDpi(), 72), 0, 0, 0, FW_NORMAL, 0, 0, 0,
                                   DEFAULT_CHARSET, 0, 0, 0, 0, L"Segoe UI");
    const HGDIOBJ before = SelectObject(dc, font);
    std::wstring cut = text;
    const int right = control->GetButtonRect().left - 1;
    for (SIZE size{}; !cut.empty(); cut.pop_back()) {
        GetTextExtentPoint32W(dc, cut.c_str(), static_cast<int>(cut.size()), &size);
        if (size.cx + scaled(6) < right - 1)
            break;
    }
    SelectObject(dc, before);
    DeleteObject(font);
    ReleaseDC(combo, dc);

    ASSERT_GT(cut.size(), 5U);
    ASSERT_LT(cut.size(), text.size());
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(cut.c_str()));
    choose(combo, 1);
    EXPECT_EQ(textOf(combo), cut);
    EXPECT_THAT(onScreen(combo), looksLike(shown));
}

TEST_F(ComboBoxTest, FocusFillsTheItemUpToTheButton) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST);
    addCombo(CBS_DROPDOWNLIST, 1, kSecond);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    SetFocus(combo);
    const Image shown = onScreen(combo);
    const int button = control->GetButtonRect().left;
    EXPECT_EQ(shown.boundingBoxOf(GetSysColor(COLOR_HIGHLIGHT)),
              Box(1, 1, button - 1, shown.height() - 1));
    EXPECT_TRUE(shown.part(Box(1, 1, button - 1, shown.height() - 1)).contains(kWhite));
    SetFocus(host_.control(kSecond));
    EXPECT_FALSE(onScreen(combo).contains(GetSysColor(COLOR_HIGHLIGHT)));
}

TEST_F(ComboBoxTest, DisabledEditableComboHasOneGround) {
    HostDialog green({.background = kGround, .width = scaled(300), .height = scaled(260)});
    const HWND combo = green.add(L"combobox", L"", CBS_DROPDOWN, scaledArea(30, 30, 160, 150), 1);
    fill(combo, 3);
    const auto control = flat<QkFlatComboBoxDropdown>(combo);
    EnableWindow(combo, FALSE);
    drain();
    const Image shown = onScreen(combo);
    EXPECT_FALSE(shown.contains(kGround)) << "what the host answers for its labels";
    const Box inside(1, 1, shown.width() - 1, shown.height() - 1);
    EXPECT_GT(shown.count(kWhite) * 2, inside.right * inside.bottom);
    EXPECT_TRUE(shown.boundingBoxOf([](COLORREF c) { return c == GetSysColor(COLOR_GRAYTEXT); }));
}

TEST_F(ComboBoxTest, ColoursThatTheHostGivesAnEditStand) {
    const HWND combo = addCombo(CBS_DROPDOWN);
    const HBRUSH brush = CreateSolidBrush(kGround);
    host_.onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_CTLCOLOREDIT)
            return std::nullopt;
        SetBkColor(reinterpret_cast<HDC>(wp), kGround);
        return reinterpret_cast<LRESULT>(brush);
    });
    const auto control = flat<QkFlatComboBoxDropdown>(combo);
    const Image edit = onScreen(infoOf(combo).hwndItem);
    EXPECT_GT(edit.count(kGround), edit.width() * edit.height() / 2);
    DestroyWindow(combo);
    DeleteObject(brush);
}

TEST_F(ComboBoxTest, SimpleComboShowsTheDialogsGroundBetweenItsParts) {
    for (const bool rightToLeft : {false, true}) {
        HostDialog green({.background = kGround,
                          .width = scaled(300),
                          .height = scaled(260),
                          .rightToLeft = rightToLeft});
        const HWND combo =
            green.add(L"combobox", L"", CBS_SIMPLE, scaledArea(30, 30, 160, 150), kFirst);
        fill(combo, 3);
        const auto control = flat<QkFlatComboBoxSimple>(combo);
        const Image shown = onScreen(combo);
        EXPECT_EQ(shown.at(0, 0), kGround);
        EXPECT_EQ(shown.at(shown.width() / 2, shown.height() - 1), kGround);
        EXPECT_TRUE(shown.boundingBoxOf(isDark)) << "edit and list are not painted over";
        // The frame of the edit, one pixel thick.
        const Box edit = boxIn(infoOf(combo).hwndItem, combo);
        EXPECT_EQ(shown.at(shown.width() / 2, edit.top - 1), kLine);
        EXPECT_EQ(shown.at(shown.width() / 2, edit.top - 2), kGround);
        EXPECT_EQ(shown.at(shown.width() / 2, edit.bottom), kLine);
        const Box list = boxIn(control->GetListWindow(), combo);
        EXPECT_EQ(shown.at(list.left, list.top + 5), kLine);
        EXPECT_EQ(shown.at(shown.width() / 2, list.top), kLine);
    }
}

TEST_F(ComboBoxTest, LongListHasItsBorderAndAScrollBarThatWorks) {
    for (const DWORD style : kStyles) {
        const HWND combo = addCombo(style, 300);
        const auto control = flatFor(combo, style);
        SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
        pump(50);
        const HWND list = control->GetListWindow();
        ASSERT_TRUE(IsWindowVisible(list));
        const Box box = windowBox(list);
        const Image shown = onDesktop({box.left, box.top, box.right, box.bottom});
        const int right = shown.width() - 1;
        const int bottom = shown.height() - 1;
        for (const POINT border : {POINT{0, 0},
                                   {right, bottom},
                                   {right / 2, 0},
                                   {right, bottom / 2},
                                   {0, bottom / 2},
                                   {right / 2, bottom}})
            EXPECT_EQ(shown.at(border.x, border.y), kLine) << border.x << "," << border.y;
        const int bar = GetSystemMetrics(SM_CXVSCROLL);
        const Image barShown = shown.part(Box(right - bar, 1, right, bottom));
        EXPECT_TRUE(barShown.boundingBoxOf(isDark)) << "the arrows of the scroll bar";

        // Something lay over the list and is gone.
        const HDC dc = GetWindowDC(list);
        PatBlt(dc, 0, 0, shown.width(), shown.height(), BLACKNESS);
        ReleaseDC(list, dc);
        RedrawWindow(list, nullptr, nullptr,
                     RDW_FRAME | RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        EXPECT_THAT(onDesktop({box.left, box.top, box.right, box.bottom}), looksLike(shown));

        const LRESULT top = SendMessageW(list, LB_GETTOPINDEX, 0, 0);
        moveTo(list, clientBox(list).right + bar / 2, clientBox(list).bottom - bar / 2);
        // Down and up before the bar's own loop takes them, as it would wait for the up.
        click();
        EXPECT_EQ(SendMessageW(list, LB_GETTOPINDEX, 0, 0), top + 1);
        SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxTest, MirroredDialogMirrorsPlacesNotLettersAndFindsTheButtonOnTheLeft) {
    HostDialog mirrored({.width = scaled(300), .height = scaled(260), .rightToLeft = true});
    const HWND other =
        mirrored.add(L"combobox", L"", CBS_DROPDOWNLIST, scaledArea(30, 30, 160, 150), kFirst);
    fill(other, 3);
    const HWND combo = addCombo(CBS_DROPDOWNLIST);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    const Image plain = onScreen(combo);
    DestroyWindow(host_.window());

    const auto mirroredControl = flat<QkFlatComboBoxDropdownList>(other);
    const Image shown = onScreen(other);
    const int button = plain.width() - control->GetButtonRect().left;
    EXPECT_EQ(shown.at(button - 1, 3), kLine);
    const auto plainInk =
        plain.part(Box(1, 1, plain.width() - button, plain.height() - 1)).boundingBoxOf(isDark);
    const Image item = shown.part(Box(button, 1, shown.width() - 1, shown.height() - 1));
    const auto ink = item.boundingBoxOf(isDark);
    ASSERT_TRUE(plainInk && ink);
    EXPECT_NEAR(item.width() - ink->right, plainInk->left, scaled(2));
    EXPECT_THAT(item.part(*ink),
                looksLike(plain.part(Box(plainInk->left + 1, plainInk->top + 1, plainInk->right + 1,
                                         plainInk->bottom + 1))));

    const POINT at = onButton(*mirroredControl);
    moveTo(other, at.x, at.y);
    EXPECT_TRUE(pumpUntil([&] { return onScreen(other).at(3, 3) == kHover; }));
    EXPECT_EQ(onScreen(other).at(0, 3), kLine) << "the border stays";
    moveAway();
    EXPECT_THAT(onScreen(other), looksLike(shown));
}

TEST_F(ComboBoxTest, HighContrastShowsSystemColoursOnlyAndNeverFades) {
    const SystemColours scheme({{COLOR_WINDOW, RGB(0, 0, 64)},
                                {COLOR_WINDOWTEXT, RGB(255, 255, 0)},
                                {COLOR_HIGHLIGHT, RGB(64, 0, 64)},
                                {COLOR_HIGHLIGHTTEXT, RGB(0, 255, 255)},
                                {COLOR_GRAYTEXT, RGB(0, 255, 0)}});
    const HWND combo = addCombo(CBS_DROPDOWNLIST);
    addCombo(CBS_DROPDOWNLIST, 1, kSecond);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    HighContrast contrast;
    SetFocus(host_.control(kSecond));
    control->Refresh();
    drain();
    EXPECT_EQ(buttonColour(*control), RGB(0, 0, 64));
    EXPECT_TRUE(onScreen(combo).contains(RGB(255, 255, 0)));
    EXPECT_FALSE(onScreen(combo).contains(kWhite));
    SetFocus(combo);
    EXPECT_TRUE(onScreen(combo).contains(RGB(0, 255, 255)));
    EXPECT_FALSE(onScreen(combo).contains(RGB(255, 255, 0)));
    SetFocus(host_.control(kSecond));
    moveTo(combo, onButton(*control).x, onButton(*control).y);
    pump(150);
    EXPECT_EQ(buttonColour(*control), RGB(0, 0, 64));
    EnableWindow(combo, FALSE);
    EXPECT_TRUE(onScreen(combo).contains(RGB(0, 255, 0)));
}

TEST_F(ComboBoxTest, OwnerDrawnItemIsDrawnByTheHost) {
    std::vector<DRAWITEMSTRUCT> asked;
    host_.onMessage([&](UINT message, WPARAM, LPARAM lp) -> std::optional<LRESULT> {
        if (message != WM_DRAWITEM)
            return std::nullopt;
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lp);
        if (item.itemState & ODS_COMBOBOXEDIT) {
            asked.push_back(item);
            RECT all{0, 0, 10000, 10000};
            const HBRUSH brush = CreateSolidBrush(kGround);
            FillRect(item.hDC, &all, brush);
            DeleteObject(brush);
        }
        return TRUE;
    });
    const HWND combo = addCombo(CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED, 0);
    for (const LPARAM data : {70, 71, 72})
        SendMessageW(combo, CB_ADDSTRING, 0, data);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    asked.clear();
    choose(combo, 2);
    ASSERT_FALSE(asked.empty());
    EXPECT_EQ(asked.back().itemID, 2U);
    EXPECT_EQ(asked.back().itemData, 72U);
    EXPECT_EQ(asked.back().CtlID, static_cast<UINT>(kFirst));
    EXPECT_EQ(asked.back().hwndItem, combo);
    EXPECT_EQ(asked.back().itemState, static_cast<UINT>(ODS_COMBOBOXEDIT));
    const Image shown = onScreen(combo);
    EXPECT_EQ(shown.boundingBoxOf(kGround),
              Box(1, 1, control->GetButtonRect().left - 1, shown.height() - 1))
        << "the host draws into the item and nowhere else";
    SetFocus(combo);
    EXPECT_EQ(asked.back().itemState,
              static_cast<UINT>(ODS_COMBOBOXEDIT | ODS_SELECTED | ODS_FOCUS));
    choose(combo, -1);
    EXPECT_EQ(asked.back().itemID, static_cast<UINT>(-1));
}

// Hover

TEST_F(ComboBoxTest, ButtonFadesUnderTheMouseAndNowhereElse) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    const Image idle = onScreen(combo);
    MessageSpy spy(combo, {WM_FADECOLOR});
    moveTo(combo, scaled(20), 5);
    pump(50);
    EXPECT_EQ(spy.count(WM_FADECOLOR), 0) << "the item is not the button";

    const POINT button = onButton(*control);
    moveTo(combo, button.x, button.y);
    EXPECT_TRUE(pumpUntil([&] { return spy.count(WM_FADECOLOR) == 10; }));
    EXPECT_EQ(spy.last(WM_FADECOLOR)->result, 1);
    EXPECT_EQ(buttonColour(*control), kHover);
    const Image hot = onScreen(combo);
    EXPECT_EQ(hot.at(hot.width() - 1, 3), kLine) << "the border stays round the button";
    EXPECT_EQ(hot.at(control->GetButtonRect().left, 3), kLine);
    InvalidateRect(combo, nullptr, FALSE);
    drain();
    EXPECT_THAT(onScreen(combo), looksLike(hot)) << "step and paint agree";

    moveTo(combo, button.x, button.y + 1);
    moveTo(combo, scaled(20), 5);
    pump(50);
    EXPECT_EQ(spy.count(WM_FADECOLOR), 10) << "one fade for each visit of the combo";
    moveAway();
    EXPECT_THAT(onScreen(combo), looksLike(idle));

    moveTo(combo, button.x, button.y);
    EXPECT_TRUE(pumpUntil([&] { return spy.count(WM_FADECOLOR) >= 12; }));
    SendMessageW(combo, WM_MOUSELEAVE, 0, 0);
    EXPECT_THAT(onScreen(combo), looksLike(idle)) << "leaving ends a running fade at once";
    const int steps = spy.count(WM_FADECOLOR);
    pump(150);
    EXPECT_EQ(spy.count(WM_FADECOLOR), steps);
}

TEST_F(ComboBoxTest, FewColoursMeanNoFade) {
    const HWND combo = addCombo(CBS_DROPDOWN);
    const auto control = flat<QkFlatComboBoxDropdown>(combo);
    const MessageSpy spy(combo, {WM_FADECOLOR});
    const ScreenDepth depth(16);
    moveTo(combo, onButton(*control).x, onButton(*control).y);
    pump(150);
    EXPECT_EQ(spy.count(WM_FADECOLOR), 0);
    EXPECT_EQ(buttonColour(*control), kWhite);
}

TEST_F(ComboBoxTest, DisabledUnderTheMouseLosesTheHover) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    moveTo(combo, onButton(*control).x, onButton(*control).y);
    EXPECT_TRUE(pumpUntil([&] { return buttonColour(*control) == kHover; }));
    EnableWindow(combo, FALSE);
    EXPECT_EQ(buttonColour(*control), kWhite);
}

// The standard combo never shows through, and does all the work

class ComboStyleTest : public ComboBoxTest, public testing::WithParamInterface<DWORD> {};

constexpr DWORD kSimple = CBS_SIMPLE | CBS_AUTOHSCROLL;
constexpr DWORD kEditable = CBS_DROPDOWN | CBS_AUTOHSCROLL;
constexpr DWORD kOwnerDrawn = CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;

class ComboShownThroughTest : public ComboStyleTest {};

TEST_P(ComboShownThroughTest, EveryMessageLeavesTheFlatLook) {
    const DWORD style = GetParam();
    const HWND combo = addCombo(style);
    addCombo(CBS_DROPDOWNLIST, 1, kSecond);
    const auto control = flatFor(combo, style);
    const RECT button = dynamic_cast<QkFlatComboBoxDropdownBase&>(*control).GetButtonRect();
    const auto expectFlat = [&](const std::string& after) {
        // What is on the screen is what the flat combo prints; an edit shows itself.
        Box part = clientBox(combo);
        if (control->GetItemWindow() != combo)
            part.left = button.left;
        EXPECT_THAT(onScreen(combo).part(part), looksLike(printed(combo).part(part))) << after;
    };
    struct Step {
        const char* name = "";
        UINT message = 0;
        WPARAM wParam = 0;
        LPARAM lParam = 0;
    };
    const HWND list = control->GetListWindow();
    const LPARAM onTheButton = MAKELPARAM(button.left + 3, 3);
    const auto text = reinterpret_cast<LPARAM>(L"Item 3");
    const std::vector<Step> steps{
        {"selection", CB_SETCURSEL, 3},
        {"search", CB_SELECTSTRING, static_cast<WPARAM>(-1), text},
        {"item removed", CB_DELETESTRING, 2},
        {"text", WM_SETTEXT, 0, text},
        {"theme", WM_THEMECHANGED},
        {"press", WM_LBUTTONDOWN, MK_LBUTTON, onTheButton},
        {"release", WM_LBUTTONUP, 0, onTheButton},
        {"rolled up", CB_SHOWDROPDOWN, FALSE},
        {"dropped down", CB_SHOWDROPDOWN, TRUE},
        {"list's choice", WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), LBN_SELCHANGE),
         reinterpret_cast<LPARAM>(list)},
        {"key", WM_KEYDOWN, VK_DOWN},
        {"F4", WM_KEYDOWN, VK_F4},
        {"F4 again", WM_KEYDOWN, VK_F4},
        {"Alt and down", WM_SYSKEYDOWN, VK_DOWN, 1L << 29},
        {"cancel", WM_CANCELMODE},
        {"character", WM_CHAR, L'i'},
        {"wheel", WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA))},
        {"emptied", CB_RESETCONTENT},
    };
    for (const Step& step : steps) {
        SendMessageW(combo, step.message, step.wParam, step.lParam);
        expectFlat(step.name);
    }
    fill(combo, 5);
    SetFocus(combo);
    expectFlat("focus");
    SetFocus(host_.control(kSecond));
    expectFlat("focus lost");
    EnableWindow(combo, FALSE);
    expectFlat("disabled");
    EnableWindow(combo, TRUE);
    expectFlat("enabled");
}

TEST_P(ComboStyleTest, ParentHearsWhatAPlainComboTells) {
    const auto heardFrom = [&](HWND combo) {
        const HWND list = infoOf(combo).hwndList;
        host_.forget();
        const Box client = clientBox(combo);
        click(combo, client.right - scaled(6), scaled(8));
        keyTap(VK_DOWN);
        keyTap(VK_RETURN);
        keyTap(VK_F4);
        keyTap(VK_UP);
        keyTap(VK_ESCAPE);
        keyDown(VK_MENU);
        keyTap(VK_DOWN);
        keyUp(VK_MENU);
        if (IsWindowVisible(list))
            click(list, scaled(20), clientBox(list).bottom - scaled(6));
        wheel(-1);
        typeText(L"it");
        keyTap(VK_DOWN);
        keyTap(VK_TAB);
        HeardList heard = host_.heard();
        for (Heard& each : heard)
            each.id = 0;
        return std::pair(heard, SendMessageW(combo, CB_GETCURSEL, 0, 0));
    };
    const DWORD style = GetParam();
    const auto tryCombo = [&](bool isFlat) {
        HWND combo = addCombo(style, 8);
        const auto control = isFlat ? flatFor(combo, style) : nullptr;
        addCombo(CBS_DROPDOWNLIST, 1, kSecond);
        SetFocus(host_.control(kSecond));
        const auto result = heardFrom(combo);
        const std::wstring text = (style & CBS_OWNERDRAWFIXED) ? L"" : textOf(combo);
        DestroyWindow(combo);
        DestroyWindow(host_.control(kSecond));
        return std::tuple(result.first, result.second, text);
    };
    const auto plain = tryCombo(false);
    EXPECT_GE(std::get<0>(plain).size(), 5U);
    EXPECT_EQ(tryCombo(true), plain);
}

/// Deletes a combo's object while its list is open, and spoils the object's memory.
template <typename Control>
void deleteWhileOpen(HWND combo) {
    alignas(Control) std::array<unsigned char, sizeof(Control)> memory{};
    auto* const control = new (memory.data()) Control(kFirst);
    control->Attach(combo);
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    moveTo(combo, clientBox(combo).right - scaled(6), scaled(8));
    const HWND list = control->GetListWindow();
    std::destroy_at(control);
    memory.fill(0xAA);

    const FaultWatch watch;
    pump(50);
    RedrawWindow(list, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
    const Box box = windowBox(list);
    EXPECT_NE(onDesktop({box.left, box.top, box.right, box.bottom}).at(0, 0), kLine)
        << "the standard border is back";
    SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
    SendMessageW(combo, CB_SETCURSEL, 4, 0);
    EnableWindow(combo, FALSE);
    moveAway();
    EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), 4);
    DestroyWindow(combo);
    EXPECT_EQ(watch.faults(), 0);
}

TEST_F(ComboBoxTest, ObjectDeletedEarlyLeavesAWorkingStandardCombo) {
    deleteWhileOpen<QkFlatComboBoxSimple>(addCombo(CBS_SIMPLE, 50));
    deleteWhileOpen<QkFlatComboBoxDropdown>(addCombo(CBS_DROPDOWN, 50));
    deleteWhileOpen<QkFlatComboBoxDropdownList>(addCombo(CBS_DROPDOWNLIST, 50));
}

TEST_P(ComboStyleTest, WindowsAndObjectsMayGoInAnyOrder) {
    const DWORD style = GetParam();
    {
        SCOPED_TRACE("window first, while its list is open");
        const HWND combo = addCombo(style, 50);
        const auto control = flatFor(combo, style);
        SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
        moveTo(combo, clientBox(combo).right - scaled(6), scaled(8));
        DestroyWindow(combo);
        pump(50);
        EXPECT_EQ(control->GetWindow(), nullptr);
        EXPECT_EQ(control->GetListWindow(), nullptr);
        control->Refresh();
        control->OnAnimateColor(kHover);
        control->OnMouseLeave();
        control->DrawListBorder();
        control->Paint(nullptr);
    }
    {
        SCOPED_TRACE("made flat again");
        const HWND combo = addCombo(style);
        auto control = flatFor(combo, style);
        const Image first = onScreen(combo);
        control.reset();
        drain();
        control = flatFor(combo, style);
        EXPECT_THAT(onScreen(combo), looksLike(first));
        DestroyWindow(combo);
    }
    {
        SCOPED_TRACE("object deleted by its own notification");
        const HWND combo = addCombo(style);
        auto control = flatFor(combo, style);
        host_.onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_COMMAND && HIWORD(wp) == CBN_SELCHANGE && control) {
                control.reset();
                DestroyWindow(combo);
            }
            return std::nullopt;
        });
        SetFocus(combo);
        keyTap(VK_DOWN);
        EXPECT_FALSE(IsWindow(combo));
        host_.onMessage({});
    }
}

TEST_P(ComboStyleTest, PaintingLeaksNothing) {
    const DWORD style = GetParam();
    const HWND combo = addCombo(style, 50);
    const auto control = flatFor(combo, style);
    // Simple combos paint nothing, the other styles what this one paints.
    const int times = style == CBS_DROPDOWNLIST ? 10'000 : 100;
    const HDC dc = GetDC(combo);
    EXPECT_TRUE(doesNotLeak(times, [&] { control->Paint(dc); }));
    ReleaseDC(combo, dc);
    EXPECT_TRUE(doesNotLeak(100, [&] {
        control->Refresh();
        UpdateWindow(combo);
        control->OnAnimateColor(kHover);
        control->DrawItemBorder();
        control->DrawListBorder();
        RedrawWindow(combo, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
    }));
}

TEST_P(ComboStyleTest, AccessibilityKnowsTheSameCombo) {
    const HWND combo = addCombo(GetParam());
    const Accessible before = accessible(combo);
    const auto control = flatFor(combo, GetParam());
    EXPECT_EQ(accessible(combo), before);
}

INSTANTIATE_TEST_SUITE_P(Styles, ComboStyleTest,
                         testing::Values(kSimple, kEditable, CBS_DROPDOWNLIST, kOwnerDrawn));
INSTANTIATE_TEST_SUITE_P(Styles, ComboShownThroughTest,
                         testing::Values(kEditable, CBS_DROPDOWNLIST, kOwnerDrawn));

// Life of the inner edit, of a dialog, and broken contracts

TEST_F(ComboBoxTest, EditOfADropDownIsReleasedByItsAttachAndHasNoFrame) {
    const HWND combo = addCombo(CBS_DROPDOWN);
    const auto control = flat<QkFlatComboBoxDropdown>(combo);
    const HWND edit = infoOf(combo).hwndItem;
    for (HWND child = GetWindow(combo, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        EXPECT_EQ(IsWindowVisible(child) != FALSE, child == edit);
    SetFocus(edit);
    typeText(L"abc");
    MoveWindow(edit, scaled(5), scaled(3), scaled(60), scaled(14), TRUE);
    EnableWindow(combo, FALSE);
    EnableWindow(combo, TRUE);
    EXPECT_EQ(textOf(combo), L"abcItem 2");
    ShowWindow(edit, SW_HIDE);
    ShowWindow(edit, SW_SHOW);
    EXPECT_EQ(onScreen(combo).at(scaled(4), scaled(8)), kWhite) << "no frame beside the edit";
}

TEST_F(ComboBoxTest, EscapeClosesAListFirstAndThenTheDialog) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST, 50);
    const auto control = flat<QkFlatComboBoxDropdownList>(combo);
    host_.onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_COMMAND && LOWORD(wp) == IDCANCEL)
            DestroyWindow(host_.window());
        return std::nullopt;
    });
    focus(combo);
    keyTap(VK_F4);
    ASSERT_TRUE(isOpen(combo));
    keyTap(VK_ESCAPE);
    EXPECT_FALSE(isOpen(combo));
    keyTap(VK_F4);
    PostMessageW(host_.window(), WM_COMMAND, IDCANCEL, 0);
    pump(50);
    EXPECT_FALSE(IsWindow(combo));
    EXPECT_EQ(control->GetListWindow(), nullptr);
}

TEST_F(ComboBoxTest, ObjectDeletedWhileTheHostDrawsItsItemIsNotTouchedAgain) {
    const HWND combo = addCombo(CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS);
    auto control = flat<QkFlatComboBoxDropdownList>(combo);
    host_.onMessage([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_DRAWITEM)
            control.reset();
        return std::nullopt;
    });
    InvalidateRect(combo, nullptr, FALSE);
    UpdateWindow(combo);
    EXPECT_EQ(control, nullptr);
    EXPECT_TRUE(IsWindow(combo));
}

HWND makeButton() {
    return CreateWindowExW(0, L"button", L"", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr,
                           nullptr);
}

class ComboWithoutButton : public QkFlatComboBoxDropdownBase {
public:
    ComboWithoutButton() : QkFlatComboBoxDropdownBase(1) {}
};

CHILD_PROCESS(DropDownListOnAButton) {
    QkFlatComboBoxDropdownList(1).Attach(makeButton());
}
CHILD_PROCESS(EditableComboOnAButton) {
    QkFlatComboBoxDropdown(1).Attach(makeButton());
}
CHILD_PROCESS(ComboWithoutButtonWidth) {
    ComboWithoutButton().Attach(makeButton());
}

TEST_F(ComboBoxTest, BrokenContractsAreReported) {
    expectAssertReport("DropDownListOnAButton", "src/QkCustCombo", 78);
    expectAssertReport("EditableComboOnAButton", "src/QkCustCombo", 383);
    expectAssertReport("ComboWithoutButtonWidth", "src/QkCustCombo", 192);
}

}  // namespace

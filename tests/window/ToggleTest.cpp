#include <array>

#include "QkDlg/QkFlatCheckbox.h"
#include "QkDlg/QkFlatRadio.h"
#include "QkUtil/Canvas.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kFirst = 101;
constexpr int kSecond = 102;
constexpr int kThird = 103;

class ToggleTest : public WindowTest {
protected:
    HWND add(int id, DWORD style, const wchar_t* text = L"&Text") {
        return host_.add(L"button", text, style | WS_TABSTOP,
                         scaledArea(20, 20 + 40 * (id - kFirst), 140, 24), id);
    }

    [[nodiscard]] UINT state(int id) const { return IsDlgButtonChecked(host_.window(), id); }

    /// The picture as it is on the screen, which must need no further painting.
    static Image mark(HWND toggle) {
        EXPECT_FALSE(GetUpdateRect(toggle, nullptr, FALSE)) << "something waits to be painted";
        const Image whole = onScreen(toggle);
        EXPECT_THAT(whole, looksLike(printed(toggle)));
        const int edge = bitmapEdge();
        const int top = (whole.height() - edge) / 2;
        return whole.part({0, top, edge, top + edge});
    }
    static bool showsMark(HWND toggle) { return mark(toggle).contains(kAccent); }

    static int bitmapEdge() {
        constexpr std::array<int, 8> edges{16, 20, 24, 32, 40, 48, 64, 80};
        return edges.at(dpiBucket(QkDlgTest::screenDpi()));
    }

    HostDialog host_{{.width = scaled(400), .height = scaled(260)}};
};

TEST_F(ToggleTest, CheckBoxShowsEachChangeAtOnce) {
    const HWND box = add(kFirst, BS_AUTOCHECKBOX);
    auto control = flatten<QkFlatCheckbox>(box);
    EXPECT_EQ(QkFlatToggleBase::GetCaptionRoom(box), scaled(140) - bitmapEdge() - scaled(6));
    EXPECT_FALSE(showsMark(box));
    click(box);
    EXPECT_EQ(state(kFirst), BST_CHECKED);
    EXPECT_TRUE(showsMark(box));
    keyTap(VK_SPACE);
    EXPECT_EQ(state(kFirst), BST_UNCHECKED);
    EXPECT_FALSE(showsMark(box));
    CheckDlgButton(host_.window(), kFirst, BST_CHECKED);
    EXPECT_TRUE(showsMark(box));
    EnableWindow(box, FALSE);
    EXPECT_FALSE(showsMark(box)) << "the disabled picture is grey";
    const Image disabled = mark(box);
    CheckDlgButton(host_.window(), kFirst, BST_UNCHECKED);
    EXPECT_NE(mark(box), disabled) << "but still tells checked from unchecked";
    control.reset();
    EXPECT_EQ(QkFlatToggleBase::GetCaptionRoom(box), scaled(140)) << "of a plain one";

    const HWND threeStates = add(kSecond, BS_AUTO3STATE);
    control = flatten<QkFlatCheckbox>(threeStates);
    const Image unchecked = mark(threeStates);
    CheckDlgButton(host_.window(), kSecond, BST_INDETERMINATE);
    EXPECT_THAT(mark(threeStates), looksLike(unchecked)) << "the third state has no picture";
}

TEST_F(ToggleTest, RadioSiblingsChangeWithTheOneThatIsChosen) {
    const HWND first = add(kFirst, BS_AUTORADIOBUTTON | WS_GROUP);
    const HWND second = add(kSecond, BS_AUTORADIOBUTTON);
    const HWND third = add(kThird, BS_AUTORADIOBUTTON);
    const std::unique_ptr<QkFlatRadio> controls[] = {
        flatten<QkFlatRadio>(first), flatten<QkFlatRadio>(second), flatten<QkFlatRadio>(third)};
    click(first);
    EXPECT_TRUE(showsMark(first));
    click(second);
    EXPECT_FALSE(showsMark(first));
    EXPECT_TRUE(showsMark(second));
    keyTap(VK_DOWN);
    EXPECT_EQ(GetFocus(), third);
    EXPECT_EQ(state(kThird), BST_CHECKED);
    EXPECT_TRUE(showsMark(third));
    EXPECT_FALSE(showsMark(second));
    keyTap(VK_UP);
    EXPECT_TRUE(showsMark(second));
    EXPECT_FALSE(showsMark(third));
}

TEST_F(ToggleTest, CheckBoxFromCodeIsFlatAndPaintsForCustomDraw) {
    const auto box = QkFlatCheckbox::CreateInParent(
        host_.window(), GetModuleHandleW(nullptr), kFirst,
        {scaled(20), scaled(20), scaled(140), scaled(24)}, L"Made by code");
    ASSERT_NE(box, nullptr);
    drain();
    const HWND window = box->GetWindow();
    EXPECT_EQ(GetWindowLongPtrW(window, GWL_STYLE) & 0xFFFF000F, 0x50010003);
    click(window);
    EXPECT_TRUE(showsMark(window));
    const WindowDc dc(window);
    fillRect(dc.get(), area(0, 0, scaled(140), scaled(24)), RGB(0, 0, 0));
    NMCUSTOMDRAW draw{};
    draw.hdr = {window, kFirst, static_cast<UINT>(NM_CUSTOMDRAW)};
    draw.hdc = dc.get();
    draw.dwDrawStage = CDDS_PREERASE;
    const auto notify = [&] {
        return SendMessageW(host_.window(), WM_NOTIFY, kFirst, reinterpret_cast<LPARAM>(&draw));
    };
    EXPECT_EQ(notify(), CDRF_SKIPDEFAULT);
    EXPECT_TRUE(showsMark(window));
    draw.dwDrawStage = CDDS_PREPAINT;
    EXPECT_EQ(notify(), 0);
}

TEST_F(ToggleTest, HighContrastDrawsPlainShapes) {
    const SystemColours scheme({{COLOR_WINDOW, RGB(0, 0, 0)}, {COLOR_BTNFACE, RGB(0, 0, 0)}});
    const HWND box = add(kFirst, BS_AUTOCHECKBOX, L" ");
    const HWND radio = add(kSecond, BS_AUTORADIOBUTTON, L" ");
    const auto flatBox = flatten<QkFlatCheckbox>(box);
    const auto flatRadio = flatten<QkFlatRadio>(radio);
    const HighContrast contrast;
    for (const HWND toggle : {box, radio})
        SendMessageW(toggle, BM_SETCHECK, BST_CHECKED, 0);
    const int edge = bitmapEdge();
    const int line = edge < 32 ? 2 : edge / 16;
    const Image boxMark = mark(box);
    EXPECT_EQ(boxMark.at(line - 1, edge / 3), kWhite) << "the frame";
    const int side = edge / 4;
    const int at = (edge - side) / 2 - line;
    EXPECT_EQ(boxMark.part({line, line, edge - line, edge - line}).boundingBoxOf(kWhite),
              Box(at, at, at + side, at + side))
        << "nothing but the square inside";
    const Image radioMark = mark(radio);
    EXPECT_EQ(radioMark.at(0, 0), RGB(0, 0, 0)) << "outside the circle";
    EXPECT_EQ(radioMark.at(edge / 2, 2 * line - 1), RGB(0, 0, 0)) << "between circle and dot";
    EXPECT_EQ(radioMark.at(2 * line + 2, edge / 2), kWhite) << "the dot";
}

TEST_F(ToggleTest, MirroredDialogMirrorsPlacesButNeitherCheckMarkNorLetters) {
    const auto pictureOf = [&](bool rightToLeft) {
        HostDialog host({.width = scaled(400), .height = scaled(260), .rightToLeft = rightToLeft});
        const HWND box =
            host.add(L"button", L"Left", BS_AUTOCHECKBOX, scaledArea(20, 20, 140, 24), kFirst);
        SendMessageW(box, BM_SETCHECK, BST_CHECKED, 0);
        const auto control = flatten<QkFlatCheckbox>(box);
        control->SetFont(L"Segoe UI", 9, FW_NORMAL);
        control->Refresh();
        drain();
        return onScreen(box);
    };
    const Image plain = pictureOf(false);
    const Image mirrored = pictureOf(true);
    const Image::Predicate parts[] = {[](COLORREF colour) { return colour == kAccent; },
                                      [](COLORREF colour) { return GetBValue(colour) < 0x60; }};
    for (const Image::Predicate& part : parts) {
        const auto left = plain.boundingBoxOf(part);
        const auto right = mirrored.boundingBoxOf(part);
        ASSERT_TRUE(left && right);
        EXPECT_NEAR(right->right, plain.width() - left->left, scaled(2));
        EXPECT_THAT(mirrored.part(*right), looksLike(plain.part(*left)));
    }
}

}  // namespace

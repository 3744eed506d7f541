#include <array>
#include <utility>

#include "Exports/ControlFactory.h"
#include "QkDlg/DialogFonts.h"
#include "QkDlg/QkFlatBlueBtn.h"
#include "QkDlg/QkXAppGlobals.h"
#include "QkUtil/Bitmaps.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Resources.h"
#include "QkXML/DialogDefaults.h"
#include "support/ChildProcess.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

void takeIdsWithoutEnd() {
    std::array<UINT32, 26> ids{};
    ids.fill(7);
    // 25 is one more than 24, so the list is taken; its last slot is out of reach.
    if (ImageIdList(ids.data()).imageCount() == 3)
        (void)ImageIdList().idOf(3, 0);
}

void startTwice() {
    ColourFade fade;
    fade.Start(nullptr, 0, 1);
    fade.Start(nullptr, 0, 1);
}

void takeFontIntoTooSmallABuffer() {
    std::array<wchar_t, 31> face{};
    int size = 0;
    (void)GetDialogFont(face.data(), static_cast<int>(face.size()), size);
}

const UINT32 kTenIds[]{1, 2, 3, 4, 5, 6, 7, 8, 9, kImageIdEnd};
const BrokenContract kContracts[] = {
    {"src/QkUtil", 452, [] { (void)GetUIColor(12); }},
    {"src/QkUtil", 452, [] { (void)GetUIColor(-1); }},
    {"src/QkCustCtrl", 1127, [] { (void)ImageIdList(kTenIds); }},
    {"src/QkCustCtrl", 1177, takeIdsWithoutEnd},
    {"src/QkUtil", 560, [] { DrawBitmap(nullptr, LoadBitmapResource(62024).get(), 0, 0); }},
    {"src/QkUtil", 561, [] { DrawBitmap(WindowDc(nullptr).get(), nullptr, 0, 0); }},
    {"src/QkUtil", 486, [] { PrepareGlyphForState(nullptr, true); }},
    {"src/QkCustCtrl", 1270, startTwice},
    {"src/DlgFont", 55, takeFontIntoTooSmallABuffer},
};

TEST(BrokenContracts, AreReportedByTheirFixedSites) {
    expectAssertReports();
}

// Without it no other test would find a leak.
TEST(TestSupport, TellsThatSomethingIsLost) {
    std::vector<UniqueRegion> lost;
    EXPECT_FALSE(doesNotLeak(1, [&] { lost.emplace_back(CreateRectRgn(0, 0, 1, 1)); }));
}

// Colours and bitmaps

TEST(UiColours, TurnToSystemColoursInHighContrast) {
    const std::array accents{UICLR_ACCENT, UICLR_HOVER, UICLR_PRESSED_BORDER, UICLR_LINE};
    const HighContrast contrast;
    const std::array contrasting{GetSysColor(COLOR_HOTLIGHT),
                                 GetSysColor(COLOR_GRADIENTACTIVECAPTION),
                                 GetSysColor(COLOR_ACTIVECAPTION), DWORD{0xDFDFDF}};
    for (std::size_t i = 0; i < accents.size(); ++i)
        EXPECT_EQ(GetUIColor(accents[i]), contrasting[i]) << i;
}

struct BitmapSet {
    UINT firstId;
    UINT sets;
    WORD bits;
    std::array<int, 8> edges;
};

TEST(BitmapResources, AreAllThereInTheirSizesAndFormats) {
    const std::array<BitmapSet, 3> sets{{{62024, 9, 32, {16, 20, 24, 32, 40, 48, 64, 80}},
                                         {62096, 8, 32, {10, 13, 15, 20, 25, 30, 40, 50}},
                                         {62248, 2, 24, {23, 27, 31, 35, 43, 51, 59, 67}}}};
    for (const BitmapSet& set : sets) {
        for (UINT i = 0; i < set.sets * 8; ++i) {
            const UniqueBitmap bitmap = LoadBitmapResource(set.firstId + i);
            BITMAP header{};
            ASSERT_NE(GetObjectW(bitmap.get(), sizeof header, &header), 0) << set.firstId + i;
            EXPECT_EQ(header.bmWidth, set.edges.at(i % 8)) << set.firstId + i;
            EXPECT_EQ(header.bmHeight, header.bmWidth) << set.firstId + i;
            EXPECT_EQ(header.bmBitsPixel, set.bits) << set.firstId + i;
        }
    }
}

class DrawingTest : public WindowTest {
protected:
    HostDialog host_;
    HWND canvas_ = host_.add(L"static", L"", 0, area(0, 0, 40, 40), 1);

    /// Draws on white and gives what is on the screen.
    template <typename Drawing>
    Image drawn(Drawing draw) {
        const WindowDc dc(canvas_);
        fillRect(dc.get(), {0, 0, 40, 40}, RGB(255, 255, 255));
        draw(dc.get());
        return onScreen(canvas_);
    }
};

/// A bitmap of one pixel value: blue, green, red, alpha from the low byte on.
UniqueBitmap solidBitmap(UINT32 pixel, WORD bits) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, 8, 8, 1, bits, BI_RGB, 0, 0, 0, 0, 0};
    void* data = nullptr;
    UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &data, nullptr, 0));
    auto* byte = static_cast<BYTE*>(data);
    for (int i = 0; i < 64; ++i)
        for (int channel = 0; channel < bits / 8; ++channel)
            *byte++ = static_cast<BYTE>(pixel >> 8 * channel);
    return bitmap;
}

TEST_F(DrawingTest, ThirtyTwoBitsAreBlendedAndFewerAreCopied) {
    const Image half =
        drawn([](HDC dc) { DrawBitmap(dc, solidBitmap(0x80FF0000, 32).get(), 3, 5); });
    EXPECT_EQ(half.at(2, 5), RGB(255, 255, 255));
    const COLORREF mixed = half.at(3, 5);
    EXPECT_EQ(GetRValue(mixed), 255);
    EXPECT_NEAR(GetGValue(mixed), 127, 1);
    const Image opaque =
        drawn([](HDC dc) { DrawBitmap(dc, solidBitmap(0xFF0000, 24).get(), 3, 5); });
    EXPECT_EQ(opaque.at(10, 12), RGB(255, 0, 0));
    EXPECT_EQ(opaque.at(11, 12), RGB(255, 255, 255));
}

TEST_F(DrawingTest, GlyphsAreRecolouredOnlyInHighContrast) {
    const SystemColours black({{COLOR_WINDOW, RGB(0, 0, 0)}});
    const auto glyph = [](bool enabled) {
        return [enabled](HDC dc) {
            const UniqueBitmap bitmap = solidBitmap(0xFF0000FF, 32);
            PrepareGlyphForState(bitmap.get(), enabled);
            fillRect(dc, {0, 0, 40, 40}, RGB(0, 0, 0));
            DrawBitmap(dc, bitmap.get(), 0, 0);
        };
    };
    EXPECT_EQ(drawn(glyph(true)).at(0, 0), RGB(0, 0, 255));
    const HighContrast contrast;
    EXPECT_EQ(drawn(glyph(true)).at(0, 0), RGB(255, 255, 255));
    EXPECT_EQ(drawn(glyph(false)).at(0, 0), RGB(128, 128, 128));
}

// Fonts, globals

TEST(Fonts, AreSharedByDescription) {
    const HFONT font = GetFont(0, L"", FW_NORMAL, 0);
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(GetFont(9, L"Segoe UI", FW_NORMAL, 0), font);
    EXPECT_NE(GetFont(9, L"Segoe UI", FW_BOLD, 0), font);
    LOGFONTW both{};
    GetObjectW(GetFont(12, std::wstring(40, L'x'), FW_NORMAL, 3), sizeof both, &both);
    EXPECT_TRUE(both.lfItalic && both.lfUnderline);
    EXPECT_EQ(lstrlenW(both.lfFaceName), 31) << "a face is cut to what the system takes";
    LOGFONTW neither{};
    GetObjectW(GetFont(12, L"Arial", FW_NORMAL, 4), sizeof neither, &neither);
    EXPECT_FALSE(neither.lfItalic || neither.lfUnderline);
    EXPECT_EQ(neither.lfHeight, -MulDiv(12, QkDlgTest::screenDpi(), 72));
}

TEST(Fonts, DialogFontIsTheLibrarysUntilADescriptionSetsAnother) {
    std::array<wchar_t, 32> face{};
    int size = 0;
    loadDialogDefaults();
    const DialogDefaults ofThisProgram = std::exchange(dialogDefaults(), {});
    EXPECT_TRUE(GetDialogFont(face.data(), 32, size));
    EXPECT_STREQ(face.data(), L"Segoe UI");
    EXPECT_EQ(size, 9);
    dialogDefaults() = {L"Tahoma", 11};
    EXPECT_TRUE(GetDialogFont(face.data(), 32, size));
    EXPECT_STREQ(face.data(), L"Tahoma");
    EXPECT_EQ(size, 11);
    const HostDialog host;
    QkFlatBtn button(1);
    button.Attach(host.window());
    EXPECT_EQ(button.GetFontFace(), L"Tahoma") << "also what Attach fills in";
    EXPECT_EQ(button.GetFontSize(), 11);
    dialogDefaults() = ofThisProgram;
}

TEST(AppGlobals, UnsetModulesMeanTheProgram) {
    QkXAppGlobals globals;
    const HMODULE program = GetModuleHandleW(nullptr);
    const HMODULE other = GetModuleHandleW(L"user32.dll");
    EXPECT_EQ(globals.GetModule(HostModule::Resource), program);
    const std::wstring longPath(300, L'p');
    EXPECT_TRUE(globals.Init(program, other, longPath.c_str(), nullptr));
    EXPECT_EQ(globals.GetModule(HostModule::Resource), other);
    EXPECT_EQ(lstrlenW(globals.GetPath1()), 260);
    EXPECT_STREQ(globals.GetPath2(), L"");
    globals.Reset();
    EXPECT_EQ(globals.GetModule(HostModule::Resource), program);
}

TEST(Factory, UnknownTypesGiveAPlainButton) {
    for (const int type : {0, 13, -1, 1000}) {
        const auto control = makeControl(type, 7);
        EXPECT_NE(dynamic_cast<QkFlatBtn*>(control.get()), nullptr) << type;
        EXPECT_EQ(dynamic_cast<QkFlatBlueBtn*>(control.get()), nullptr) << type;
        EXPECT_EQ(control->GetConfiguredBkColor(), GetUIColor(UICLR_FACE)) << type;
        EXPECT_EQ(control->GetId(), 7u);
    }
}

}  // namespace

#include <array>
#include <typeinfo>
#include <utility>

#include "Exports/ControlFactory.h"
#include "QkDlg/DialogFonts.h"
#include "QkDlg/QkFlatBtn.h"
#include "QkDlg/QkXAppGlobals.h"
#include "QkUtil/Bitmaps.h"
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

TEST(BitmapResources, AreAllThereInTheirSizesAndFormats) {
    const struct {
        UINT firstId, sets;
        WORD bits;
        std::array<int, 8> edges;
    } groups[] = {{62024, 9, 32, {16, 20, 24, 32, 40, 48, 64, 80}},
                  {62096, 8, 32, {10, 13, 15, 20, 25, 30, 40, 50}},
                  {62248, 2, 24, {23, 27, 31, 35, 43, 51, 59, 67}}};
    for (const auto& [firstId, sets, bits, edges] : groups)
        for (UINT i = 0; i < sets * 8; ++i) {
            BITMAP header{};
            GetObjectW(LoadBitmapResource(firstId + i).get(), sizeof header, &header);
            EXPECT_EQ(header.bmWidth, edges.at(i % 8)) << firstId + i;
            EXPECT_EQ(header.bmHeight, header.bmWidth) << firstId + i;
            EXPECT_EQ(header.bmBitsPixel, bits) << firstId + i;
        }
}

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
    for (const int type : {0, 13, -1}) {
        const auto control = makeControl(type, 7);
        const QkCustomControl& made = *control;
        EXPECT_EQ(typeid(made), typeid(QkFlatBtn)) << type;
        EXPECT_EQ(control->GetId(), 7u);
    }
}

}  // namespace

// QkPreview as its user runs it, over a module of good, odd and broken dialogs.
#include <gmock/gmock.h>

#include <fstream>

#include "QkUtil/Handles.h"
#include "common/Picture.h"
#include "tests/support/ChildProcess.h"

namespace QkDlgTest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

Outcome preview(
    const std::wstring& arguments, const std::function<void()>& meanwhile = [] {}) {
    return runProgram(L"QkPreview.exe", arguments, meanwhile);
}

TEST(Preview, ListsTemplatesOfAllLanguages) {
    const Outcome run = preview(L"PreviewFixture.dll");
    EXPECT_THAT(run.output, AllOf(HasSubstr("  100 (0x0407) \"Anmelden\"  extended, 1 controls\n"),
                                  HasSubstr("  100 (0x0409) \"Log on\"  extended, 10 controls\n"),
                                  HasSubstr("  MAIN (0x0409) \"By name\"  classic, 1 controls\n")));
    EXPECT_EQ(run.status, 1U);
    EXPECT_EQ(preview(L"PreviewFixture.dll --language 0x0407").status, 0U);
    EXPECT_EQ(preview(L"Nothing.dll").status, 1U) << "no module at all";
    EXPECT_EQ(preview(L"--png x.png").status, 2U);
}

TEST(Preview, ChecksControlsAndTheirDescription) {
    const Outcome run = preview(L"PreviewFixture.dll --check");
    EXPECT_THAT(
        run.output,
        AllOf(
            HasSubstr("-1     Static              label\n"),
            HasSubstr("-1     Static              standard: another control of that id is flat\n"),
            HasSubstr("11     Edit                password box\n"),
            HasSubstr("12     Button              on/off switch\n"),
            HasSubstr("13     Button              standard: its description names a kind"),
            HasSubstr("14     Button              standard: its type has no flat form\n"),
            HasSubstr("15     HOSTGRID            standard: its class has no flat form\n"),
            HasSubstr("remark: PreviewFixture.dll 100 (0x0409) \"Log on\": the window class "
                      "HOSTGRID is not"),
            HasSubstr("remark: PreviewFixture.dll MAIN (0x0409) \"By name\": the dialog's window "
                      "class HOSTFRAME")));
    EXPECT_THAT(
        run.output,
        AllOf(HasSubstr("FAULT: PreviewFixture.dll 102 (0x0409) \"A\": the template is cut off in "
                        "control 1 of 2\n"),
              HasSubstr("FAULT: PreviewFixture.dll 103 (0x0409): the template is cut off before"),
              HasSubstr("FAULT: DLG_XML: control 77 of dialog 100 matches no control\n"),
              HasSubstr("FAULT: DLG_XML: dialog 999 matches no template\n"),
              HasSubstr("1 modules, 6 dialog templates, 4 shown, 2 remarks, 4 faults\n")));
    EXPECT_EQ(run.status, 1U);
}

TEST(Preview, GoesOnAfterAnAssertion) {
    const std::wstring xml = programFolder() + L"PreviewTests.xml";
    std::ofstream(std::string(xml.begin(), xml.end()))
        << "<defaults><fonts><default size='9'/></fonts></defaults>";
    const Outcome run =
        preview(L"PreviewFixture.dll PreviewFixture.dll --check --xml PreviewTests.xml");
    EXPECT_THAT(run.output, HasSubstr("FAULT: PreviewFixture.dll: the process ended with status "
                                      "999 (FATAL ERROR: assert failure in Module: src/QkXDlg"));
    EXPECT_THAT(run.output, HasSubstr("2 modules, 0 dialog templates, 0 shown, 0 remarks, 2 "));
    EXPECT_EQ(run.status, 1U);
}

TEST(Preview, PutsPlainBesideFlat) {
    const std::wstring out = programFolder() + L"PreviewTests\\new\\folder";
    const Outcome run = preview(L"PreviewFixture.dll --all PreviewTests\\new\\folder");
    EXPECT_THAT(run.output, AllOf(HasSubstr("1 contact sheets"), Not(HasSubstr("GDI objects"))));
    for (const wchar_t* name : {L"100-0407", L"100-0409", L"101-0409", L"MAIN-0409"}) {
        const auto picture =
            QkDlgTools::loadPicture(out + L"\\PreviewFixture.dll-" + name + L".png");
        const SIZE size = QkDlgTools::pictureSize(picture.get());
        ASSERT_GT(size.cx, 0) << run.output;
        const QkDlg::MemoryDc dc(CreateCompatibleDC(nullptr));
        const QkDlg::Selection selection(dc.get(), picture.get());
        EXPECT_EQ(GetPixel(dc.get(), 2, 2), GetSysColor(COLOR_3DFACE));
        EXPECT_EQ(GetPixel(dc.get(), size.cx - 3, 2), RGB(255, 255, 255));
    }
    EXPECT_TRUE(QkDlgTools::loadPicture(out + L"\\sheet-001.png"));
}

/// Presses Escape in the dialog of that caption as soon as it shows.
void pressEscape(const wchar_t* caption) {
    for (int tries = 0; tries < 400; ++tries, Sleep(50)) {
        const HWND window = FindWindowW(nullptr, caption);
        if (!IsWindowVisible(window))
            continue;
        const HWND child = GetWindow(window, GW_CHILD);
        const HWND inner = GetWindow(child, GW_CHILD);
        PostMessageW(inner ? inner : child, WM_KEYDOWN, VK_ESCAPE, 0);
        return;
    }
    ADD_FAILURE() << "no such dialog";
}

TEST(Preview, ShowsADialogOrAPageUntilItIsClosed) {
    const Outcome dialog = preview(L"PreviewFixture.dll --dialog 100 --language 0x0409",
                                   [] { pressEscape(L"Log on"); });
    EXPECT_EQ(dialog.status, 0U);
    const Outcome page =
        preview(L"PreviewFixture.dll --dialog 101 --plain", [] { pressEscape(L"A page"); });
    EXPECT_EQ(page.status, 0U);
    EXPECT_EQ(preview(L"PreviewFixture.dll --dialog 102").status, 1U);
}

}  // namespace
}  // namespace QkDlgTest

// QkPreview as its user runs it, over a module of good, odd and broken dialogs.
#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "common/Picture.h"

namespace QkDlgTest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr DWORD kPatience = 60'000;

std::wstring folder() {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring file = path;
    return file.substr(0, file.find_last_of(L'\\') + 1);
}

std::string contentsOf(const std::wstring& file) {
    std::ostringstream text;
    text << std::ifstream(std::string(file.begin(), file.end()), std::ios::binary).rdbuf();
    return text.str();
}

struct Outcome {
    DWORD status = STILL_ACTIVE;
    std::string output;
};

/// `meanwhile` is called while the program runs.
Outcome preview(const std::wstring& arguments, void (*meanwhile)() = nullptr) {
    const std::wstring log = folder() + L"PreviewTests.log";
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE file = CreateFileW(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = file;
    PROCESS_INFORMATION process{};
    std::wstring line = L"\"" + folder() + L"QkPreview.exe\" " + arguments;
    Outcome run;
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, folder().c_str(),
                       &startup, &process)) {
        if (meanwhile)
            meanwhile();
        WaitForSingleObject(process.hProcess, kPatience);
        GetExitCodeProcess(process.hProcess, &run.status);
        TerminateProcess(process.hProcess, 1);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    CloseHandle(file);
    run.output = contentsOf(log);
    return run;
}

TEST(Preview, ListsTemplatesOfAllLanguages) {
    const Outcome run = preview(L"PreviewFixture.dll");
    EXPECT_THAT(run.output, AllOf(HasSubstr("  100 (0x0407) \"Anmelden\"  extended, 1 controls\n"),
                                  HasSubstr("  100 (0x0409) \"Log on\"  extended, 10 controls\n"),
                                  HasSubstr("  MAIN (0x0409) \"By name\"  classic, 1 controls\n"),
                                  HasSubstr("FAULT: PreviewFixture.dll 102 (0x0409) \"A\": the"),
                                  HasSubstr("FAULT: PreviewFixture.dll 103 (0x0409): the")));
    EXPECT_EQ(run.status, 1U);
    EXPECT_EQ(preview(L"PreviewFixture.dll --language 0x0407").status, 0U);
    EXPECT_EQ(preview(L"PreviewTests.log").status, 1U) << "no module at all";
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
    const std::wstring xml = folder() + L"PreviewTests.xml";
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
    const std::wstring out = folder() + L"PreviewTests\\new\\folder";
    const Outcome run = preview(L"PreviewFixture.dll --all PreviewTests\\new\\folder");
    EXPECT_THAT(run.output, AllOf(HasSubstr("1 contact sheets"), Not(HasSubstr("GDI objects"))));
    for (const wchar_t* name : {L"100-0407", L"100-0409", L"101-0409", L"MAIN-0409"}) {
        const auto picture =
            QkDlgTools::loadPicture(out + L"\\PreviewFixture.dll-" + name + L".png");
        const SIZE size = QkDlgTools::pictureSize(picture.get());
        ASSERT_GT(size.cx, 0) << run.output;
        HDC dc = CreateCompatibleDC(nullptr);
        HGDIOBJ previous = SelectObject(dc, picture.get());
        EXPECT_EQ(GetPixel(dc, 2, 2), GetSysColor(COLOR_3DFACE));
        EXPECT_EQ(GetPixel(dc, size.cx - 3, 2), RGB(255, 255, 255));
        SelectObject(dc, previous);
        DeleteDC(dc);
    }
    EXPECT_TRUE(QkDlgTools::loadPicture(out + L"\\sheet-001.png"));
}

/// Presses Escape in the dialog of that caption as soon as it shows.
template <const wchar_t* caption>
void pressEscape() {
    for (int tries = 0; tries < 400; ++tries, Sleep(50)) {
        HWND window = FindWindowW(nullptr, caption);
        if (!IsWindowVisible(window))
            continue;
        HWND child = GetWindow(window, GW_CHILD);
        PostMessageW(GetWindow(child, GW_CHILD) ? GetWindow(child, GW_CHILD) : child, WM_KEYDOWN,
                     VK_ESCAPE, 0);
        return;
    }
    ADD_FAILURE() << "no such dialog";
}
constexpr wchar_t kDialog[] = L"Log on";
constexpr wchar_t kFrame[] = L"A page";

TEST(Preview, ShowsADialogOrAPageUntilItIsClosed) {
    EXPECT_EQ(
        preview(L"PreviewFixture.dll --dialog 100 --language 0x0409", pressEscape<kDialog>).status,
        0U);
    EXPECT_EQ(preview(L"PreviewFixture.dll --dialog 101 --plain", pressEscape<kFrame>).status, 0U);
    EXPECT_EQ(preview(L"PreviewFixture.dll --dialog 102").status, 1U);
}

}  // namespace
}  // namespace QkDlgTest

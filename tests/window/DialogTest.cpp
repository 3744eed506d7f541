#include <array>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

// Behind the Windows header, which they need.
#include "QkDlg/Win32.h"

#include <commdlg.h>
#include <prsht.h>

#include "Dialogs.h"
#include "Dlg/TemplateFont.h"
#include "Exports/ControlFactory.h"
#include "QkDlg/DialogFonts.h"
#include "QkDlg/DialogTemplates.h"
#include "QkDlg/QkDlg.h"
#include "QkDlg/QkFlatBtn.h"
#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxSimple.h"
#include "QkDlg/QkFlatListView.h"
#include "QkDlg/QkFlatScrollbar.h"
#include "QkDlg/QkFlatSlider.h"
#include "QkDlg/QkFlatStaticText.h"
#include "QkDlg/QkXDlg.h"
#include "support/ChildProcess.h"
#include "support/WindowTest.h"

namespace QkDlgTest {
namespace {

using namespace QkDlg;

class DialogTest : public WindowTest {
protected:
    DialogTest() { LoadLibraryW(L"msftedit.dll"); }
};

constexpr UINT kRunBody = WM_APP + 1;

/// Runs a body while the dialog is open, then ends it.
class TestDialog : public QkXDlg {
public:
    using Body = std::function<void(TestDialog&)>;

    explicit TestDialog(UINT32 id, bool flat = false) : QkXDlg(id) { m_bFlat = flat; }
    TestDialog(UINT32 id, HWND parent) : QkXDlg(id, parent, 7, true) {}

    int run(Body body) {
        m_body = std::move(body);
        return DoModal();
    }
    [[nodiscard]] HWND window() const { return m_hWnd; }
    template <typename Control>
    [[nodiscard]] Control* flat(UINT id) const {
        QkCustomControl* found = FindControl(id);
        return found && typeid(*found) == typeid(Control) ? static_cast<Control*>(found) : nullptr;
    }
    [[nodiscard]] std::size_t controlCount() const { return m_controls.size(); }

    bool OnInitDialog() override {
        EXPECT_TRUE(m_bInitialising);
        const bool result = QkXDlg::OnInitDialog();
        PostMessageW(m_hWnd, kRunBody, 0, 0);
        return result;
    }
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != kRunBody)
            return QkXDlg::OnMessage(message, wParam, lParam);
        EXPECT_FALSE(m_bInitialising);
        m_body(*this);
        if (m_hWnd)
            OnCancel();
        return 0;
    }

private:
    Body m_body;
};

// Routing

/// Writes down which handler was asked, and with what.
class RecordingDialog : public TestDialog {
public:
    using TestDialog::TestDialog;

    std::string called;
    bool answer = true;

    bool OnDestroy() override { return heard("OnDestroy"); }
    void OnMove(int x, int y) override { heard("OnMove", x, y); }
    bool OnSize(UINT type, int width, int height) override {
        return heard("OnSize", type, width, height);
    }
    bool OnPaint() override { return heard("OnPaint"); }
    bool OnClose() override { return heard("OnClose"); }
    bool OnColorsChanged() override { return heard("OnColorsChanged"); }
    bool OnGetMinMaxInfo(LPARAM info) override { return heard("OnGetMinMaxInfo", info); }
    bool OnDrawItem(UINT id, LPARAM info) override { return heard("OnDrawItem", id, info); }
    bool OnMeasureItem(UINT id, LPARAM info) override { return heard("OnMeasureItem", id, info); }
    bool OnNotify(UINT id, LPARAM, LRESULT* result) override {
        *result = 77;
        return heard("OnNotify", id);
    }
    bool OnHelp() override { return heard("OnHelp"); }
    bool OnContextMenu(WPARAM w, LPARAM l) override { return heard("OnContextMenu", w, l); }
    bool OnOK() override { return heard("OnOK"); }
    bool OnCommandUnhandled(WPARAM w, LPARAM l) override {
        return heard("OnCommandUnhandled", w, l);
    }
    bool OnSysCommand(WPARAM w, LPARAM l) override { return heard("OnSysCommand", w, l); }
    bool OnTimer(UINT id) override { return heard("OnTimer", id); }
    void OnUpdateUIState(UINT flags, UINT action) override {
        heard("OnUpdateUIState", flags, action);
    }
    INT_PTR OnCtlColorDlg() override { return heard("OnCtlColorDlg") ? 88 : 0; }
    INT_PTR OnCtlColorBtn(HWND control, HDC dc) override {
        return colour("OnCtlColorBtn", control, dc);
    }
    INT_PTR OnCtlColorStatic(HWND control, HDC dc) override {
        return colour("OnCtlColorStatic", control, dc);
    }
    bool OnSizing(UINT edge, LPARAM rect) override { return heard("OnSizing", edge, rect); }
    void OnMoving(WPARAM edge, LPARAM rect) override { heard("OnMoving", edge, rect); }
    INT_PTR OnMessage(UINT message, WPARAM w, LPARAM l) override {
        if (message != WM_SETCURSOR)
            return TestDialog::OnMessage(message, w, l);
        return heard("OnMessage", message, w, l) ? 99 : 0;
    }

private:
    template <typename... Arguments>
    bool heard(const char* name, Arguments... arguments) {
        std::ostringstream text;
        text << name;
        ((text << ' ' << arguments), ...);
        called = text.str();
        return answer;
    }
    INT_PTR colour(const char* name, HWND control, HDC dc) {
        heard(name, reinterpret_cast<LPARAM>(control), reinterpret_cast<WPARAM>(dc));
        return 66;
    }
};

TEST_F(DialogTest, EveryMessageReachesItsHandlerWithItsArguments) {
    struct Row {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        const char* called;
        INT_PTR result = 1;
    };
    const NMHDR plain{nullptr, 0, static_cast<UINT>(NM_CLICK)};
    const NMHDR sheetHelp{nullptr, 0, static_cast<UINT>(PSN_HELP)};
    const NMHDR dialogHelp{nullptr, 0, static_cast<UINT>(CDN_HELP)};
    const std::vector<Row> rows{
        {WM_MOVE, 0, MAKELPARAM(-5, 7), "OnMove -5 7", 0},
        {WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(300, 40000), "OnSize 2 300 40000"},
        {WM_PAINT, 0, 0, "OnPaint"},
        {WM_CLOSE, 0, 0, "OnClose"},
        {WM_SYSCOLORCHANGE, 0, 0, "OnColorsChanged"},
        {WM_THEMECHANGED, 0, 0, "OnColorsChanged"},
        {WM_GETMINMAXINFO, 0, 5, "OnGetMinMaxInfo 5"},
        {WM_DRAWITEM, 12, 5, "OnDrawItem 12 5"},
        {WM_MEASUREITEM, 12, 5, "OnMeasureItem 12 5"},
        {WM_NOTIFY, 12, reinterpret_cast<LPARAM>(&plain), "OnNotify 12", 77},
        {WM_NOTIFY, 12, reinterpret_cast<LPARAM>(&sheetHelp), "OnHelp"},
        {WM_NOTIFY, 12, reinterpret_cast<LPARAM>(&dialogHelp), "OnHelp"},
        {WM_HELP, 0, 0, "OnHelp"},
        {WM_CONTEXTMENU, 3, 4, "OnContextMenu 3 4"},
        {WM_COMMAND, IDOK, 9, "OnOK"},
        {WM_COMMAND, IDHELP, 0, "OnHelp"},
        {WM_COMMAND, MAKEWPARAM(IDOK, BN_DOUBLECLICKED), 9, "OnCommandUnhandled 327681 9"},
        {WM_COMMAND, MAKEWPARAM(IDOK, 1), 0, "OnCommandUnhandled 65537 0"},
        {WM_SYSCOMMAND, SC_CLOSE, 4, "OnSysCommand 61536 4"},
        {WM_TIMER, 0x10002, 0, "OnTimer 2"},
        {WM_UPDATEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEFOCUS), 0, "OnUpdateUIState 1 1", 0},
        {WM_CTLCOLORDLG, 1, 2, "OnCtlColorDlg", 88},
        {WM_CTLCOLORBTN, 1, 2, "OnCtlColorBtn 2 1", 66},
        {WM_CTLCOLORSTATIC, 1, 2, "OnCtlColorStatic 2 1", 66},
        {WM_SIZING, WMSZ_LEFT, 4, "OnSizing 1 4"},
        {WM_MOVING, 3, 4, "OnMoving 3 4", 0},
        {WM_SETCURSOR, 3, 4, "OnMessage 32 3 4", 99},
        {WM_DESTROY, 0, 0, "OnDestroy"},
    };
    RecordingDialog dialog(IDD_PLAIN);
    dialog.run([&](TestDialog&) {
        const DLGPROC procedure = QkXDlg::GetDialogProc();
        for (const Row& row : rows) {
            dialog.answer = true;
            dialog.called.clear();
            EXPECT_EQ(procedure(dialog.window(), row.message, row.wParam, row.lParam), row.result)
                << row.called;
            EXPECT_EQ(dialog.called, row.called);
            dialog.answer = false;
            const INT_PTR refused = procedure(dialog.window(), row.message, row.wParam, row.lParam);
            EXPECT_EQ(refused, row.result == 66 ? 66 : 0) << row.called;
        }
        dialog.answer = true;
        EXPECT_EQ(SendMessageW(dialog.window(), WM_NOTIFY, 12, reinterpret_cast<LPARAM>(&plain)),
                  77)
            << "the sender gets the result";
        EXPECT_EQ(procedure(GetDesktopWindow(), WM_CLOSE, 0, 0), 0) << "a window without an object";
    });
}

// Running

TEST_F(DialogTest, OkCancelAndEscapeEndTheDialogAndItRunsAgain) {
    TestDialog dialog(IDD_PLAIN);
    EXPECT_EQ(dialog.run([](TestDialog& open) {
        EXPECT_EQ(open.GetItemText(IDOK), L"OK");
        open.SetItemText(IDC_LABEL, L"New");
        EXPECT_EQ(textOf(open.GetItem(IDC_LABEL, true)), L"New");
        open.EnableItem(IDC_LABEL, false);
        EXPECT_FALSE(IsWindowEnabled(open.GetItem(IDC_LABEL, true)));
        EXPECT_EQ(open.GetItem(4711, false), nullptr);
        SendMessageW(open.GetItem(IDOK, true), BM_CLICK, 0, 0);
        EXPECT_EQ(open.window(), nullptr);
    }),
              IDOK);
    EXPECT_EQ(dialog.run([](TestDialog& open) {
        PostMessageW(open.window(), WM_KEYDOWN, VK_ESCAPE, 0);
        pump(50);
    }),
              IDCANCEL);
    EXPECT_EQ(dialog.window(), nullptr);
}

TEST_F(DialogTest, HiddenParentOwnsNothingAndAVisibleOneIsTheMiddle) {
    HostDialog host({.x = 1000, .y = 600});
    TestDialog owned(IDD_PLAIN, host.window());
    owned.run([&](TestDialog& open) {
        EXPECT_EQ(GetWindow(open.window(), GW_OWNER), host.window());
        RECT over{};
        RECT at{};
        GetWindowRect(host.window(), &over);
        GetWindowRect(open.window(), &at);
        EXPECT_NEAR(at.left + at.right, over.left + over.right, 2);
        EXPECT_NEAR(at.top + at.bottom, over.top + over.bottom, 2);
    });
    ShowWindow(host.window(), SW_HIDE);
    TestDialog alone(IDD_PLAIN, host.window());
    alone.run([](TestDialog& open) { EXPECT_EQ(GetWindow(open.window(), GW_OWNER), nullptr); });
}

TEST_F(DialogTest, EveryTemplateRunsInTheDialogFont) {
    for (const UINT32 id : std::initializer_list<UINT32>{IDD_PLAIN, IDD_EXTENDED}) {
        TestDialog dialog(id);
        dialog.run([](TestDialog& open) {
            LOGFONTW font{};
            GetObjectW(reinterpret_cast<HFONT>(SendMessageW(open.window(), WM_GETFONT, 0, 0)),
                       sizeof font, &font);
            EXPECT_STREQ(&font.lfFaceName[0], L"Tahoma");
            EXPECT_EQ(font.lfHeight, -MulDiv(11, screenDpi(), 72));
            EXPECT_EQ(open.GetItemText(IDC_LABEL), L"Text");
        });
    }
}

TEST_F(DialogTest, TemplateGrowsWhereTheFaceNeedsMoreThanItsSpareBytes) {
    const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(IDD_PLAIN), RT_DIALOG);
    GlobalBlock block =
        CopyResourceToGlobal(LoadResource(nullptr, found), SizeofResource(nullptr, found));
    const SIZE_T size = GlobalSize(block.get());
    const std::wstring face(LF_FACESIZE + 8, L'x');
    block = SetTemplateFont(std::move(block), face.c_str(), 9, WS_THICKFRAME);
    ASSERT_TRUE(block);
    EXPECT_GT(GlobalSize(block.get()), size);
    EXPECT_TRUE(static_cast<DLGTEMPLATE*>(block.get())->style & WS_THICKFRAME);
    HWND window = CreateDialogIndirectParamW(nullptr, static_cast<DLGTEMPLATE*>(block.get()),
                                             nullptr, QkXDlg::GetDialogProc(), 0);
    ASSERT_TRUE(window);
    EXPECT_EQ(textOf(GetDlgItem(window, IDC_LABEL)), L"Text");
    DestroyWindow(window);
}

TEST_F(DialogTest, ADialogOfTheHostsOwnMakingEndsInAnyOrder) {
    const auto make = [](TestDialog& dialog) {
        return CreateDialogParamW(nullptr, MAKEINTRESOURCEW(IDD_DEFAULT), nullptr,
                                  QkXDlg::GetDialogProc(), reinterpret_cast<LPARAM>(&dialog));
    };
    TestDialog destroyed(IDD_DEFAULT, true);
    EXPECT_TRUE(DestroyWindow(make(destroyed)));
    EXPECT_EQ(destroyed.window(), nullptr);
    auto early = std::make_unique<TestDialog>(IDD_DEFAULT, true);
    const HWND orphan = make(*early);
    early.reset();
    ShowWindow(orphan, SW_SHOW);
    pump(20);
    EXPECT_TRUE(DestroyWindow(orphan));
}

// Flat

TEST_F(DialogTest, EveryRowOfTheConversionMakesItsControl) {
    constexpr std::pair<UINT, int> made[] = {{IDC_LABEL, QK_STATIC_TEXT},
                                             {IDC_EDIT, QK_EDIT},
                                             {IDC_PASSWORD, QK_PASSWORD},
                                             {IDC_RICH, QK_EDIT},
                                             {IDC_TRACKBAR, QK_PROGRESS_BAR},
                                             {IDC_PUSH, QK_PUSH_BUTTON},
                                             {IDC_SETTINGS, QK_SETTINGS_BUTTON},
                                             {IDC_SPLIT, QK_SPLIT_BUTTON},
                                             {IDC_DROP, QK_DROP_BUTTON},
                                             {IDC_RADIO, QK_RADIO_BUTTON},
                                             {IDC_CHECK, QK_CHECK_BOX},
                                             {IDC_TOGGLE, QK_TOGGLE},
                                             {IDC_COMBO_LIST, QK_COMBO_DROPDOWN_LIST}};
    allowGdiGrowth(2);
    TestDialog dialog(IDD_FLAT, true);
    // Twice, with the mouse left somewhere in between: nothing of the first run may be left.
    for (int run = 0; run < 2; ++run) {
        dialog.run([&](TestDialog& open) {
            for (const auto& [id, type] : made) {
                const QkCustomControl* const found = open.FindControl(id);
                const auto owned = makeControl(type, id);
                const QkCustomControl& same = *owned;
                EXPECT_TRUE(found && typeid(*found) == typeid(same)) << id;
            }
            auto* described = open.flat<QkFlatStaticText>(IDC_DESCRIBED);
            ASSERT_TRUE(described);
            EXPECT_EQ(described->GetConfiguredTextColor(), kAccent);
            EXPECT_EQ(described->GetFontFace(), L"Tahoma");
            std::array<wchar_t, 40> cue{};
            // Version 5 has no cues.
            if (SendMessageW(open.GetItem(IDC_EDIT, true), EM_GETCUEBANNER,
                             reinterpret_cast<WPARAM>(cue.data()), cue.size())) {
                EXPECT_STREQ(cue.data(), L"Ünïcode cue & more");
            }
            EXPECT_FALSE(open.flat<QkFlatScrollbar>(IDC_HSCROLL)->IsVertical());
            EXPECT_TRUE(open.flat<QkFlatScrollbar>(IDC_VSCROLL)->IsVertical());
            EXPECT_FALSE(open.flat<QkFlatSlider>(IDC_HSLIDER)->IsVertical());
            EXPECT_TRUE(open.flat<QkFlatSlider>(IDC_VSLIDER)->IsVertical());
            EXPECT_TRUE(open.flat<QkFlatListView>(IDC_LIST));
            EXPECT_EQ(open.flat<QkFlatBtn>(IDC_BLUE)->GetConfiguredBkColor(), kAccent);
            EXPECT_FALSE(open.FindControl(IDC_UNKNOWN));
            EXPECT_FALSE(open.FindControl(IDC_THREE_STATE));
            EXPECT_TRUE(open.flat<QkFlatComboBoxSimple>(IDC_COMBO_SIMPLE));
            EXPECT_TRUE(open.flat<QkFlatComboBoxDropdown>(IDC_COMBO_EDIT));

            auto* label = open.flat<QkFlatStaticText>(static_cast<UINT>(-1));
            ASSERT_TRUE(label);
            EXPECT_EQ(textOf(label->GetWindow()), L"First of many")
                << "not the group box of that id";
            EXPECT_FALSE(open.FindControl(0));
            const std::size_t controls = open.controlCount();
            QkXDlg::ConvertToFlat(open);
            EXPECT_EQ(open.controlCount(), controls);
            drain();
        });
    }
}

TEST_F(DialogTest, DefaultAndAccentButtonAreBroughtTogether) {
    TestDialog blue(IDD_DEFAULT, true);
    blue.run([](TestDialog& open) {
        EXPECT_EQ(LOWORD(SendMessageW(open.window(), DM_GETDEFID, 0, 0)), IDC_BLUE);
        EXPECT_EQ(
            SendMessageW(open.GetItem(IDC_BLUE, true), WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON,
            DLGC_DEFPUSHBUTTON);
    });
    TestDialog both(IDD_FLAT, true);
    both.run([](TestDialog& open) {
        EXPECT_NE(open.flat<QkFlatBtn>(IDOK)->GetConfiguredBkColor(), kAccent)
            << "there is a blue one";
        EXPECT_EQ(LOWORD(SendMessageW(open.window(), DM_GETDEFID, 0, 0)), IDOK);
    });
}

TEST_F(DialogTest, ColoursComeFromTheControlThatAsks) {
    TestDialog dialog(IDD_FLAT, true);
    dialog.run([](TestDialog& open) {
        const auto ask = [&](UINT message, HWND control) {
            const MemoryDc dc(CreateCompatibleDC(nullptr));
            SetTextColor(dc.get(), RGB(1, 2, 3));
            const INT_PTR brush =
                QkXDlg::GetDialogProc()(open.window(), message, reinterpret_cast<WPARAM>(dc.get()),
                                        reinterpret_cast<LPARAM>(control));
            return std::pair(brush, GetTextColor(dc.get()));
        };
        const auto nullPen = reinterpret_cast<INT_PTR>(GetStockObject(NULL_PEN));
        const HWND flat = FindWindowExW(open.window(), nullptr, L"Static", L"First of many");
        const HWND plain = FindWindowExW(open.window(), nullptr, L"Static", L"Second of many");
        for (const HWND label : {flat, plain})
            EXPECT_EQ(ask(WM_CTLCOLORSTATIC, label),
                      (std::pair(nullPen, GetSysColor(COLOR_WINDOWTEXT))));
        const HWND readOnly = CreateWindowExW(0, L"Edit", L"", WS_CHILD | ES_READONLY, 0, 0, 9, 9,
                                              open.window(), nullptr, nullptr, nullptr);
        EXPECT_EQ(ask(WM_CTLCOLORSTATIC, readOnly).first, 0) << "an edit needs a ground";
        EXPECT_EQ(ask(WM_CTLCOLORBTN, open.GetItem(IDC_UNKNOWN, true)).first, 0);
        const auto white = reinterpret_cast<INT_PTR>(GetStockObject(WHITE_BRUSH));
        EXPECT_EQ(ask(WM_CTLCOLORDLG, open.window()).first, white);
        const HighContrast contrast;
        EXPECT_EQ(ask(WM_CTLCOLORDLG, open.window()).first, 0);
        EXPECT_EQ(ask(WM_CTLCOLORSTATIC, flat).first, 0);
    });
}

const BrokenContract kContracts[] = {
    {"src/Dlg", 151, [] { TestDialog(4711).run([](TestDialog&) {}); }},
    {"src/QkXDlg", 88,
     [] {
         TestDialog(IDD_PLAIN).run(
             [](TestDialog& open) { static_cast<void>(open.GetItem(4711, true)); });
     }},
};

}  // namespace
}  // namespace QkDlgTest

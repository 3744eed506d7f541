// A host in C++ that links the classes and leaves its dialogs to QkXDlg. Ends with 0 when somebody
// signed in, with 1 when they did not, with 2 when they signed in and want to stay so.
#include <QkDlg/QkXAppGlobals.h>
#include <QkDlg/QkXDlg.h>

#include <string>

#include "Ids.h"

namespace {

class SignIn : public QkDlg::QkXDlg {
public:
    explicit SignIn(HWND owner) : QkXDlg(IDD_SIGN_IN, owner, 0, true) {
        // DLG_XML (Dialogs.xml) says the rest: fonts, cues, which button is the blue one.
        m_bFlat = true;
    }

    bool OnInitDialog() override {
        QkXDlg::OnInitDialog();
        EnableItem(IDOK, false);
        return true;  // the system gives the focus to the first control
    }

    bool OnCommand(WPARAM wParam, LPARAM lParam) override {
        if (LOWORD(wParam) != IDC_NAME || HIWORD(wParam) != EN_CHANGE)
            return QkXDlg::OnCommand(wParam, lParam);
        EnableItem(IDOK, !GetItemText(IDC_NAME).empty());
        return true;
    }

    bool OnOK() override {
        // Before the base ends the dialog: afterwards there is no window to ask.
        m_name = GetItemText(IDC_NAME);
        m_stays = IsDlgButtonChecked(m_hWnd, IDC_STAY) == BST_CHECKED;
        return QkXDlg::OnOK();
    }

    [[nodiscard]] bool IsSignedIn() const { return !m_name.empty(); }
    [[nodiscard]] bool Stays() const { return m_stays; }

private:
    std::wstring m_name;
    bool m_stays = false;
};

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPSTR /*commandLine*/,
                   int /*showCommand*/) {
    // Where the dialog templates and DLG_XML are; the paths are for the host's own use.
    QkDlg::AppGlobals().Init(instance, L"", L"");

    SignIn dialog(nullptr);
    if (dialog.DoModal() != IDOK || !dialog.IsSignedIn())
        return 1;
    return dialog.Stays() ? 2 : 0;
}

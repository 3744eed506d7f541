// A page that the class library runs as a whole, and modal dialogs of the same kind.

#include "QkDlg/QkXDlg.h"

#include <array>
#include <memory>

#include "Ids.h"
#include "Page.h"

namespace Gallery {

namespace {

using Texts = std::initializer_list<const wchar_t*>;

constexpr int kFirstYear = 1990;

class FlatDialog : public QkDlg::QkXDlg {
public:
    FlatDialog(int templateId, HWND parent, bool flat)
        : QkXDlg(static_cast<UINT32>(templateId), parent, 0, true) {
        m_bFlat = flat;
    }

protected:
    void FillCombo(int id, Texts texts) const {
        for (const wchar_t* text : texts)
            SendMessageW(GetItem(static_cast<UINT>(id), true), CB_ADDSTRING, 0,
                         reinterpret_cast<LPARAM>(text));
        SendDlgItemMessageW(m_hWnd, id, CB_SETCURSEL, 0, 0);
    }
};

class OptionsDialog : public FlatDialog {
public:
    OptionsDialog(HWND parent, bool flat) : FlatDialog(IDD_OPTIONS, parent, flat) {}

    bool OnInitDialog() override {
        FlatDialog::OnInitDialog();
        FillCombo(IDC_OPTIONS_LANGUAGE, {L"English", L"Deutsch", L"Fran\u00E7ais"});
        CheckDlgButton(m_hWnd, IDC_OPTIONS_ASK, BST_CHECKED);
        SendDlgItemMessageW(m_hWnd, IDC_OPTIONS_SIZE, TBM_SETPOS, TRUE, 40);
        return true;
    }
};

class DialogPage : public FlatDialog {
public:
    explicit DialogPage(bool flat) : FlatDialog(IDD_PAGE_DIALOG, nullptr, flat) {
        m_bCentreOnParent = false;
    }

    bool OnInitDialog() override {
        FlatDialog::OnInitDialog();
        SetItemText(IDC_DIALOG_PASSWORD, L"secret");
        FillCombo(IDC_DIALOG_SEASON, {L"Spring", L"Summer", L"Autumn", L"Winter"});
        FillCombo(IDC_DIALOG_CITY, {L"Lisbon", L"Oslo", L"Vienna"});
        CheckDlgButton(m_hWnd, IDC_DIALOG_NEWS, BST_CHECKED);
        CheckDlgButton(m_hWnd, IDC_DIALOG_WEEKLY, BST_CHECKED);
        CheckDlgButton(m_hWnd, IDC_DIALOG_WIRELESS, BST_CHECKED);
        for (const int id : {IDC_DIALOG_TRACKBAR, IDC_DIALOG_VOLUME})
            SendDlgItemMessageW(m_hWnd, id, TBM_SETPOS, TRUE, 60);
        FillFiles();
        // The focus stays in the navigation.
        return false;
    }

    bool OnCommand(WPARAM wParam, LPARAM lParam) override {
        switch (LOWORD(wParam)) {
            case IDC_DIALOG_SIGN_IN:
                FlatDialog(IDD_SIGN_IN, m_hWnd, m_bFlat).DoModal();
                return true;
            case IDC_DIALOG_OPTIONS: OptionsDialog(m_hWnd, m_bFlat).DoModal(); return true;
            default: return FlatDialog::OnCommand(wParam, lParam);
        }
    }

private:
    void FillFiles() const {
        HWND list = GetItem(IDC_DIALOG_FILES, true);
        ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
        RECT client{};
        GetClientRect(list, &client);
        int column = 0;
        for (const wchar_t* title : {L"Name", L"Changed"}) {
            LVCOLUMNW header{};
            header.mask = LVCF_TEXT | LVCF_WIDTH;
            header.pszText = const_cast<wchar_t*>(title);
            header.cx = client.right / 3;
            SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column++),
                         reinterpret_cast<LPARAM>(&header));
        }
        int row = 0;
        for (const wchar_t* name :
             {L"Letters", L"Maps", L"Photographs", L"Recordings", L"Tables"}) {
            std::wstring year = std::to_wstring(kFirstYear + row);
            SetCell(list, LVM_INSERTITEMW, row, 0, const_cast<wchar_t*>(name));
            SetCell(list, LVM_SETITEMW, row++, 1, year.data());
        }
        ListView_SetCheckState(list, 1, TRUE);
    }

    static void SetCell(HWND list, UINT message, int row, int column, wchar_t* text) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.iSubItem = column;
        item.pszText = text;
        SendMessageW(list, message, 0, reinterpret_cast<LPARAM>(&item));
    }
};

}  // namespace

std::unique_ptr<QkDlg::QkXDlg> makeDialogPage(bool flat) {
    return std::make_unique<DialogPage>(flat);
}

}  // namespace Gallery

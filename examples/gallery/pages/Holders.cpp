#include <memory>
#include <string>
#include <vector>

#include "Ids.h"
#include "Page.h"
#include "QkDlg/ScrollbarHolder.h"

namespace Gallery {

namespace {

constexpr int kRows = 60;

constexpr int kEdits[] = {IDC_HOLDER_EDIT, IDC_HOLDER_WRAPPED, IDC_HOLDER_EDIT_DISABLED};
constexpr int kLists[] = {IDC_HOLDER_LIST, IDC_HOLDER_LIST_DISABLED, IDC_HOLDER_LEFT};

using Holders = std::vector<std::unique_ptr<QkDlg::ScrollbarHolder>>;

/// Holders have no type number: a host that links the classes makes them.
Holders& holders() {
    static Holders all;
    return all;
}

void dress(HWND page, int id) {
    holders().push_back(std::make_unique<QkDlg::ScrollbarHolder>(GetSystemMetrics(SM_CXVSCROLL),
                                                                 GetSystemMetrics(SM_CYHSCROLL)));
    holders().back()->Attach(GetDlgItem(page, id));
}

std::wstring row(int number) {
    return L"Row " + std::to_wstring(number) + L", somewhat longer than its window is wide";
}

void fillView(HWND view) {
    const wchar_t* const titles[] = {L"Name", L"Size", L"Changed"};
    for (int i = 0; i < 3; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.cx = GetSystemMetrics(SM_CXVSCROLL) * 6;
        column.pszText = const_cast<wchar_t*>(titles[i]);
        SendMessageW(view, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&column));
    }
    for (int i = 0; i < kRows; ++i) {
        std::wstring text = L"Item " + std::to_wstring(i + 1);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = i;
        item.pszText = text.data();
        SendMessageW(view, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

void setUp(HWND page) {
    std::wstring text;
    for (int i = 1; i <= kRows; ++i)
        text += row(i) + L"\r\n";
    for (const int id : kEdits)
        SetDlgItemTextW(page, id, text.c_str());
    for (const int id : kLists) {
        for (int i = 1; i <= kRows; ++i)
            SendDlgItemMessageW(page, id, LB_ADDSTRING, 0,
                                reinterpret_cast<LPARAM>(row(i).c_str()));
    }
    SendDlgItemMessageW(page, IDC_HOLDER_LIST, LB_SETHORIZONTALEXTENT, 600, 0);
    SendDlgItemMessageW(page, IDC_HOLDER_LIST_SHORT, LB_ADDSTRING, 0,
                        reinterpret_cast<LPARAM>(L"Nothing to scroll"));
    fillView(GetDlgItem(page, IDC_HOLDER_VIEW));
    SendDlgItemMessageW(page, IDC_HOLDER_EDIT, WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 12), 0);
}

}  // namespace

std::span<const FlatControl> holderControls() {
    return {};
}

INT_PTR holderHook(HWND page, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: setUp(page); return TRUE;
        case kPageReady:
            for (int id = IDC_HOLDER_EDIT; wParam && id <= IDC_HOLDER_LEFT; ++id)
                dress(page, id);
            return TRUE;
        case WM_NCDESTROY: holders().clear(); return FALSE;
        default: return FALSE;
    }
}

}  // namespace Gallery

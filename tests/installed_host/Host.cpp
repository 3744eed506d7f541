// Runs a dialog of its own, standard and flat, prints what it finds, and ends with 0 if the
// handlers of the derived class are reached and the controls look as they should.
#include <QkDlg/QkFlatToggleBtn.h>
#include <QkDlg/QkXDlg.h>

#include <cstdio>
#include <memory>
#include <string>
#include <type_traits>

namespace {

using namespace QkDlg;

constexpr UINT kDialog = 120;
constexpr int kEdit = 1001;
constexpr int kSwitch = 1003;

int failures = 0;

void check(bool good, const char* what) {
    std::printf("%s %s\n", good ? "ok    " : "FAILED", what);
    failures += good ? 0 : 1;
}

COLORREF pixel(HWND window, int x, int y) {
    const auto release = [window](HDC dc) { ReleaseDC(window, dc); };
    const std::unique_ptr<std::remove_pointer_t<HDC>, decltype(release)> dc(GetDC(window), release);
    return GetPixel(dc.get(), x, y);
}

class HostDialog : public QkXDlg {
public:
    explicit HostDialog(bool flat) : QkXDlg(kDialog) { m_bFlat = flat; }

    bool OnInitDialog() override {
        const bool result = QkXDlg::OnInitDialog();
        // When the dialog has been painted.
        SetTimer(m_hWnd, 1, 300, nullptr);
        return result;
    }
    bool OnTimer(UINT id) override {
        KillTimer(m_hWnd, id);
        lookAround();
        SetItemText(kEdit, L"abc");
        return PostMessageW(GetItem(IDOK, true), BM_CLICK, 0, 0) != FALSE;
    }
    bool OnCommand(WPARAM w, LPARAM l) override {
        m_edited = m_edited || w == MAKEWPARAM(kEdit, EN_CHANGE);
        return QkXDlg::OnCommand(w, l);
    }
    bool OnOK() override {
        check(m_edited && GetItemText(kEdit) == L"abc", "the handlers");
        return QkXDlg::OnOK();
    }

private:
    void lookAround() {
        check((pixel(GetItem(IDOK, true), 5, 5) == GetUIColor(UICLR_ACCENT)) == m_bFlat, "the OK");
        check((pixel(m_hWnd, 2, 2) == RGB(255, 255, 255)) == m_bFlat, "the ground");
        check((dynamic_cast<QkFlatToggleBtn*>(FindControl(kSwitch)) != nullptr) == m_bFlat,
              "the switch");
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(m_hWnd, WM_GETFONT, 0, 0)), sizeof font,
                   &font);
        check(std::wstring(font.lfFaceName) == L"Tahoma", "the described font");
    }

    bool m_edited = false;
};

}  // namespace

int main() {
    check(HostDialog(false).DoModal() == IDOK, "a standard dialog");
    check(HostDialog(true).DoModal() == IDOK, "a flat dialog");
    return failures ? 1 : 0;
}

#include "QkDlg/QkFlatCheckbox.h"

#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Bitmaps.h"
#include "QkUtil/Canvas.h"

namespace QkDlg {

namespace {

constexpr UINT32 kChecked = 62024;
constexpr UINT32 kCheckedDisabled = 62032;
constexpr UINT32 kUncheckedDisabled = 62040;
constexpr UINT32 kUnchecked = 62048;

constexpr int kMarkShare = 4;

}  // namespace

QkFlatCheckbox::QkFlatCheckbox(UINT id)
    : QkFlatBmpToggleBase(id,
                          {ImageIdList::fromFirstId(kChecked), ImageIdList::fromFirstId(kUnchecked),
                           ImageIdList::fromFirstId(kCheckedDisabled),
                           ImageIdList::fromFirstId(kUncheckedDisabled)}) {
    m_nLayout = DT_LEFT;
    RegisterToggle();
}

void QkFlatCheckbox::DrawImage(HDC hdc, HBITMAP bitmap, int x, int y) {
    if (!IsHighContrast()) {
        QkFlatBmpToggleBase::DrawImage(hdc, bitmap, x, y);
        return;
    }
    const Size size = bitmapSize(bitmap);
    const COLORREF ink = HighContrastInk();
    frameRect(hdc, {x, y, x + size.width, y + size.height}, ink, HighContrastLine(size.width));
    if (!IsChecked())
        return;
    // The width serves for both axes, also of a picture that is not square.
    const int mark = size.width / kMarkShare;
    const int offset = (size.width - mark) / 2;
    fillRect(hdc, {x + offset, y + offset, x + offset + mark, y + offset + mark}, ink);
}

std::unique_ptr<QkFlatCheckbox> QkFlatCheckbox::CreateInParent(HWND parent, HINSTANCE instance,
                                                               UINT id, const Place& place,
                                                               const std::wstring& caption) {
    const HWND window =
        CreateWindowExW(WS_EX_NOPARENTNOTIFY, L"button", caption.c_str(),
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX, place.x, place.y,
                        place.width, place.height, parent,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), instance, nullptr);
    if (!window)
        return nullptr;
    auto checkbox = std::make_unique<QkFlatCheckbox>(id);
    checkbox->Attach(window);
    // One procedure for each check box on the same parent, told apart by the check box's window.
    installSubclass(parent, ParentProc, *checkbox, reinterpret_cast<UINT_PTR>(window));
    return checkbox;
}

LRESULT CALLBACK QkFlatCheckbox::ParentProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    if (id == WM_NCDESTROY)
        RemoveWindowSubclass(hwnd, ParentProc, subclassId);
    if (id != WM_NOTIFY)
        return message.passOn();

    const auto* const draw = reinterpret_cast<const NMCUSTOMDRAW*>(lParam);
    auto* const checkbox =
        livingControl<QkFlatCheckbox>(reinterpret_cast<HWND>(subclassId), referenceData);
    if (!checkbox || draw->hdr.code != NM_CUSTOMDRAW || draw->hdr.hwndFrom != checkbox->m_hWnd ||
        draw->dwDrawStage != CDDS_PREERASE)
        return message.passOn();
    checkbox->Paint(draw->hdc);
    return CDRF_SKIPDEFAULT;
}

}  // namespace QkDlg

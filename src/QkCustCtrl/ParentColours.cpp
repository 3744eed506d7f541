#include "QkCustCtrl/ParentColours.h"

#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Module.h"

namespace QkDlg {

namespace {

/// Window property: the control object that colours the window.
constexpr wchar_t kColouredBy[] = L"QK_COLOURED_BY";

bool asksColour(UINT message) {
    return message == WM_CTLCOLORSTATIC || message == WM_CTLCOLOREDIT ||
           message == WM_CTLCOLORLISTBOX || message == WM_CTLCOLORBTN;
}

/// Whether the answer is the system's. A dialog procedure that knows nothing of the message and
/// one that returns the very same brush cannot be told apart, except by the text colour it sets.
bool leftToSystem(UINT message, HDC dc, LRESULT answer) {
    const bool isField = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
    const HBRUSH brush = GetSysColorBrush(isField ? COLOR_WINDOW : COLOR_BTNFACE);
    return reinterpret_cast<HBRUSH>(answer) == brush &&
           GetTextColor(dc) == GetSysColor(COLOR_WINDOWTEXT);
}

LRESULT answerColour(const Message& message) {
    const LRESULT parents = message.passOn();
    const auto child = reinterpret_cast<HWND>(message.lParam);
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    const auto reference = reinterpret_cast<DWORD_PTR>(GetPropW(child, kColouredBy));
    auto* const control = livingControl<QkCustomControl>(child, reference);
    if (!control)
        return parents;

    HBRUSH brush = nullptr;
    if (leftToSystem(message.id, dc, parents))
        brush = control->OnCtlColor(dc, child);
    if (!brush)
        brush = reinterpret_cast<HBRUSH>(parents);
    // The pen that stands for "no ground" fills nothing on Windows; Wine fills with whatever brush
    // the DC has. The hollow brush means the same to both.
    if (brush == GetStockObject(NULL_PEN))
        brush = static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
    return reinterpret_cast<LRESULT>(brush);
}

LRESULT CALLBACK parentProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam, UINT_PTR subclassId,
                            DWORD_PTR) {
    const Message message{hwnd, id, wParam, lParam};
    if (id == WM_NCDESTROY)
        RemoveWindowSubclass(hwnd, parentProc, subclassId);
    return asksColour(id) ? answerColour(message) : message.passOn();
}

}  // namespace

void answerColoursForParent(QkCustomControl& control) {
    const HWND hwnd = control.GetWindow();
    const HWND parent = GetParent(hwnd);
    if (!parent)
        return;
    pinOwnModule();
    SetPropW(hwnd, kColouredBy, &control);
    SetWindowSubclass(parent, parentProc, kSubclassId, 0);
}

}  // namespace QkDlg

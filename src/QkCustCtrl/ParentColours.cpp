#include "QkCustCtrl/ParentColours.h"

#include <unordered_map>
#include <unordered_set>

#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Module.h"

namespace QkDlg {

namespace {

/// Which control colours which window, and the parents that have the procedure below. Kept here and
/// not as window properties: the question comes with every painting of a label or an edit.
struct Coloured {
    std::unordered_map<HWND, DWORD_PTR> controls;
    std::unordered_set<HWND> parents;
};

Coloured& coloured() {
    // Never destroyed: a host's static object may end after this module's.
    static auto& all = *new Coloured;
    return all;
}

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

DWORD_PTR referenceTo(const QkCustomControl& control) {
    return reinterpret_cast<DWORD_PTR>(&control);
}

LRESULT answerColour(const Message& message) {
    const LRESULT parents = message.passOn();
    const auto child = reinterpret_cast<HWND>(message.lParam);
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    const auto found = coloured().controls.find(child);
    auto* const control = found == coloured().controls.end()
                              ? nullptr
                              : livingControl<QkCustomControl>(child, found->second);
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
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, parentProc, subclassId);
        coloured().parents.erase(hwnd);
    }
    return asksColour(id) ? answerColour(message) : message.passOn();
}

}  // namespace

void answerColoursForParent(QkCustomControl& control) {
    const HWND hwnd = control.GetWindow();
    const HWND parent = GetParent(hwnd);
    if (!parent)
        return;
    coloured().controls.insert_or_assign(hwnd, referenceTo(control));
    if (coloured().parents.contains(parent))
        return;
    pinOwnModule();
    if (SetWindowSubclass(parent, parentProc, kSubclassId, 0))
        coloured().parents.insert(parent);
}

void stopAnsweringColours(const QkCustomControl& control) {
    const auto found = coloured().controls.find(control.GetWindow());
    if (found != coloured().controls.end() && found->second == referenceTo(control))
        coloured().controls.erase(found);
}

}  // namespace QkDlg

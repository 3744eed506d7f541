#include "QkCustCtrl/ParentColours.h"

#include <unordered_map>
#include <unordered_set>

#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Module.h"

namespace QkDlg {

namespace {

struct Coloured {
    const QkCustomControl* control;
    GroundListener listener;
};

/// Who colours which window, the parents that have the procedure below, and those of them that are
/// being destroyed. Asked at every paint of a label or an edit, so not kept in window properties,
/// which cost more.
struct Colouring {
    std::unordered_map<HWND, Coloured> byWindow;
    std::unordered_set<HWND> parents;
    std::unordered_set<HWND> goingParents;
};

Colouring& colouring() {
    // Never destroyed: a host's static object may end after this module's.
    static auto& all = *new Colouring;
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

LRESULT answerColour(const Message& message) {
    const LRESULT parents = message.passOn();
    const auto child = reinterpret_cast<HWND>(message.lParam);
    const auto dc = reinterpret_cast<HDC>(message.wParam);
    const auto found = colouring().byWindow.find(child);
    if (found == colouring().byWindow.end())
        return parents;
    const auto [stored, listener] = found->second;
    auto* const control =
        livingControl<QkCustomControl>(child, reinterpret_cast<DWORD_PTR>(stored));
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
    if (listener)
        listener(*control, dc, brush);
    return reinterpret_cast<LRESULT>(brush);
}

LRESULT CALLBACK parentProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam, UINT_PTR subclassId,
                            DWORD_PTR) {
    const Message message{hwnd, id, wParam, lParam};
    if (id == WM_DESTROY)
        colouring().goingParents.insert(hwnd);
    if (id == WM_NCDESTROY) {
        colouring().goingParents.erase(hwnd);
        colouring().parents.erase(hwnd);
        RemoveWindowSubclass(hwnd, parentProc, subclassId);
    }
    return asksColour(id) ? answerColour(message) : message.passOn();
}

}  // namespace

void answerColoursForParent(QkCustomControl& control, GroundListener listener) {
    const HWND hwnd = control.GetWindow();
    const HWND parent = GetParent(hwnd);
    if (!parent)
        return;
    colouring().byWindow.insert_or_assign(hwnd, Coloured{&control, listener});
    if (colouring().parents.contains(parent))
        return;
    pinOwnModule();
    if (SetWindowSubclass(parent, parentProc, kSubclassId, 0))
        colouring().parents.insert(parent);
}

void stopAnsweringColours(const QkCustomControl& control) {
    const auto found = colouring().byWindow.find(control.GetWindow());
    if (found != colouring().byWindow.end() && found->second.control == &control)
        colouring().byWindow.erase(found);
}

bool isParentGoing(HWND parent) {
    return colouring().goingParents.contains(parent);
}

}  // namespace QkDlg

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

/// Where a parent's messages go on to, and which kind of texts is expected there.
struct NextProcedure {
    WNDPROC procedure;
    bool unicode;

    [[nodiscard]] LRESULT call(const Message& message) const {
        const auto& [hwnd, id, wParam, lParam] = message;
        return unicode ? CallWindowProcW(procedure, hwnd, id, wParam, lParam)
                       : CallWindowProcA(procedure, hwnd, id, wParam, lParam);
    }
};

/// Who colours which window, the parents that have a procedure of ours, and those of them that are
/// being destroyed. Asked at every paint of a label or an edit, so not kept in window properties,
/// which cost more.
struct Colouring {
    std::unordered_map<HWND, Coloured> byWindow;
    std::unordered_map<HWND, NextProcedure> parents;
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

/// What the control answers in place of its parent, or what the parent has answered.
LRESULT answerColour(const Message& message, LRESULT parents) {
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

void forgetParent(HWND parent) {
    colouring().goingParents.erase(parent);
    colouring().parents.erase(parent);
}

/// What both procedures of a parent do with a message; `passOn` has the parent answer it.
template <typename PassOn>
LRESULT handle(const Message& message, PassOn passOn) {
    if (message.id == WM_DESTROY)
        colouring().goingParents.insert(message.hwnd);
    const LRESULT result = passOn();
    if (message.id == WM_NCDESTROY)
        forgetParent(message.hwnd);
    return asksColour(message.id) ? answerColour(message, result) : result;
}

LRESULT CALLBACK parentProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam) {
    const Message message{hwnd, id, wParam, lParam};
    const auto found = colouring().parents.find(hwnd);
    // A window that is gone but for some last message has no dialog left to be asked.
    const NextProcedure next =
        found == colouring().parents.end() ? NextProcedure{&DefWindowProcW, true} : found->second;
    return handle(message, [&] { return next.call(message); });
}

LRESULT CALLBACK parentSubclassProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR subclassId, DWORD_PTR) {
    const Message message{hwnd, id, wParam, lParam};
    if (id == WM_NCDESTROY)
        RemoveWindowSubclass(hwnd, parentSubclassProc, subclassId);
    return handle(message, [&] { return message.passOn(); });
}

/// The procedure of the window's class if nobody has subclassed the window, otherwise null.
WNDPROC untouchedProcedure(HWND hwnd, bool unicode) {
    if (GetWindowThreadProcessId(hwnd, nullptr) != GetCurrentThreadId())
        return nullptr;
    const auto own = static_cast<ULONG_PTR>(unicode ? GetWindowLongPtrW(hwnd, GWLP_WNDPROC)
                                                    : GetWindowLongPtrA(hwnd, GWLP_WNDPROC));
    const ULONG_PTR ofClass =
        unicode ? GetClassLongPtrW(hwnd, GCLP_WNDPROC) : GetClassLongPtrA(hwnd, GCLP_WNDPROC);
    return reinterpret_cast<WNDPROC>(own == ofClass ? own : 0);
}

/// Every label and edit asks its parent at each paint, and a subclass of common controls looks its
/// records up three times for a message. Right above the class's own procedure a plain one does as
/// well: whoever subclasses the window later stands above it and gives back what was found. Where
/// somebody is before us, only common controls can tell apart who leaves first.
void subclassParent(HWND parent) {
    const bool unicode = IsWindowUnicode(parent) != FALSE;
    const WNDPROC next = untouchedProcedure(parent, unicode);
    // Somebody who kept the end of a window from us leaves an entry that is not this window's.
    if (next)
        forgetParent(parent);
    if (colouring().parents.contains(parent))
        return;
    pinOwnModule();
    if (next) {
        colouring().parents.insert({parent, {next, unicode}});
        const auto own = reinterpret_cast<LONG_PTR>(&parentProc);
        if (unicode)
            SetWindowLongPtrW(parent, GWLP_WNDPROC, own);
        else
            SetWindowLongPtrA(parent, GWLP_WNDPROC, own);
    } else if (SetWindowSubclass(parent, parentSubclassProc, kSubclassId, 0)) {
        colouring().parents.insert({parent, {}});
    }
}

}  // namespace

void answerColoursForParent(QkCustomControl& control, GroundListener listener) {
    const HWND hwnd = control.GetWindow();
    const HWND parent = GetParent(hwnd);
    if (!parent)
        return;
    colouring().byWindow.insert_or_assign(hwnd, Coloured{&control, listener});
    subclassParent(parent);
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

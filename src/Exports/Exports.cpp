#include "Exports/ControlFactory.h"
#include "QkDlg/QkDlg.h"
#include "QkDlg/UiColors.h"
#include "QkUtil/Handles.h"

// Nothing may leave an export but its result: each is noexcept, so that a failed allocation ends
// the process instead of unwinding through a host that was built by another compiler.

namespace {

constexpr wchar_t kFlatStyleEvent[] = L"VANTOR_DLG_STYLE_FLAT";

QkControlObject* toHandle(QkDlg::QkCustomControl* control) {
    return reinterpret_cast<QkControlObject*>(control);
}

QkDlg::QkCustomControl* fromHandle(QkControlObject* handle) {
    return reinterpret_cast<QkDlg::QkCustomControl*>(handle);
}

}  // namespace

extern "C" {

QkControlObject* __cdecl CreateQkCustomControl(HWND control, int type) noexcept {
    const int id = GetDlgCtrlID(control);
    auto object = QkDlg::makeControl(type, static_cast<UINT>(id));
    object->Attach(control);
    return toHandle(object.release());
}

void __cdecl DeleteQkCustomControl(QkControlObject* object) noexcept {
    delete fromHandle(object);
}

bool __cdecl FlatStyleEnabled(void) noexcept {
    const QkDlg::UniqueKernelHandle event(OpenEventW(SYNCHRONIZE, FALSE, kFlatStyleEvent));
    return event != nullptr;
}

COLORREF __cdecl GetUIColor(int index) noexcept {
    return QkDlg::GetUIColor(index);
}

}  // extern "C"

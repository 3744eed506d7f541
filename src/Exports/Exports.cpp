#include "Exports/ControlFactory.h"
#include "QkDlg/QkDlg.h"
#include "QkDlg/UiColors.h"
#include "QkUtil/Handles.h"

// Nothing may leave an export but its result: each is noexcept, so that a failed allocation ends
// the process instead of unwinding through a host that was built by another compiler.

namespace {

constexpr wchar_t kFlatStyleEvent[] = L"VANTOR_DLG_STYLE_FLAT";

// The C header repeats the names of the colour table, since C has no namespaces.
constexpr bool same(QkUiColorIndex inC, QkDlg::UiColor inCpp) {
    return static_cast<int>(inC) == static_cast<int>(inCpp);
}
static_assert(same(QK_COLOR_WHITE, QkDlg::UICLR_WHITE));
static_assert(same(QK_COLOR_FACE_LIGHT, QkDlg::UICLR_FACE_LIGHT));
static_assert(same(QK_COLOR_FACE, QkDlg::UICLR_FACE));
static_assert(same(QK_COLOR_ACCENT, QkDlg::UICLR_ACCENT));
static_assert(same(QK_COLOR_HOVER, QkDlg::UICLR_HOVER));
static_assert(same(QK_COLOR_HOVER_BORDER, QkDlg::UICLR_HOVER_BORDER));
static_assert(same(QK_COLOR_PRESSED, QkDlg::UICLR_PRESSED));
static_assert(same(QK_COLOR_PRESSED_BORDER, QkDlg::UICLR_PRESSED_BORDER));
static_assert(same(QK_COLOR_DARK_GREY, QkDlg::UICLR_DARK_GREY));
static_assert(same(QK_COLOR_GREY, QkDlg::UICLR_GREY));
static_assert(same(QK_COLOR_LIGHT_GREY, QkDlg::UICLR_LIGHT_GREY));
static_assert(same(QK_COLOR_LINE, QkDlg::UICLR_LINE));

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

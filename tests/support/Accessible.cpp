#include "support/Accessible.h"

#include <gtest/gtest.h>
// The constants of roles and states; needs windows.h first.
#include <oleacc.h>

#include <memory>

namespace QkDlgTest {

namespace {

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
    void operator()(wchar_t* text) const { SysFreeString(text); }
};

std::wstring taken(BSTR text) {
    const std::unique_ptr<wchar_t, Releaser> owned(text);
    return text ? text : L"";
}

}  // namespace

std::wstring accessible(HWND window) {
    IAccessible* found = nullptr;
    // Not IID_IAccessible, whose value in some import libraries is another one.
    const HRESULT result =
        AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   reinterpret_cast<void**>(&found));
    const std::unique_ptr<IAccessible, Releaser> object(found);
    if (!object) {
        ADD_FAILURE() << "no accessible object, error " << result;
        return {};
    }
    VARIANT itself{};
    itself.vt = VT_I4;
    itself.lVal = CHILDID_SELF;
    // What the object does not have stays empty.
    BSTR name = nullptr;
    BSTR value = nullptr;
    VARIANT role{};
    VARIANT state{};
    object->get_accName(itself, &name);
    object->get_accValue(itself, &value);
    object->get_accRole(itself, &role);
    object->get_accState(itself, &state);
    return taken(name) + L", value " + taken(value) + L", role " + std::to_wstring(role.lVal) +
           L", state " + std::to_wstring(state.lVal);
}

}  // namespace QkDlgTest

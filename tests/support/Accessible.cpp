#include "support/Accessible.h"

#include <gtest/gtest.h>
// The constants of roles and states; needs windows.h first.
#include <oleacc.h>

#include <memory>

namespace QkDlgTest {

namespace {

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};

// The two kinds of answer; a property that an object does not have is empty or 0.
std::wstring text(IAccessible& object, const VARIANT& itself,
                  HRESULT (STDMETHODCALLTYPE IAccessible::*property)(VARIANT, BSTR*)) {
    BSTR answer = nullptr;
    if ((object.*property)(itself, &answer) != S_OK)
        return {};
    const std::unique_ptr<wchar_t, decltype(&SysFreeString)> owned(answer, &SysFreeString);
    return answer ? answer : L"";
}

std::wstring number(IAccessible& object, const VARIANT& itself,
                    HRESULT (STDMETHODCALLTYPE IAccessible::*property)(VARIANT, VARIANT*)) {
    VARIANT answer{};
    const bool known = (object.*property)(itself, &answer) == S_OK && answer.vt == VT_I4;
    return std::to_wstring(known ? answer.lVal : 0);
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
    return text(*object, itself, &IAccessible::get_accName) + L", value " +
           text(*object, itself, &IAccessible::get_accValue) + L", role " +
           number(*object, itself, &IAccessible::get_accRole) + L", state " +
           number(*object, itself, &IAccessible::get_accState);
}

}  // namespace QkDlgTest

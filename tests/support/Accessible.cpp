#include "support/Accessible.h"

#include <gtest/gtest.h>

#include <memory>

namespace QkDlgTest {

namespace {

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};

VARIANT itself() {
    VARIANT variant{};
    variant.vt = VT_I4;
    variant.lVal = CHILDID_SELF;
    return variant;
}

// The two kinds of answer; a property that an object does not have is empty or 0.
std::wstring text(IAccessible& object,
                  HRESULT (STDMETHODCALLTYPE IAccessible::*property)(VARIANT, BSTR*)) {
    BSTR answer = nullptr;
    if ((object.*property)(itself(), &answer) != S_OK || !answer)
        return {};
    std::wstring result(answer);
    SysFreeString(answer);
    return result;
}

long number(IAccessible& object,
            HRESULT (STDMETHODCALLTYPE IAccessible::*property)(VARIANT, VARIANT*)) {
    VARIANT answer{};
    if ((object.*property)(itself(), &answer) != S_OK || answer.vt != VT_I4)
        return 0;
    return answer.lVal;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Accessible& accessible) {
    return out << testing::PrintToString(accessible.name) << " role " << accessible.role
               << " state 0x" << std::hex << accessible.state << std::dec << " value "
               << testing::PrintToString(accessible.value);
}

Accessible accessible(HWND window) {
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
    return {text(*object, &IAccessible::get_accName), number(*object, &IAccessible::get_accRole),
            number(*object, &IAccessible::get_accState), text(*object, &IAccessible::get_accValue)};
}

}  // namespace QkDlgTest

#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "support/Accessible.h"
#include "support/GdiCount.h"
#include "support/HostDialog.h"
#include "support/Input.h"
#include "support/MessageLoop.h"
#include "support/Pixels.h"
#include "support/SystemScopes.h"

namespace QkDlgTest {

// What flat controls show most, without high contrast.
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kFace = RGB(246, 246, 246);
constexpr COLORREF kHover = RGB(229, 243, 251);
constexpr COLORREF kAccent = RGB(27, 118, 192);

/// Makes a control flat, with its own id, and lets it paint.
template <typename Control>
std::unique_ptr<Control> flatten(HWND window) {
    auto control = std::make_unique<Control>(static_cast<UINT>(GetDlgCtrlID(window)));
    control->Attach(window);
    drain();
    return control;
}

/// Base of tests with windows. Each starts with the mouse away, and each is a leak test as well:
/// when it is over, members of derived fixtures included, there are as many windows and no more
/// GDI objects, but for a few of the system's own, as before, and no memory fault was ignored.
/// Fonts do not count, since the process keeps them in a cache.
class WindowTest : public testing::Test {
public:
    ~WindowTest() override;

protected:
    WindowTest();

    /// For a test that is the first to fill some other cache of the process.
    void allowGdiGrowth(int objects) { allowedGrowth_ = objects; }

private:
    Holdings before_;
    int faultsBefore_;
    int allowedGrowth_ = 0;
};

}  // namespace QkDlgTest

#include <gmock/gmock.h>
#include <objbase.h>

#include <cstdlib>
#include <string_view>

#include "support/ChildProcess.h"
#include "support/Input.h"

namespace {

constexpr std::string_view kChildArgument = "--child=";

void initialiseControls() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES | ICC_LINK_CLASS;
    InitCommonControlsEx(&controls);
}

}  // namespace

int main(int argc, char** argv) {
    // A crash ends the program instead of asking somebody.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    initialiseControls();
    if (argc > 1 && std::string_view(argv[1]).starts_with(kChildArgument))
        QkDlgTest::breakContract(std::atoi(argv[1] + kChildArgument.size()));

    testing::InitGoogleMock(&argc, argv);
    const bool usesCom = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    int result = 0;
    {
        const QkDlgTest::QuickInput quick;
        result = RUN_ALL_TESTS();
    }
    if (usesCom)
        CoUninitialize();
    return result;
}

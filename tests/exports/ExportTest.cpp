// The DLL as a host in any language uses it: loaded by name, four functions, opaque objects.
#include "QkDlg/QkDlg.h"
#include "QkUtil/Handles.h"

#include "support/ChildProcess.h"
#include "support/WindowTest.h"

using namespace QkDlgTest;

namespace {

constexpr wchar_t kFlatStyleEvent[] = L"VANTOR_DLG_STYLE_FLAT";

HMODULE library() {
    static const HMODULE module = LoadLibraryA(QKDLG_DLL);
    return module;
}

template <typename Function>
Function* exported(const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library(), name)));
}

struct Library {
    decltype(&CreateQkCustomControl) create =
        exported<decltype(CreateQkCustomControl)>("CreateQkCustomControl");
    decltype(&DeleteQkCustomControl) destroy =
        exported<decltype(DeleteQkCustomControl)>("DeleteQkCustomControl");
    decltype(&FlatStyleEnabled) flatStyle =
        exported<decltype(FlatStyleEnabled)>("FlatStyleEnabled");
    decltype(&GetUIColor) colour = exported<decltype(GetUIColor)>("GetUIColor");
};

const BrokenContract kColourPastTheTable("src/QkUtil", 452, [] { (void)Library().colour(12); });

TEST(Exports, UnknownColourEndsTheProcessWithTheReport) {
    expectAssertReports();
}

TEST(Exports, FlatStyleFollowsTheNamedEvent) {
    const Library dll;
    EXPECT_FALSE(dll.flatStyle());
    QkDlg::UniqueKernelHandle event(CreateEventW(nullptr, TRUE, FALSE, kFlatStyleEvent));
    EXPECT_TRUE(dll.flatStyle());
    event.reset();
    EXPECT_FALSE(dll.flatStyle()) << "the library kept no handle of its own";
}

using ExportedControlTest = WindowTest;

TEST_F(ExportedControlTest, DllStaysLoadedUnderItsWindows) {
    const Library dll;
    const HMODULE again = LoadLibraryA(QKDLG_DLL);
    HostDialog host;
    const HWND button = host.add(L"button", L"&Save", WS_TABSTOP, scaledArea(20, 20, 100, 30), 1);
    QkControlObject* const object = dll.create(button, QK_BLUE_BUTTON);
    // A host that frees the library once too often, with its dialog still open.
    FreeLibrary(again);
    FreeLibrary(again);
    EXPECT_NE(GetModuleHandleA(QKDLG_DLL), nullptr);
    InvalidateRect(button, nullptr, FALSE);
    drain();
    EXPECT_EQ(onScreen(button).at(3, 3), dll.colour(QK_COLOR_ACCENT));
    DestroyWindow(button);
    dll.destroy(object);
    dll.destroy(nullptr);
}

}  // namespace

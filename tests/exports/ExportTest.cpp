// The DLL as a host in any language uses it: loaded by name, four functions, opaque objects.
#include "QkDlg/QkDlg.h"
#include "QkUtil/Handles.h"

#include "support/ChildProcess.h"
#include "support/WindowTest.h"

using namespace QkDlgTest;

namespace {

constexpr wchar_t kFlatStyleEvent[] = L"VANTOR_DLG_STYLE_FLAT";
constexpr int kButton = 101;
constexpr COLORREF kFace = RGB(246, 246, 246);

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

class ExportedControlTest : public WindowTest {
protected:
    HWND addButton() {
        return host_.add(L"button", L"&Save", WS_TABSTOP, scaledArea(20, 20, 100, 30), kButton);
    }

    Library dll_;
    HostDialog host_;
};

TEST_F(ExportedControlTest, ButtonIsOfItsTypeAndOfUnknownTypeAPlainFlatOne) {
    const std::pair<int, COLORREF> types[] = {
        {QK_BLUE_BUTTON, dll_.colour(QK_COLOR_ACCENT)}, {13, kFace}, {-1, kFace}};
    for (const auto& [type, face] : types) {
        const HWND button = addButton();
        QkControlObject* const object = dll_.create(button, type);
        drain();
        EXPECT_EQ(onScreen(button).at(3, 3), face) << type;
        DestroyWindow(button);
        dll_.destroy(object);
    }
    dll_.destroy(nullptr);
}

TEST_F(ExportedControlTest, DllStaysLoadedUnderItsWindows) {
    const HMODULE again = LoadLibraryA(QKDLG_DLL);
    const HWND button = addButton();
    QkControlObject* const object = dll_.create(button, QK_PUSH_BUTTON);
    // A host that frees the library once too often, with its dialog still open.
    FreeLibrary(again);
    FreeLibrary(again);
    EXPECT_NE(GetModuleHandleA(QKDLG_DLL), nullptr);
    InvalidateRect(button, nullptr, FALSE);
    drain();
    EXPECT_EQ(onScreen(button).at(3, 3), kFace);
    DestroyWindow(button);
    dll_.destroy(object);
}

TEST_F(ExportedControlTest, ObjectDeletedBeforeItsWindowCostsOnlyTheLook) {
    const HWND button = addButton();
    dll_.destroy(dll_.create(button, QK_PUSH_BUTTON));
    click(button);
    EXPECT_EQ(host_.timesHeard(command(kButton, BN_CLICKED)), 1);
}

}  // namespace

/* A host of the installed DLL through its import library, in C and in C++. Ends with 0 if all four
   functions do what the header says; otherwise with the line of the first that does not. */
#include <QkDlg/QkDlg.h>

#define EXPECT(condition)    \
    do {                     \
        if (!(condition))    \
            return __LINE__; \
    } while (0)

int main(void) {
    const COLORREF accent = GetUIColor(QK_COLOR_ACCENT);
    HWND parent, button;
    QkControlObject* object;
    HDC dc;

    EXPECT(accent == RGB(27, 118, 192) && GetUIColor(QK_COLOR_LINE) == RGB(223, 223, 223));
    EXPECT(!FlatStyleEnabled());
    parent =
        CreateWindowA("Static", "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, NULL, NULL, NULL, NULL);
    button = CreateWindowA("Button", "OK", WS_CHILD | WS_VISIBLE, 10, 10, 100, 40, parent,
                           (HMENU)IDOK, NULL, NULL);
    object = CreateQkCustomControl(button, QK_BLUE_BUTTON);
    EXPECT(button && object);
    UpdateWindow(button);
    dc = GetDC(button);
    EXPECT(GetPixel(dc, 5, 5) == accent);
    ReleaseDC(button, dc);
    DestroyWindow(parent);
    DeleteQkCustomControl(object);
    DeleteQkCustomControl(NULL);
    return 0;
}

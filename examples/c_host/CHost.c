/*
 * The smallest complete host: a modal dialog out of an ordinary resource, whose controls become
 * flat when the DLL is there and stay standard ones when it is not. Ends with 0 for Save, 1 for
 * Don't save, 2 for Cancel.
 */
#define UNICODE
#include <QkDlg/QkDlg.h>

#include "Ids.h"

#ifdef _WIN64
#define LIBRARY_NAME L"QkDlg64.dll"
#else
#define LIBRARY_NAME L"QkDlg32.dll"
#endif

/* Which control becomes what. */
static const struct {
    int id;
    int type;
} kControls[] = {
    {IDC_QUESTION, QK_STATIC_TEXT},
    {IDYES, QK_BLUE_BUTTON},
    {IDNO, QK_PUSH_BUTTON},
    {IDCANCEL, QK_PUSH_BUTTON},
};

enum { kControlCount = sizeof kControls / sizeof kControls[0], kCannotShow = 3 };

static QkCreateControlProc createControl;
static QkDeleteControlProc deleteControl;
static QkFlatStyleEnabledProc flatStyleEnabled;

static QkControlObject* flatObjects[kControlCount];

static BOOL loadLibrary(void) {
    HMODULE library = LoadLibraryW(LIBRARY_NAME);
    if (!library)
        return FALSE;
    /* Over void (*)(void), to which compilers allow any function to be cast. */
    typedef void (*Function)(void);
    createControl = (QkCreateControlProc)(Function)GetProcAddress(library, "CreateQkCustomControl");
    deleteControl = (QkDeleteControlProc)(Function)GetProcAddress(library, "DeleteQkCustomControl");
    flatStyleEnabled =
        (QkFlatStyleEnabledProc)(Function)GetProcAddress(library, "FlatStyleEnabled");
    return createControl && deleteControl && flatStyleEnabled;
}

static void makeFlat(HWND dialog) {
    for (int i = 0; i < kControlCount; ++i) {
        HWND control = GetDlgItem(dialog, kControls[i].id);
        flatObjects[i] = createControl(control, kControls[i].type);
    }
}

static void deleteFlatObjects(void) {
    for (int i = 0; i < kControlCount; ++i) {
        if (flatObjects[i])
            deleteControl(flatObjects[i]);
        flatObjects[i] = NULL;
    }
}

static INT_PTR CALLBACK dialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            /* lParam: the library is there. */
            if (lParam && flatStyleEnabled())
                makeFlat(dialog);
            return TRUE;
        case WM_COMMAND:
            if (HIWORD(wParam) == BN_CLICKED)
                EndDialog(dialog, LOWORD(wParam));
            return TRUE;
        /* Flat dialogs are white; in high contrast these colours follow the user's scheme. */
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORBTN:
            if (!flatObjects[0])
                return FALSE;
            SetTextColor((HDC)wParam, GetSysColor(COLOR_WINDOWTEXT));
            SetBkColor((HDC)wParam, GetSysColor(COLOR_WINDOW));
            return (INT_PTR)GetSysColorBrush(COLOR_WINDOW);
    }
    return FALSE;
}

/* NOLINTNEXTLINE(readability-non-const-parameter): the system's own signature */
int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int showCommand) {
    (void)previous;
    (void)commandLine;
    (void)showCommand;
    /* While this event exists the application as a whole wants flat dialogs. */
    HANDLE flatStyle = CreateEventW(NULL, TRUE, FALSE, L"VANTOR_DLG_STYLE_FLAT");

    INT_PTR result = DialogBoxParamW(instance, MAKEINTRESOURCEW(IDD_SAVE_CHANGES), NULL, dialogProc,
                                     loadLibrary());

    /* The windows are gone: now the objects may go. */
    deleteFlatObjects();
    if (flatStyle)
        CloseHandle(flatStyle);
    switch (result) {
        case IDYES: return 0;
        case IDNO: return 1;
        case IDCANCEL: return 2;
        default: return kCannotShow;
    }
}

/*
 * The smallest complete host: a modal dialog out of an ordinary resource whose controls become
 * flat. With --auto the dialog closes by itself after a second.
 */
#define UNICODE
#include <QkDlg/QkDlg.h>
#include <string.h>

#include "Ids.h"

/* Which control becomes what. */
static const struct {
    int id;
    int type;
} kControls[] = {
    {IDYES, QK_BLUE_BUTTON},
    {IDNO, QK_PUSH_BUTTON},
    {IDCANCEL, QK_PUSH_BUTTON},
};

enum { kControlCount = sizeof kControls / sizeof kControls[0], kAutoTimer = 1, kAutoDelay = 1000 };

static QkControlObject* flatObjects[kControlCount];

static void makeFlat(HWND dialog) {
    for (int i = 0; i < kControlCount; ++i) {
        HWND control = GetDlgItem(dialog, kControls[i].id);
        flatObjects[i] = CreateQkCustomControl(control, kControls[i].type);
    }
}

static void deleteFlatObjects(void) {
    for (int i = 0; i < kControlCount; ++i) {
        DeleteQkCustomControl(flatObjects[i]);
        flatObjects[i] = NULL;
    }
}

static INT_PTR CALLBACK dialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            if (FlatStyleEnabled())
                makeFlat(dialog);
            if (lParam)
                SetTimer(dialog, kAutoTimer, kAutoDelay, NULL);
            return TRUE;
        case WM_COMMAND:
            if (HIWORD(wParam) == BN_CLICKED)
                EndDialog(dialog, LOWORD(wParam));
            return TRUE;
        case WM_TIMER: EndDialog(dialog, IDCANCEL); return TRUE;
        /* Flat dialogs are white; in high contrast these colours follow the user's scheme. */
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            SetTextColor((HDC)wParam, GetSysColor(COLOR_WINDOWTEXT));
            SetBkColor((HDC)wParam, GetSysColor(COLOR_WINDOW));
            return (INT_PTR)GetSysColorBrush(COLOR_WINDOW);
    }
    return FALSE;
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int showCommand) {
    (void)previous;
    (void)showCommand;
    /* While this event exists the application as a whole wants flat dialogs. */
    HANDLE flatStyle = CreateEvent(NULL, TRUE, FALSE, L"VANTOR_DLG_STYLE_FLAT");
    const LPARAM closesByItself = strstr(commandLine, "--auto") != NULL;

    INT_PTR result = DialogBoxParam(instance, MAKEINTRESOURCE(IDD_SAVE_CHANGES), NULL, dialogProc,
                                    closesByItself);

    /* The windows are gone: now the objects may go. */
    deleteFlatObjects();
    if (flatStyle)
        CloseHandle(flatStyle);
    /* Zero or less: the dialog could not be shown. */
    return result > 0 ? 0 : 1;
}

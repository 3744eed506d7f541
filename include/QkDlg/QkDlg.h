/*
 * The C interface of QkDlg64.dll and QkDlg32.dll: four functions, C linkage, __cdecl.
 * Any language that can call a C function can use them.
 *
 * CreateQkCustomControl and DeleteQkCustomControl are meant for the one GUI thread that owns all
 * windows handed to them. FlatStyleEnabled and GetUIColor touch nothing that changes and may be
 * called from any thread. No error code and no exception comes
 * out of any of them.
 */
#ifndef QKDLG_QKDLG_H
#define QKDLG_QKDLG_H

#include <windows.h>

#ifdef __cplusplus
#define QKDLG_NOEXCEPT noexcept
extern "C" {
#else
#define QKDLG_NOEXCEPT
#include <stdbool.h>
#endif

/* The object behind a flat control. Opaque: keep it, and hand it to DeleteQkCustomControl. */
typedef struct QkControlObject QkControlObject; /* NOLINT(modernize-use-using): this is C */

/* What a control becomes. Any other number gives a QK_PUSH_BUTTON. */
enum QkControlType {
    QK_PUSH_BUTTON = 0,
    QK_BLUE_BUTTON = 1,
    QK_SETTINGS_BUTTON = 2,
    QK_SPLIT_BUTTON = 3,
    QK_DROP_BUTTON = 4,
    QK_RADIO_BUTTON = 5,
    QK_CHECK_BOX = 6,
    QK_TOGGLE = 7,
    QK_STATIC_TEXT = 8,
    QK_EDIT = 9,
    QK_PROGRESS_BAR = 10,
    QK_COMBO_DROPDOWN_LIST = 11,
    QK_PASSWORD = 12
};

/*
 * Makes the existing child window `control` flat and returns the object that does it. The window
 * stays what it was: the same state, the same notifications to its parent, the same accessible
 * name and role (but QK_TOGGLE sets the text "On" or "Off"). The caller owns the object from here
 * on. A window that does not exist, or is another thread's, gives an object that does nothing.
 */
QkControlObject* __cdecl CreateQkCustomControl(HWND control, int type) QKDLG_NOEXCEPT;

/*
 * Destroys an object; null is ignored. The right time is after the control's window has been
 * destroyed (in WM_NCDESTROY of the dialog, say). Earlier costs the flat look of that window,
 * nothing else; an object that is never deleted costs its memory.
 */
void __cdecl DeleteQkCustomControl(QkControlObject* object) QKDLG_NOEXCEPT;

/*
 * True while the named event "VANTOR_DLG_STYLE_FLAT" exists in the session: the switch by which
 * the application as a whole says that it wants flat dialogs. Asked afresh at every call.
 */
bool __cdecl FlatStyleEnabled(void) QKDLG_NOEXCEPT;

/*
 * Entry 0 to 11 of the library's colour table, in high-contrast mode with system colours where
 * the table says so. Another index is a programming error: it is reported on standard output and
 * ends the process with exit status 999.
 */
COLORREF __cdecl GetUIColor(int index) QKDLG_NOEXCEPT;

#ifdef __cplusplus
}
#endif
#undef QKDLG_NOEXCEPT

#endif

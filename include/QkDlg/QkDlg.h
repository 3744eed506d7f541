/**
 * @file
 * The C interface of QkDlg64.dll and QkDlg32.dll: four functions with C linkage, for C from C99 on,
 * for C++, and for any language that can call a C function.
 *
 * For callers from other languages:
 * - The calling convention is the C one, __cdecl, in which the caller clears the stack. On 64 bits
 *   there is only one convention; on 32 bits a declaration with the Windows API's own (__stdcall)
 *   links by name and loader all the same and then loses the stack. Callbacks that Windows calls,
 *   such as a dialog procedure, stay with the Windows API's convention.
 * - The names are plain on both architectures: no underscore, no @.
 * - `bool` is one byte, 0 or 1, in the lowest byte of the result's register: not the four bytes of
 *   BOOL. What the other three hold is undefined; a declaration that reads them sees "true" at
 *   random.
 * - `int` and COLORREF are 32 bits, HWND and the object are pointers. A COLORREF is 0x00BBGGRR.
 * - No error code and no exception comes out of any of the functions, and none may come in: the
 *   host's dialog procedures run while the library passes messages on.
 *
 * Threads: CreateQkCustomControl and DeleteQkCustomControl are for the one GUI thread that owns all
 * windows handed to them. FlatStyleEnabled and GetUIColor touch nothing that changes and may be
 * called from any thread.
 *
 * Life: the host owns every object that CreateQkCustomControl returned, and deletes it once, on the
 * GUI thread, after the control's window is gone: when DialogBox has returned, or in the dialog's
 * WM_NCDESTROY. From the first object on the DLL stays in the process; FreeLibrary has no effect.
 */
#ifndef QKDLG_QKDLG_H
#define QKDLG_QKDLG_H

#include <windows.h>

#ifndef __cplusplus
#include <stdbool.h>
#define QKDLG_NOEXCEPT
#elif __cplusplus >= 201103L || (defined(_MSC_VER) && _MSC_VER >= 1900)
#define QKDLG_NOEXCEPT noexcept
#else
#define QKDLG_NOEXCEPT throw()
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* NOLINTBEGIN(modernize-use-using): this is C */

/** The object behind a flat control. Opaque: keep it, and hand it to DeleteQkCustomControl. */
typedef struct QkControlObject QkControlObject;

/** What a control becomes. Any other number gives a QK_PUSH_BUTTON. */
enum QkControlType {
    QK_PUSH_BUTTON = 0,
    QK_BLUE_BUTTON = 1, /**< a push button in the accent colour: the one that Enter is for */
    QK_SETTINGS_BUTTON = 2,
    QK_SPLIT_BUTTON = 3,
    QK_DROP_BUTTON = 4,
    QK_RADIO_BUTTON = 5,
    QK_CHECK_BOX = 6,
    QK_TOGGLE = 7, /**< an on/off switch in place of a check box */
    QK_STATIC_TEXT = 8,
    QK_EDIT = 9,
    QK_PROGRESS_BAR = 10,
    QK_COMBO_DROPDOWN_LIST = 11,
    QK_PASSWORD = 12
};

/**
 * Entries of the colour table, for what the host paints itself. Those marked (*) are system colours
 * in high-contrast mode.
 */
enum QkUiColorIndex {
    QK_COLOR_WHITE = 0,
    QK_COLOR_FACE_LIGHT = 1,
    QK_COLOR_FACE = 2,           /**< face of a push button */
    QK_COLOR_ACCENT = 3,         /**< (*) */
    QK_COLOR_HOVER = 4,          /**< (*) face under the mouse */
    QK_COLOR_HOVER_BORDER = 5,   /**< (*) */
    QK_COLOR_PRESSED = 6,        /**< (*) */
    QK_COLOR_PRESSED_BORDER = 7, /**< (*) */
    QK_COLOR_DARK_GREY = 8,
    QK_COLOR_GREY = 9,
    QK_COLOR_LIGHT_GREY = 10,
    QK_COLOR_LINE = 11 /**< thin lines between parts */
};

/**
 * Makes the existing child window `control` flat and returns the object that does it. The window
 * stays what it was: the same state, the same notifications to its parent, the same accessible
 * name and role (but QK_TOGGLE sets the text "On" or "Off"). The caller owns the object from here
 * on. A window that does not exist, or is another thread's, gives an object that does not paint.
 * With QK_COMBO_DROPDOWN_LIST anything but a combo box is a programming error: it is reported on
 * standard output and ends the process with exit status 999.
 */
QkControlObject* __cdecl CreateQkCustomControl(HWND control, int type) QKDLG_NOEXCEPT;

/**
 * Destroys an object; null is ignored. The right time is after the control's window has been
 * destroyed (in WM_NCDESTROY of the dialog, say). Earlier costs the flat look of that window,
 * nothing else; an object that is never deleted costs its memory.
 */
void __cdecl DeleteQkCustomControl(QkControlObject* object) QKDLG_NOEXCEPT;

/**
 * True while the named event "VANTOR_DLG_STYLE_FLAT" exists in the session: the switch by which
 * the application as a whole says that it wants flat dialogs. Asked afresh at every call.
 */
bool __cdecl FlatStyleEnabled(void) QKDLG_NOEXCEPT;

/**
 * An entry of the library's colour table (QkUiColorIndex), in high-contrast mode with system
 * colours where the table says so. Another index is a programming error: it is reported on standard
 * output and ends the process with exit status 999.
 */
COLORREF __cdecl GetUIColor(int index) QKDLG_NOEXCEPT;

/* The functions' types, for hosts that look them up with GetProcAddress. */

/** CreateQkCustomControl */
typedef QkControlObject*(__cdecl* QkCreateControlProc)(HWND control, int type);
/** DeleteQkCustomControl */
typedef void(__cdecl* QkDeleteControlProc)(QkControlObject* object);
/** FlatStyleEnabled */
typedef bool(__cdecl* QkFlatStyleEnabledProc)(void);
/** GetUIColor */
typedef COLORREF(__cdecl* QkGetUIColorProc)(int index);

/* NOLINTEND(modernize-use-using) */

#ifdef __cplusplus
}
#endif
#undef QKDLG_NOEXCEPT

#endif

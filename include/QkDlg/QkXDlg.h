#pragma once

#include <memory>
#include <string>
#include <type_traits>

#include "QkDlg/ControlMap.h"

namespace QkDlg {

/// A modal dialog from a dialog template of the host's resource module (AppGlobals). A host derives
/// from it, overrides the handlers that it needs and calls DoModal. With m_bFlat set before that,
/// the standard controls become flat when the dialog opens, as the dialog description (resource
/// DLG_XML) tells; the object owns the flat controls and deletes them when it goes.
///
/// Objects belong to the GUI thread that runs them; one object runs one dialog at a time, as often
/// as wanted. Misuse of the library's own making (a missing child that must exist, a handler called
/// without a dialog) raises the assertion report of src/QkXDlg.
///
/// After EndDialog, and so after OnOK and OnCancel, m_hWnd is null while the last messages still
/// arrive, WM_DESTROY among them and the EN_KILLFOCUS of the edit that had the focus: an override
/// that needs the window or a child (GetItemText) must look first.
class QkXDlg {
public:
    /// A dialog without a wanted owner, centred, not flat.
    explicit QkXDlg(UINT32 templateId);
    /// `parent` owns the dialog if it is visible when the dialog opens. `callerValue` is kept for
    /// the host.
    QkXDlg(UINT32 templateId, HWND parent, UINT32 callerValue, bool centreOnParent);
    QkXDlg(const QkXDlg&) = delete;
    QkXDlg& operator=(const QkXDlg&) = delete;

    // The order of the virtual operations is fixed. The handlers that answer true have dealt with
    // their message, false leaves it to the system. Coordinates and sizes are pixels.

    /// Deletes the flat controls. A dialog that is still open goes on as a standard one.
    virtual ~QkXDlg();
    /// Runs the dialog; returns what ended it: IDOK, IDCANCEL or an EndDialog value of the host's.
    virtual int DoModal();
    /// Passes its arguments to OnCommandUnhandled.
    virtual bool RouteCommand(WPARAM wParam, LPARAM lParam);
    /// WM_INITDIALOG: reads the dialog defaults, makes the controls flat, centres the dialog. An
    /// override calls this one first. True lets the system set the focus; false here.
    virtual bool OnInitDialog();
    /// A command whose wParam is exactly IDOK: ends the dialog with IDOK. True here.
    virtual bool OnOK();
    /// A command of exactly IDHELP, F1 (WM_HELP), or the Help button of a property sheet or common
    /// dialog. True here.
    virtual bool OnHelp();
    /// A command of exactly IDCANCEL, which Escape and the closing box send as well: ends the
    /// dialog with IDCANCEL. True here.
    virtual bool OnCancel();
    /// WM_CONTEXTMENU: the window clicked in, and the point on the screen, or -1 from the keyboard.
    /// True here, so that the owner does not hear of it.
    virtual bool OnContextMenu(WPARAM wParam, LPARAM lParam);
    /// WM_NOTIFY: the sender's id and the NMHDR. `*result` is the answer to the notification when
    /// the handler returns true. False here.
    virtual bool OnNotify(UINT id, LPARAM header, LRESULT* result);
    /// WM_CLOSE. False here: the system sends the command IDCANCEL then.
    virtual bool OnClose();
    /// WM_SIZE: SIZE_RESTORED and the like, and the size of the client area. False here.
    virtual bool OnSize(UINT type, int width, int height);
    /// WM_GETMINMAXINFO with its MINMAXINFO. False here.
    virtual bool OnGetMinMaxInfo(LPARAM info);
    /// WM_MEASUREITEM with its MEASUREITEMSTRUCT. Here the flat control of the id is asked.
    virtual bool OnMeasureItem(UINT id, LPARAM info);
    /// WM_DRAWITEM with its DRAWITEMSTRUCT. Here the flat control of the id is asked.
    virtual bool OnDrawItem(UINT id, LPARAM info);
    /// WM_SIZING: the edge (WMSZ_...) and the RECT on the screen, which may be changed. False here.
    virtual bool OnSizing(UINT edge, LPARAM rect);
    /// WM_MOVE: where the client area is on the screen now.
    virtual void OnMove(int x, int y);
    /// WM_MOVING: the RECT on the screen, which may be changed.
    virtual void OnMoving(WPARAM edge, LPARAM rect);
    /// WM_PAINT. An override that answers true has painted (BeginPaint). False here.
    virtual bool OnPaint();
    /// Every command that no other handler took. False here.
    virtual bool OnCommandUnhandled(WPARAM wParam, LPARAM lParam);
    /// WM_COMMAND, except when wParam is exactly IDOK, IDCANCEL or IDHELP.
    virtual bool OnCommand(WPARAM wParam, LPARAM lParam);
    /// WM_TIMER; the low word of the timer's id. False here.
    virtual bool OnTimer(UINT id);
    /// WM_DESTROY. m_hWnd is null when the dialog was ended. False here.
    virtual bool OnDestroy();
    /// WM_SYSCOMMAND. False here.
    virtual bool OnSysCommand(WPARAM wParam, LPARAM lParam);
    /// The system colours or the theme have changed. Here the flat controls repaint; false.
    virtual bool OnColorsChanged();
    /// The brush of the dialog's ground: white in a flat dialog, none in high contrast.
    virtual INT_PTR OnCtlColorDlg();
    /// The brush behind a label or a read-only or disabled edit, and the DC's colours: what its
    /// flat control says; in a flat dialog a standard label gets no ground of its own.
    virtual INT_PTR OnCtlColorStatic(HWND control, HDC dc);
    /// The brush behind a button: what its flat control says.
    virtual INT_PTR OnCtlColorBtn(HWND control, HDC dc);
    /// WM_UPDATEUISTATE: the high and the low word of its wParam. Here the flat controls are told.
    virtual void OnUpdateUIState(UINT flags, UINT action);
    /// Every message that has no handler of its own; the answer is the dialog procedure's.
    virtual INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

    /// The child window of that id. The dialog must be open, and the child exist if `mustExist`.
    [[nodiscard]] HWND GetItem(UINT id, bool mustExist) const;
    /// Enables or disables the child window, which must exist.
    void EnableItem(UINT id, bool enable) const;
    /// The text of the child window, which must exist. The dialog must be open.
    [[nodiscard]] std::wstring GetItemText(UINT id) const;
    /// Sets the text of the child window, if there is one. The dialog must be open.
    void SetItemText(UINT id, const wchar_t* text) const;
    /// The flat control of that id, or null. The dialog keeps it.
    [[nodiscard]] QkCustomControl* FindControl(UINT id) const;
    /// Whether the dialog was told to be flat.
    [[nodiscard]] bool IsFlat() const { return m_bFlat; }

    /// The procedure for a dialog that the host creates itself, with the address of its object
    /// (a QkXDlg*) as the parameter of WM_INITDIALOG.
    [[nodiscard]] static DLGPROC GetDialogProc();
    /// Face and point size for dialogs that have not opened yet.
    static void SetDefaultDialogFont(const std::wstring& faceName, UINT32 pointSize);
    /// Reads the defaults of the DLG_XML resource; the first call of the process does.
    static void LoadDialogDefaults();

    /// Takes the control into the dialog under the control's id. A control that was there is
    /// replaced, neither deleted nor unbound: it lives on as long as whoever else holds it says.
    static void RegisterControl(QkXDlg& dialog, std::unique_ptr<QkCustomControl> control);
    /// Makes flat controls for the children of an open dialog; they are attached afterwards.
    static void ConvertToFlat(QkXDlg& dialog);

protected:
    HWND m_hWnd = nullptr;          ///< the dialog window while it is open
    HWND m_hParent = nullptr;       ///< the wanted owner
    UINT32 m_nTemplateId;           ///< resource id of the template
    UINT32 m_nCallerValue = 0;      ///< the host's
    bool m_bCentreOnParent = true;  ///< centre over the owner when the dialog opens
    bool m_bInitialising = false;   ///< OnInitDialog runs
    bool m_bFlat = false;           ///< the host sets it before the dialog runs
    ControlMap m_controls;          ///< the flat controls

private:
    struct FontDeleter {
        void operator()(HFONT font) const { DeleteObject(font); }
    };

    static INT_PTR CALLBACK DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Route(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    bool RouteInitDialog(HWND hwnd);
    INT_PTR RouteLast(HWND hwnd, WPARAM wParam, LPARAM lParam);
    bool RouteCommandMessage(WPARAM wParam, LPARAM lParam);
    INT_PTR RouteNotify(HWND hwnd, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] QkCustomControl* ControlOf(HWND control) const;
    void AttachControls();

    HWND m_boundWindow = nullptr;  ///< the window that knows this object, to its end
    std::unique_ptr<std::remove_pointer_t<HFONT>, FontDeleter> m_font;  ///< made for this dialog
};

}  // namespace QkDlg

//! A host in Rust, through the C interface and without any crate: the declarations that it needs of
//! the Windows API and of the library stand here. Ends with 0 when the file is to be exported, with
//! 2 when it is to be opened afterwards too, with 1 when the dialog was cancelled, with 3 when it
//! could not be shown flat.
#![windows_subsystem = "windows"]

use std::cell::RefCell;
use std::ffi::c_void;
use std::ptr::{null, null_mut};

type Handle = *mut c_void;
type DialogProc = extern "system" fn(Handle, u32, usize, isize) -> isize;

// The Windows API: its own calling convention ("system"), four-byte BOOL (i32).
#[link(name = "user32")]
extern "system" {
    fn DialogBoxParamW(instance: Handle, template: usize, owner: Handle, procedure: DialogProc,
        parameter: isize) -> isize;
    fn EndDialog(dialog: Handle, result: isize) -> i32;
    fn GetDlgItem(dialog: Handle, id: i32) -> Handle;
    fn IsDlgButtonChecked(dialog: Handle, id: i32) -> u32;
    fn GetSysColor(index: i32) -> u32;
    fn GetSysColorBrush(index: i32) -> Handle;
}
#[link(name = "gdi32")]
extern "system" {
    fn SetTextColor(dc: Handle, colour: u32) -> u32;
    fn SetBkColor(dc: Handle, colour: u32) -> u32;
}
#[link(name = "kernel32")]
extern "system" {
    fn CreateEventW(security: *const c_void, manual: i32, set: i32, name: *const u16) -> Handle;
    fn CloseHandle(handle: Handle) -> i32;
    fn LoadLibraryW(name: *const u16) -> Handle;
    fn GetProcAddress(module: Handle, name: *const u8) -> *const c_void;
    fn GetModuleHandleW(name: *const u16) -> Handle;
}

const WM_INITDIALOG: u32 = 0x0110;
const WM_COMMAND: u32 = 0x0111;
const WM_CTLCOLORBTN: u32 = 0x0135;
const WM_CTLCOLORDLG: u32 = 0x0136;
const COLOR_WINDOW: i32 = 5;
const COLOR_WINDOWTEXT: i32 = 8;
const IDOK: i32 = 1;
const IDCANCEL: i32 = 2;

// Of QkDlg.h
const QK_PUSH_BUTTON: i32 = 0;
const QK_BLUE_BUTTON: i32 = 1;
const QK_CHECK_BOX: i32 = 6;
const QK_EDIT: i32 = 9;

// Of Ids.h
const IDD_EXPORT: usize = 100;
const IDC_FILE: i32 = 1001;
const IDC_OPEN: i32 = 1002;

/// An object of the library's: nothing but an address.
#[repr(C)]
struct QkControlObject {
    _private: [u8; 0],
}

/// The functions of the DLL. They have the C calling convention ("C", not "system": on 32 bits that
/// is another one), and `bool` is one byte, as it is in Rust.
#[derive(Clone, Copy)]
struct Library {
    create: extern "C" fn(control: Handle, kind: i32) -> *mut QkControlObject,
    delete: extern "C" fn(object: *mut QkControlObject),
    flat_style_enabled: extern "C" fn() -> bool,
}

impl Library {
    fn load() -> Option<Library> {
        let name = if cfg!(target_pointer_width = "64") { "QkDlg64.dll" } else { "QkDlg32.dll" };
        let module = unsafe { LoadLibraryW(wide(name).as_ptr()) };
        if module.is_null() {
            return None;
        }
        let find = |name: &[u8]| {
            let function = unsafe { GetProcAddress(module, name.as_ptr()) };
            (!function.is_null()).then_some(function)
        };
        unsafe {
            Some(Library {
                create: std::mem::transmute(find(b"CreateQkCustomControl\0")?),
                delete: std::mem::transmute(find(b"DeleteQkCustomControl\0")?),
                flat_style_enabled: std::mem::transmute(find(b"FlatStyleEnabled\0")?),
            })
        }
    }
}

/// A flat control. The host owns it; it goes when the windows are gone. The pointer makes it stay on
/// its thread: it is neither Send nor Sync.
struct FlatControl {
    library: Library,
    object: *mut QkControlObject,
}

impl FlatControl {
    fn new(library: Library, control: Handle, kind: i32) -> FlatControl {
        FlatControl { library, object: (library.create)(control, kind) }
    }
}

impl Drop for FlatControl {
    fn drop(&mut self) {
        (self.library.delete)(self.object);
    }
}

thread_local! {
    static LIBRARY: RefCell<Option<Library>> = RefCell::new(None);
    static FLAT: RefCell<Vec<FlatControl>> = RefCell::new(Vec::new());
}

fn wide(text: &str) -> Vec<u16> {
    text.encode_utf16().chain(Some(0)).collect()
}

fn make_flat(dialog: Handle, library: Library) {
    let kinds = [
        (IDC_FILE, QK_EDIT),
        (IDC_OPEN, QK_CHECK_BOX),
        (IDOK, QK_BLUE_BUTTON),
        (IDCANCEL, QK_PUSH_BUTTON),
    ];
    for (id, kind) in kinds {
        // Not while FLAT is borrowed: making a control flat sends messages, which may come back here.
        let control = FlatControl::new(library, unsafe { GetDlgItem(dialog, id) }, kind);
        FLAT.with(|flat| flat.borrow_mut().push(control));
    }
}

// No panic may leave a callback, which is why the program is compiled with panic=abort.
extern "system" fn dialog_proc(dialog: Handle, message: u32, w: usize, _l: isize) -> isize {
    match message {
        WM_INITDIALOG => {
            match LIBRARY.with(|library| *library.borrow()) {
                Some(library) if (library.flat_style_enabled)() => make_flat(dialog, library),
                _ => {
                    unsafe { EndDialog(dialog, 0) };
                }
            }
            1
        }
        WM_COMMAND if w >> 16 == 0 => {
            let opens = unsafe { IsDlgButtonChecked(dialog, IDC_OPEN) } == 1;
            match (w & 0xffff) as i32 {
                IDOK => unsafe { EndDialog(dialog, if opens { 2 } else { 1 }) },
                IDCANCEL => unsafe { EndDialog(dialog, 3) },
                _ => return 0,
            };
            1
        }
        // Flat dialogs are white; in high contrast these colours follow the user's scheme.
        WM_CTLCOLORDLG | WM_CTLCOLORBTN => unsafe {
            SetTextColor(w as Handle, GetSysColor(COLOR_WINDOWTEXT));
            SetBkColor(w as Handle, GetSysColor(COLOR_WINDOW));
            GetSysColorBrush(COLOR_WINDOW) as isize
        },
        _ => 0,
    }
}

fn main() {
    LIBRARY.with(|library| *library.borrow_mut() = Library::load());
    let result = unsafe {
        // While this event exists the application as a whole wants flat dialogs.
        let flat_style = CreateEventW(null(), 1, 0, wide("VANTOR_DLG_STYLE_FLAT").as_ptr());
        let instance = GetModuleHandleW(null());
        let result = DialogBoxParamW(instance, IDD_EXPORT, null_mut(), dialog_proc, 0);
        // The windows are gone: now the objects may go.
        FLAT.with(|flat| flat.take().clear());
        CloseHandle(flat_style);
        result
    };
    std::process::exit(match result {
        1 => 0,
        2 => 2,
        3 => 1,
        _ => 3,
    });
}

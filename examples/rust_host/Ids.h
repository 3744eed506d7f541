/* Resource ids of the Rust host; RustHost.rs repeats them. */
#define IDD_EXPORT 100
#define IDC_FILE 1001
#define IDC_OPEN 1002

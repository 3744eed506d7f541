#include "support/Messages.h"

#include <map>
#include <sstream>

namespace QkDlgTest {

std::string messageName(UINT message) {
#define QKDLG_NAMED(name) \
    { name, #name }
    static const std::map<UINT, const char*> kNames{
        QKDLG_NAMED(WM_SETFOCUS),       QKDLG_NAMED(WM_KILLFOCUS),
        QKDLG_NAMED(WM_ENABLE),         QKDLG_NAMED(WM_SETTEXT),
        QKDLG_NAMED(WM_PAINT),          QKDLG_NAMED(WM_ERASEBKGND),
        QKDLG_NAMED(WM_PRINTCLIENT),    QKDLG_NAMED(WM_SIZE),
        QKDLG_NAMED(WM_KEYDOWN),        QKDLG_NAMED(WM_KEYUP),
        QKDLG_NAMED(WM_CHAR),           QKDLG_NAMED(WM_SYSKEYDOWN),
        QKDLG_NAMED(WM_SYSKEYUP),       QKDLG_NAMED(WM_COMMAND),
        QKDLG_NAMED(WM_TIMER),          QKDLG_NAMED(WM_HSCROLL),
        QKDLG_NAMED(WM_VSCROLL),        QKDLG_NAMED(WM_CTLCOLOREDIT),
        QKDLG_NAMED(WM_CTLCOLORBTN),    QKDLG_NAMED(WM_CTLCOLORDLG),
        QKDLG_NAMED(WM_CTLCOLORSTATIC), QKDLG_NAMED(WM_CTLCOLORLISTBOX),
        QKDLG_NAMED(WM_MOUSEMOVE),      QKDLG_NAMED(WM_CTLCOLORSCROLLBAR),
        QKDLG_NAMED(WM_LBUTTONDOWN),    QKDLG_NAMED(WM_LBUTTONUP),
        QKDLG_NAMED(WM_LBUTTONDBLCLK),  QKDLG_NAMED(WM_MOUSEWHEEL),
        QKDLG_NAMED(WM_MOUSELEAVE),     QKDLG_NAMED(WM_CAPTURECHANGED),
        QKDLG_NAMED(WM_NOTIFY),         QKDLG_NAMED(WM_NCDESTROY),
        QKDLG_NAMED(BM_SETSTATE),       QKDLG_NAMED(BM_SETCHECK),
        QKDLG_NAMED(BM_CLICK),          QKDLG_NAMED(WM_UPDATEUISTATE),
    };
#undef QKDLG_NAMED
    if (const auto known = kNames.find(message); known != kNames.end())
        return known->second;
    std::ostringstream number;
    number << "message 0x" << std::hex << message;
    return number.str();
}

}  // namespace QkDlgTest

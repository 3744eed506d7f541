#include "pictures/Stage.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "QkUtil/Handles.h"
#include "QkUtil/Metrics.h"

namespace QkPictures {
namespace {

// Frames and rings stand outside their controls.
constexpr int kMargin = 6;
constexpr int kPlace = 40;
constexpr int kFontPoints = 9;
constexpr wchar_t kFontFace[] = L"Segoe UI";
constexpr int kPointsPerInch = 72;
// Waits in a row in which nothing comes: longer than the ticks of a fade are apart, and longer
// still on a busy machine.
constexpr DWORD kWait = 5;
constexpr int kMouseWaits = 5;
constexpr int kWaits = 1;
// A press that is held repeats for ever.
constexpr ULONGLONG kPatience = 150;
constexpr int kFadeTicks = 12;
constexpr UINT kSystemTimer = 0x118;
constexpr int kWhole = 100;

/// A template without controls; its font says how large a dialog unit is.
struct EmptyDialog {
    DLGTEMPLATE head{};
    WORD menuClassTitle[3]{};
    WORD points = kFontPoints;
    WCHAR face[std::size(kFontFace)]{};
};

// Flat dialogs are white; in high contrast the ground is the scheme's.
INT_PTR CALLBACK answer(HWND, UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_CTLCOLORDLG)
        return FALSE;
    const auto dc = reinterpret_cast<HDC>(wParam);
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
}

HWND createDialog(bool mirrored, int width, int height) {
    EmptyDialog box;
    box.head.style = WS_POPUP | WS_CLIPCHILDREN | DS_SETFONT;
    box.head.dwExtendedStyle = mirrored ? WS_EX_LAYOUTRTL : 0;
    HWND dialog =
        CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &box.head, nullptr, answer, 0);
    SetWindowPos(dialog, nullptr, kPlace, kPlace, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    return dialog;
}

void sendButton(DWORD flag) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flag;
    SendInput(1, &input, sizeof input);
}

void parkMouse() {
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
}

/// A fade runs to its end at its first tick, however slow the machine.
void dispatch(const MSG& message) {
    const bool isCallback = message.message == WM_TIMER && message.lParam != 0;
    for (int i = isCallback ? kFadeTicks : 1; i > 0; --i)
        DispatchMessageW(&message);
}

HWND comboList(HWND combo) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    return GetComboBoxInfo(combo, &info) ? info.hwndList : nullptr;
}

/// The window as it stands on the screen, drawn over the picture of the dialog.
void addWindow(HBITMAP picture, HWND dialog, HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    RECT origin{};
    GetWindowRect(dialog, &origin);
    const QkDlg::WholeWindowDc source(window);
    SetLayout(source.get(), 0);
    const QkDlg::MemoryDc target(CreateCompatibleDC(source.get()));
    const QkDlg::Selection selected(target.get(), picture);
    BitBlt(target.get(), place.left - origin.left, place.top - origin.top, place.right - place.left,
           place.bottom - place.top, source.get(), 0, 0, SRCCOPY);
}

}  // namespace

HFONT stageFont() {
    static const QkDlg::UniqueFont font(
        CreateFontW(-MulDiv(kFontPoints, QkDlg::screenDpiY(), kPointsPerInch), 0, 0, 0, FW_NORMAL,
                    FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                    DEFAULT_QUALITY, DEFAULT_PITCH, kFontFace));
    return font.get();
}

int stageMargin() {
    return QkDlg::scaled(kMargin);
}

Stage::Stage(const ControlType& type, const Specimen& specimen, const Column& column) {
    const QkDlg::Size size = specimen.size.width ? specimen.size : type.size;
    const int below = column.state == State::Open ? type.roomBelow : 0;
    dialog_ = createDialog(specimen.mirrored,
                           QkDlg::scaled(size.width + type.roomBeside) + 2 * stageMargin(),
                           QkDlg::scaled(size.height + below) + 2 * stageMargin());
    parkMouse();
    // Something else has the focus, and the control comes last, so that it never had it.
    HWND other = CreateWindowExW(0, WC_STATICW, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, dialog_,
                                 nullptr, GetModuleHandleW(nullptr), nullptr);
    ShowWindow(dialog_, SW_SHOW);
    SetFocus(other);
    addControl(type, specimen);
    if (column.begin)
        column.begin(control_);
    flat_ = specimen.make ? specimen.make() : type.make();
    flat_->Attach(control_);
    if (column.state == State::Disabled)
        EnableWindow(control_, FALSE);
    if (specimen.show)
        specimen.show(control_);
    bringInto(column);
}

Stage::~Stage() {
    parkMouse();
    if (pressed_)
        sendButton(MOUSEEVENTF_LEFTUP);
    if (list_)
        SendMessageW(control_, CB_SHOWDROPDOWN, FALSE, 0);
    if (pressed_ || list_)
        settle(kWaits);
    DestroyWindow(dialog_);
}

void Stage::addControl(const ControlType& type, const Specimen& specimen) {
    const QkDlg::Size size = specimen.size.width ? specimen.size : type.size;
    control_ = CreateWindowExW(type.exStyle, type.className, specimen.text,
                               WS_CHILD | WS_VISIBLE | type.style | specimen.style, stageMargin(),
                               stageMargin(), QkDlg::scaled(size.width),
                               QkDlg::scaled(size.height + type.listHeight), dialog_,
                               reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kControlId)),
                               GetModuleHandleW(nullptr), nullptr);
    SetWindowFont(control_, stageFont(), FALSE);
    if (specimen.fill)
        specimen.fill(control_);
}

void Stage::bringInto(const Column& column) {
    switch (column.state) {
        case State::Hot: moveMouse(column.mouse); break;
        case State::Pressed:
            moveMouse(column.mouse);
            settle(kWaits);
            sendButton(MOUSEEVENTF_LEFTDOWN);
            pressed_ = true;
            break;
        case State::Focused: focus(); break;
        case State::Open:
            focus();
            SendMessageW(control_, CB_SHOWDROPDOWN, TRUE, 0);
            list_ = comboList(control_);
            break;
        default: break;
    }
    const bool byMouse = column.state == State::Hot || pressed_;
    settle(byMouse ? kMouseWaits : kWaits);
    if (column.end) {
        column.end(control_);
        settle(kWaits);
    }
    // It blinks.
    HideCaret(nullptr);
}

void Stage::moveMouse(Spot spot) const {
    RECT rect{};
    GetWindowRect(control_, &rect);
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    // Spots go along the control.
    if (height > width && (GetWindowStyle(control_) & SBS_VERT) != 0)
        std::swap(spot.x, spot.y);
    if ((GetWindowExStyle(dialog_) & WS_EX_LAYOUTRTL) != 0)
        spot.x = kWhole - spot.x;
    SetCursorPos(rect.left + MulDiv(width, spot.x, kWhole),
                 rect.top + MulDiv(height, spot.y, kWhole));
}

void Stage::focus() const {
    SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control_), TRUE);
}

void Stage::settle(int quietWaits) {
    const ULONGLONG start = GetTickCount64();
    int quiet = 0;
    while (quiet < quietWaits && GetTickCount64() < start + kPatience) {
        MSG message{};
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            const DWORD end = MsgWaitForMultipleObjects(0, nullptr, FALSE, kWait, QS_ALLINPUT);
            quiet += end == WAIT_TIMEOUT ? 1 : 0;
            continue;
        }
        dispatch(message);
        // The system's own looks where the mouse is.
        if (message.message != kSystemTimer)
            quiet = 0;
    }
}

QkDlgTools::UniquePicture Stage::picture() const {
    QkDlgTools::UniquePicture picture = QkDlgTools::capturedClient(dialog_);
    if (picture && list_)
        addWindow(picture.get(), dialog_, list_);
    return picture;
}

}  // namespace QkPictures

#include "QkDlg/QkFlatPassword.h"

#include <utility>

#include "QkCustCtrl/EditLayout.h"
#include "QkCustCtrl/EyeTooltip.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Bitmaps.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"
#include "QkUtil/Resources.h"

namespace QkDlg {

namespace {

/// Window property by which other code recognises eye buttons.
constexpr wchar_t kEyeProperty[] = L"QK_EDIT_IMGBTN";

constexpr UINT kFirstMaskedBitmap = 62248;
constexpr UINT kFirstRevealedBitmap = 62256;

constexpr WPARAM kMaskCharacter = L'*';
constexpr COLORREF kDisabledEye = RGB(0xF0, 0xF0, 0xF0);
constexpr COLORREF kNoEye = RGB(0xFF, 0xFF, 0xFF);

bool hasStyle(HWND hwnd, LONG_PTR style) {
    return (GetWindowLongPtrW(hwnd, GWL_STYLE) & style) != 0;
}

/// The living password box of `referenceData` whose eye button is `eye`.
QkFlatPassword* passwordOfEye(HWND eye, DWORD_PTR referenceData) {
    auto* const password = dynamic_cast<QkFlatPassword*>(LiveControls::find(referenceData));
    const bool fits = password && password->GetWindow() && password->GetEyeButton() == eye;
    return fits ? password : nullptr;
}

void putCaretAtEnd(HWND edit) {
    const int length = GetWindowTextLengthW(edit);
    SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(length), length);
}

/// Masks the text or shows it, on the screen as well. May run the host's code.
void setMask(HWND edit, bool masked) {
    SendMessageW(edit, EM_SETPASSWORDCHAR, masked ? kMaskCharacter : 0, 0);
    SetWindowPos(edit, nullptr, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    // Giving the focus to the dialog and taking it back would redraw the edit too. But a dialog
    // hands the focus on to its first control, which then selects its text and notifies the host.
    RedrawWindow(edit, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

}  // namespace

QkFlatPassword::QkFlatPassword(UINT id, std::wstring_view cueText) : QkFlatEdit(id, cueText) {}

QkFlatPassword::~QkFlatPassword() {
    LeaveWindow();
}

void QkFlatPassword::LeaveWindow() {
    // Nobody could mask a revealed text any more. One that was shown for good stays shown.
    const bool masks = m_hWnd && m_revealed && m_eyeEnabled;
    m_eyeEnabled = false;
    if (masks)
        setMask(m_hWnd, true);
    DestroyHelpers();
    Release();
}

// Revealing and masking

void QkFlatPassword::ToggleReveal() {
    if (!m_eyeEnabled || !m_hWnd)
        return;
    const HWND edit = m_hWnd;
    const bool reveal = !m_revealed;
    if (!reveal) {
        // Before the focus changes, as that runs the host's code with the text still to be seen.
        m_revealed = false;
        setMask(edit, true);
        if (IsBound(this, edit))
            SetFocus(edit);
        return;
    }
    SetFocus(edit);
    if (!IsBound(this, edit) || !m_eyeEnabled)
        return;
    m_revealed = true;
    setMask(edit, false);
}

// Brings the reveal state in line when somebody else changed the edit's password character.
// Painting does this, and must not take the keyboard away from where the user is.
void QkFlatPassword::Resynchronise() {
    const bool masked = hasStyle(m_hWnd, ES_PASSWORD);
    if (masked != m_revealed)
        return;
    m_revealed = !masked;
    setMask(m_hWnd, masked);
}

void QkFlatPassword::TurnEyeOff() {
    const HWND edit = m_hWnd;
    m_eyeEnabled = false;
    if (m_eyeButton) {
        BlankEye(WindowDc(m_eyeButton).get(), kNoEye);
        SetEyeAvailable(false);
        if (!IsBound(this, edit))
            return;
    }
    setMask(edit, false);
}

void QkFlatPassword::OnLButtonDown(int, int) {
    const HWND edit = m_hWnd;
    m_refocusPending = true;
    ToggleReveal();
    if (IsBound(this, edit) && m_eyeButton)
        InvalidateRect(m_eyeButton, nullptr, FALSE);
}

// Painting

void QkFlatPassword::SetEyeAvailable(bool available) {
    const HWND edit = m_hWnd;
    const HWND eye = m_eyeButton;
    if (hasStyle(eye, WS_VISIBLE) == available && hasStyle(eye, WS_DISABLED) != available)
        return;
    // An eye that goes with the focus passes it on.
    ShowWindow(eye, available ? SW_SHOWNA : SW_HIDE);
    EnableWindow(eye, available);
    if (IsBound(this, edit))
        RefreshFrame();
}

void QkFlatPassword::BlankEye(HDC hdc, COLORREF colour) {
    fillRect(hdc, clientRect(m_eyeButton), colour);
}

void QkFlatPassword::PaintEye(HDC hdc) {
    if (!m_eyeEnabled || !m_eyeButton || !IsWindowVisible(m_hWnd))
        return;
    const HWND edit = m_hWnd;
    Resynchronise();
    if (!IsBound(this, edit) || !m_eyeButton)
        return;
    m_eyeLook = WantedLook();
    if (m_eyeLook == EyeLook::Blank) {
        BlankEye(hdc, kDisabledEye);
        SetEyeAvailable(false);
        return;
    }
    SetEyeAvailable(true);
    if (IsBound(this, edit) && m_eyeButton)
        DrawEye(hdc);
}

void QkFlatPassword::PaintEyeNow() {
    if (m_eyeButton)
        PaintEye(WindowDc(m_eyeButton).get());
}

void QkFlatPassword::PrintEye(HDC hdc) {
    const HWND edit = m_hWnd;
    PaintEye(hdc);
    // What the screen shows is another matter.
    if (IsBound(this, edit))
        m_eyeLook = EyeLook::Unknown;
}

QkFlatPassword::EyeLook QkFlatPassword::WantedLook() const {
    if (hasStyle(m_hWnd, WS_DISABLED))
        return EyeLook::Blank;
    return m_revealed ? EyeLook::Revealed : EyeLook::Masked;
}

// Each paint of the edit looks after the eye, which as a rule shows what it should already.
void QkFlatPassword::RenewEye() {
    if (!m_eyeEnabled || !m_eyeButton || !IsWindowVisible(m_hWnd))
        return;
    const HWND edit = m_hWnd;
    Resynchronise();
    if (!IsBound(this, edit) || !m_eyeButton)
        return;
    const EyeLook wanted = WantedLook();
    const bool available = wanted != EyeLook::Blank;
    if (wanted != m_eyeLook || hasStyle(m_eyeButton, WS_VISIBLE) != available ||
        hasStyle(m_eyeButton, WS_DISABLED) == available)
        PaintEyeNow();
}

void QkFlatPassword::DrawEye(HDC hdc) {
    const UINT first = m_revealed ? kFirstRevealedBitmap : kFirstMaskedBitmap;
    const UniqueBitmap bitmap = LoadBitmapResource(first + dpiBucket(screenDpi()));
    const MemoryDc memory(CreateCompatibleDC(hdc));
    const Selection selected(memory.get(), bitmap.get());
    if (selected.failed())
        return;
    const RECT client = clientRect(m_eyeButton);
    const Size size = bitmapSize(bitmap.get());
    // A mirrored DC would turn the picture round.
    const DWORD layout = SetLayout(hdc, 0);
    const int mode = SetStretchBltMode(hdc, HALFTONE);
    SetBrushOrgEx(hdc, 0, 0, nullptr);
    StretchBlt(hdc, 0, 0, client.right, client.bottom, memory.get(), 0, 0, size.width, size.height,
               SRCCOPY);
    SetStretchBltMode(hdc, mode);
    SetLayout(hdc, layout);
}

// The place of an eye that is not shown belongs to the edit: it gets the same ground.
void QkFlatPassword::PaintFrameInside(HDC hdc) {
    if (!m_eyeButton || hasStyle(m_eyeButton, WS_VISIBLE))
        return;
    const RECT place = windowRectIn(m_eyeButton, m_frameWindow);
    FillRect(hdc, &place, GroundBrush(hdc));
}

// Following the edit

void QkFlatPassword::OnMove(int x, int y) {
    if (!m_frameWindow)
        return;
    const Rect frame = fromWin32(windowRectIn(m_frameWindow, GetParent(m_hWnd)));
    QkFlatEdit::OnMove(x, y);
    if (m_eyeButton) {
        SetWindowPos(m_eyeButton, nullptr, x + frame.width() - frame.height(), y, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        InvalidateRect(m_eyeButton, nullptr, FALSE);
    }
}

void QkFlatPassword::FollowEdit() {
    const Rect edit = fromWin32(windowRectIn(m_hWnd, GetParent(m_hWnd)));
    const HWND eye = m_eyeButton;
    Place(m_frameWindow, toWin32(frameRectAround(edit, m_frameWidth, true)));
    Place(eye, toWin32(eyeRect(edit)));
}

void QkFlatPassword::ShowFrame(WPARAM show) {
    const bool shown = show == 1;
    const bool eyeShown = shown && m_eyeEnabled;
    const HWND eye = m_eyeButton;
    QkFlatEdit::ShowFrame(shown ? 1 : 0);
    if (eye)
        ShowWindow(eye, eyeShown ? SW_SHOW : SW_HIDE);
}

// Keyboard

void QkFlatPassword::OnKey(WPARAM key, bool repeated) {
    const auto isDown = [](int virtualKey) { return GetKeyState(virtualKey) < 0; };
    if ((key != VK_MENU && key != VK_F8) || !isDown(VK_MENU) || !isDown(VK_F8))
        return;
    const HWND edit = m_hWnd;
    // Held down, the keys would let the password blink.
    if (!repeated)
        ToggleReveal();
    if (IsBound(this, edit))
        PaintEyeNow();
    if (IsBound(this, edit))
        TakeFocusBack();
}

void QkFlatPassword::TakeFocusBack() {
    const HWND edit = m_hWnd;
    putCaretAtEnd(edit);
    SetFocus(edit);
}

// Messages

LRESULT CALLBACK QkFlatPassword::PasswordProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                              UINT_PTR, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    auto* const password = livingControl<QkFlatPassword>(hwnd, referenceData);
    if (id == WM_NCDESTROY) {
        if (password) {
            password->Detach();
            password->DestroyHelpers();
        }
        return PassOnLast(message);
    }
    if (!password)
        return message.passOn();

    switch (id) {
        case WM_PAINT:
            password->RenewEye();
            if (!livingControl<QkFlatPassword>(hwnd, referenceData))
                break;
            return password->HandleCommon(message);
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN: password->OnKey(wParam, (HIWORD(lParam) & KF_REPEAT) != 0); break;
        case kTurnEyeOff: password->TurnEyeOff(); break;
        default: return password->HandleCommon(message);
    }
    return message.passOn();
}

LRESULT CALLBACK QkFlatPassword::EyeProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, EyeProc, subclassId);
        auto* const owner = dynamic_cast<QkFlatPassword*>(LiveControls::find(referenceData));
        if (owner && owner->m_eyeButton == hwnd)
            owner->m_eyeButton = nullptr;
        return message.passOn();
    }
    QkFlatPassword* const password = passwordOfEye(hwnd, referenceData);
    if (!password)
        return message.passOn();

    switch (id) {
        // Only now, as most boxes never need it.
        case WM_MOUSEMOVE: giveEyeTooltip(password->m_tooltipWindow, hwnd); break;
        case WM_LBUTTONDOWN: password->OnLButtonDown(message.x(), message.y()); break;
        // The standard button's click ends here: the host knows no such button.
        case WM_LBUTTONUP:
            if (GetCapture() == hwnd)
                ReleaseCapture();
            return 0;
        case WM_LBUTTONDBLCLK:
            password->m_refocusPending = true;
            InvalidateRect(hwnd, nullptr, FALSE);
            break;
        case WM_PAINT: {
            {
                // The standard button asks the host for colours as it erases itself.
                const PaintDc paint(hwnd);
                if (auto* const still = passwordOfEye(hwnd, referenceData))
                    still->PaintEye(paint.get());
            }
            if (passwordOfEye(hwnd, referenceData) && password->m_refocusPending) {
                password->m_refocusPending = false;
                password->TakeFocusBack();
            }
            return 0;
        }
        case WM_PRINTCLIENT: password->PrintEye(reinterpret_cast<HDC>(wParam)); return 1;
        // The standard button draws at once.
        case BM_SETSTATE:
        case BM_SETSTYLE:
        case WM_SETTEXT:
        case WM_SETFOCUS:
        case WM_KILLFOCUS: {
            const LRESULT result = message.passOn();
            if (passwordOfEye(hwnd, referenceData))
                password->PaintEyeNow();
            return result;
        }
        case WM_CLOSE: DestroyWindow(hwnd); break;
        default: break;
    }
    return message.passOn();
}

// Attach

void QkFlatPassword::CreateEye() {
    m_eyeButton = CreateHelper(WS_EX_TRANSPARENT, WC_BUTTONW, WS_CHILD,
                               toWin32(eyeRect(fromWin32(m_frameRect))), kEyeProperty);
    if (!m_eyeButton)
        return;
    PutBehind(m_eyeButton);
    if (StartsShown())
        ShowHelper(m_eyeButton);
    installSubclass(m_eyeButton, EyeProc, *this);
}

void QkFlatPassword::DestroyHelpers() {
    const HWND tooltip = std::exchange(m_tooltipWindow, nullptr);
    const HWND eye = std::exchange(m_eyeButton, nullptr);
    const HWND frame = std::exchange(m_frameWindow, nullptr);
    leaveEyeTooltip(tooltip, eye);
    // The host hears of each end, and may delete this object meanwhile.
    DestroyHelper(eye);
    DestroyHelper(frame);
}

void QkFlatPassword::Attach(HWND hwnd) {
    LeaveWindow();
    m_revealed = false;
    m_refocusPending = false;
    m_eyeEnabled = true;
    Prepare(hwnd);
    CreateFrame(true);
    CreateEye();
    m_tooltipWindow = joinEyeTooltip(GetParent(hwnd));
    // Masked before it is painted.
    SendMessageW(hwnd, EM_SETPASSWORDCHAR, kMaskCharacter, 0);
    installSubclass(hwnd, PasswordProc, *this);
    // The new eye is going to be painted anyway.
    m_eyeLook = WantedLook();
    ShowNewLook();
}

}  // namespace QkDlg

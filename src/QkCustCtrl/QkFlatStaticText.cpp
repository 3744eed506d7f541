#include "QkDlg/QkFlatStaticText.h"

#include <optional>

#include "QkCustCtrl/FitText.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/ParentColours.h"
#include "QkCustCtrl/StaticTextProc.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"
#include "QkUtil/SpareDc.h"

namespace QkDlg {

namespace {

/// Paints the label afresh together with what lies behind it and behind where it was `before`, in
/// its parent: it has no ground of its own, so a new text would stand on top of the old one.
void repaintWithGround(HWND hwnd, const RECT& before = {}) {
    const HWND parent = GetParent(hwnd);
    if (!parent || !IsWindowVisible(hwnd))
        return;
    const RECT now = windowRectIn(hwnd, parent);
    RECT area{};
    UnionRect(&area, &now, &before);
    RedrawWindow(parent, &area, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

/// The text of WM_SETTEXT; a window made by an ANSI program gets ANSI text here.
std::wstring textToSet(const Message& message) {
    if (!message.lParam)
        return {};
    if (IsWindowUnicode(message.hwnd))
        return reinterpret_cast<const wchar_t*>(message.lParam);
    const auto* const bytes = reinterpret_cast<const char*>(message.lParam);
    const int size = MultiByteToWideChar(CP_ACP, 0, bytes, -1, nullptr, 0);
    if (size <= 0)
        return {};
    std::wstring text(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes, -1, text.data(), size);
    text.pop_back();  // the closing zero
    return text;
}

/// The DrawText flags by which the standard control draws its text; nothing for a static that
/// shows no text, and for one that cuts it with an ellipsis, which is left to the standard control.
std::optional<UINT> textFormat(HWND hwnd) {
    const LONG_PTR style = GetWindowLongPtrW(hwnd, GWL_STYLE);
    const LONG_PTR type = style & SS_TYPEMASK;
    const bool showsText = type == SS_LEFT || type == SS_CENTER || type == SS_RIGHT ||
                           type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP;
    if (!showsText || (style & SS_ELLIPSISMASK))
        return std::nullopt;
    const UINT prefix = (style & SS_NOPREFIX) ? DT_NOPREFIX : 0;
    if (type == SS_SIMPLE)
        return DT_LEFT | DT_SINGLELINE | prefix;

    const UINT alignment = type == SS_CENTER ? DT_CENTER : type == SS_RIGHT ? DT_RIGHT : DT_LEFT;
    const UINT line = (style & SS_CENTERIMAGE)    ? DT_SINGLELINE | DT_VCENTER
                      : type == SS_LEFTNOWORDWRAP ? 0
                                                  : DT_WORDBREAK;
    return alignment | DT_EXPANDTABS | prefix | line;
}

LRESULT passOnThenRepaint(const Message& message) {
    // A picture gives the window its size.
    const RECT before = windowRectIn(message.hwnd, GetParent(message.hwnd));
    LRESULT result = 0;
    {
        const DrawingOff off(message.hwnd);
        result = message.passOn();
    }
    repaintWithGround(message.hwnd, before);
    return result;
}

LRESULT setText(QkFlatStaticText& label, const Message& message) {
    LRESULT result = 0;
    {
        // Nobody sees the old text in all the sizes on the way down, nor a fill in a colour that
        // the dialog need not have.
        const DrawingOff off(message.hwnd);
        label.FitText(textToSet(message));
        label.FillGround();
        result = message.passOn();
    }
    repaintWithGround(message.hwnd);
    return result;
}

}  // namespace

QkFlatStaticText::QkFlatStaticText(UINT id) : QkFlatStaticText(id, {}, 0, RGB(0, 0, 0)) {}

QkFlatStaticText::QkFlatStaticText(UINT id, std::wstring_view fontFace, int fontSize,
                                   COLORREF textColour)
    : QkCustomControl(id, nullptr, fontFace, fontSize) {
    m_clrText = textColour;
    m_clrBk = RGB(255, 255, 255);
}

QkFlatStaticText::~QkFlatStaticText() = default;

// Painting

HBRUSH QkFlatStaticText::OnCtlColor(HDC hdc, HWND hwnd) {
    ::SetTextColor(hdc, IsWindowEnabled(hwnd) ? GetTextColor() : GetDisabledTextColor());
    return QkCustomControl::OnCtlColor(hdc, hwnd);
}

void QkFlatStaticText::DrawFocus(HDC) {}

bool QkFlatStaticText::DrawsItself() const {
    return !IsWindowEnabled(m_hWnd) && textFormat(m_hWnd).has_value();
}

void QkFlatStaticText::PaintDisabled(HDC hdc) {
    const HWND label = m_hWnd;
    RECT client = clientRect(label);
    const std::wstring text = GetText();
    const UINT format =
        textFormat(label).value_or(0) | (TextFlags(text) & (DT_HIDEPREFIX | DT_RTLREADING));
    // The host answers, and may end the label: the object is not touched any more.
    const LRESULT ground =
        SendMessageW(GetParent(label), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(hdc),
                     reinterpret_cast<LPARAM>(label));
    FillRect(hdc, &client, reinterpret_cast<HBRUSH>(ground));
    const Selection font(hdc, reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)));
    ::SetTextColor(hdc, GetDisabledTextColor());
    DrawTextW(hdc, text.c_str(), static_cast<int>(text.size()), &client, format);
}

void QkFlatStaticText::FillGround() {
    const WindowDc window(m_hWnd);
    fillRect(window.get(), clientRect(m_hWnd), GetBkColor());
}

// Fitting

void QkFlatStaticText::UseFont() {
    SendMessageW(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(ControlFont()), FALSE);
}

void QkFlatStaticText::FitText(const std::wstring& text) {
    if (text.empty())
        return;
    RECT window{};
    GetWindowRect(m_hWnd, &window);
    const SpareDc dc;
    const auto measure = [&](int pointSize) {
        // The lowered size stays for the texts to come.
        if (pointSize != m_nFontSize) {
            m_nFontSize = pointSize;
            UseFont();
        }
        const Selection selected(dc.get(), ControlFont());
        RECT measured = window;
        DrawTextW(dc.get(), text.c_str(), static_cast<int>(text.size()), &measured, DT_CALCRECT);
        const Rect box = fromWin32(measured);
        return Size{box.width(), box.height()};
    };
    const Rect box = fromWin32(window);
    const Size old{box.width(), box.height()};
    const FittedText fitted = fitText(m_nFontSize, old, screenDpi(), measure);
    if (fitted.window != old) {
        SetWindowPos(m_hWnd, nullptr, 0, 0, fitted.window.width, fitted.window.height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

// Messages

LRESULT CALLBACK staticTextProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    auto* const label = livingControl<QkFlatStaticText>(hwnd, referenceData);
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, staticTextProc, subclassId);
        if (label)
            label->Detach();
        return message.passOn();
    }
    if (!label)
        return message.passOn();

    switch (id) {
        case WM_SETTEXT: return setText(*label, message);
        // Each of these makes the standard control draw at once, over what it drew before.
        case WM_ENABLE:
        case WM_SETFONT:
        case WM_UPDATEUISTATE:
        case STM_SETICON:
        case STM_SETIMAGE: return passOnThenRepaint(message);
        // The standard control paints its ground along with its text, too, and passing a message
        // on has its price.
        case WM_ERASEBKGND: return 1;
        case WM_NCPAINT: return isAllClient(hwnd) ? 0 : message.passOn();
        // Disabled text is drawn by the standard control in the system's grey, whatever colour it
        // is told, and so it would differ from all other flat controls.
        case WM_PAINT:
            if (!label->DrawsItself())
                return message.passOn();
            label->PaintDisabled(PaintDc(hwnd).get());
            return 0;
        case WM_PRINTCLIENT:
            if (!label->DrawsItself())
                return message.passOn();
            label->PaintDisabled(reinterpret_cast<HDC>(wParam));
            return 0;
        default: return message.passOn();
    }
}

// Attach

void QkFlatStaticText::Attach(HWND hwnd) {
    QkCustomControl::Attach(hwnd);
    SetWindowLongPtrW(hwnd, GWL_EXSTYLE, GetWindowLongPtrW(hwnd, GWL_EXSTYLE) | WS_EX_TRANSPARENT);
    UseFont();
    FitText(GetText());
    installSubclass(hwnd, staticTextProc, *this);
    answerColoursForParent(*this);
    repaintWithGround(hwnd);
}

}  // namespace QkDlg

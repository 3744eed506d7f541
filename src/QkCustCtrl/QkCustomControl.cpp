#include "QkDlg/QkCustomControl.h"

#include <algorithm>
#include <array>

#include "QkCustCtrl/CaptionLayout.h"
#include "QkCustCtrl/FocusRect.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/ParentColours.h"
#include "QkDlg/DialogFonts.h"
#include "QkUtil/Bitmaps.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Handles.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"
#include "QkXML/DialogDefaults.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNoFont{"src/QkCustCtrl", 150};
constexpr int kFocusInset = 2;
constexpr int kFallbackFontSize = 9;

// Stock object 8 is a pen. Handed out as a brush it fills nothing, so the parent paints no ground
// behind the control.
constexpr int kFillsNothing = NULL_PEN;

CaptionBox captionBox(const RECT& bounds, UINT flags) {
    CaptionBox box{fromWin32(bounds), captionPadding()};
    box.wordBreak = (flags & DT_WORDBREAK) != 0;
    box.horizontal = (flags & DT_CENTER)  ? Horizontal::Centre
                     : (flags & DT_RIGHT) ? Horizontal::Right
                                          : Horizontal::Left;
    box.vertical = (flags & DT_VCENTER)  ? Vertical::Centre
                   : (flags & DT_BOTTOM) ? Vertical::Bottom
                                         : Vertical::Top;
    return box;
}

bool uiStateHas(HWND hwnd, LRESULT flag) {
    return (SendMessageW(hwnd, WM_QUERYUISTATE, 0, 0) & flag) != 0;
}

}  // namespace

const std::array<COLORREF QkCustomControl::*, 3> QkCustomControl::kFollowers{
    &QkCustomControl::m_clrHover, &QkCustomControl::m_clrBk, &QkCustomControl::m_clrPressed};

QkCustomControl::QkCustomControl(UINT id, const UINT32* imageIds, std::wstring_view fontFace,
                                 int fontSize)
    : m_nId(id), m_images(imageIds), m_fontFace(fontFace), m_nFontSize(fontSize) {
    LiveControls::add(*this);
    FollowTable(&QkCustomControl::m_clrHover, UICLR_HOVER);
}

QkCustomControl::~QkCustomControl() {
    stopAnsweringColours(*this);
    LiveControls::remove(*this);
}

void QkCustomControl::OnReserved1() {}

void QkCustomControl::Attach(HWND hwnd) {
    stopAnsweringColours(*this);
    m_hWnd = hwnd;
    m_standardProc = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(hwnd, GWLP_WNDPROC));
    // An object may be bound again: nothing is left of the last window's mouse.
    m_bPressed = false;
    ForgetGivenFont();
    m_clrAnim = kNoColor;
    m_clrCurBorder = m_clrBorder;
    if (GetFontFace().empty()) {
        m_fontFace = FontFace(defaultFontFace());
        if (m_nFontSize == 0)
            m_nFontSize = defaultFontSize();
    }
    if (m_nFontSize == 0)
        m_nFontSize = kFallbackFontSize;
    m_bWordEllipsis = false;
}

HBRUSH QkCustomControl::OnCtlColor(HDC hdc, HWND hwnd) {
    const bool transparent = (GetWindowLongPtrW(hwnd, GWL_EXSTYLE) & WS_EX_TRANSPARENT) != 0;
    if (!transparent || IsHighContrast())
        return nullptr;
    SetBkMode(hdc, TRANSPARENT);
    return static_cast<HBRUSH>(GetStockObject(kFillsNothing));
}

bool QkCustomControl::QueryReserved4(LPARAM) {
    return false;
}
bool QkCustomControl::QueryReserved5(LPARAM) {
    return false;
}
void QkCustomControl::OnMove(int, int) {}
void QkCustomControl::OnReserved7(UINT, UINT) {}
void QkCustomControl::OnSetCheck(bool) {}

void QkCustomControl::Refresh() {
    // A window that is shown later is painted whole then.
    if (m_hWnd && IsWindowVisible(m_hWnd))
        InvalidateRect(m_hWnd, nullptr, FALSE);
}

void QkCustomControl::OnReserved10() {}
int QkCustomControl::OnAnimateColor(COLORREF) {
    return 0;
}
COLORREF QkCustomControl::GetConfiguredTextColor() {
    return m_clrText;
}

COLORREF QkCustomControl::GetTextColor() {
    return IsHighContrast() ? GetSysColor(COLOR_WINDOWTEXT) : m_clrText;
}

COLORREF QkCustomControl::GetConfiguredBkColor() {
    return m_clrBk;
}

COLORREF QkCustomControl::GetBkColor() {
    if (IsHighContrast())
        return GetSysColor(COLOR_WINDOW);
    COLORREF colour = m_clrBk;
    if (m_bPressed)
        colour = m_clrPressed;
    else if (m_clrAnim != kNoColor)
        colour = m_clrAnim;
    return colour == kNoColor ? GetParentBkColor(m_hWnd) : colour;
}

COLORREF QkCustomControl::GetHoverColor() {
    return m_clrHover;
}
COLORREF QkCustomControl::GetPressedColor() {
    return m_clrPressed;
}
COLORREF QkCustomControl::GetBorderColor() {
    return m_clrBorder;
}
COLORREF QkCustomControl::GetHotBorderColor() {
    return m_clrHotBorder;
}
void QkCustomControl::UpdateImage() {}
int QkCustomControl::GetContentWidth() {
    return 0;
}
void QkCustomControl::OnMouseMove(int, int) {}
void QkCustomControl::OnLButtonDown(int, int) {}
void QkCustomControl::OnLButtonUp(int, int) {}
void QkCustomControl::OnMouseLeave() {}

void QkCustomControl::DrawImage(HDC hdc, HBITMAP bitmap, int x, int y) {
    PrepareGlyphForState(bitmap, IsWindowEnabled(m_hWnd) != FALSE);
    DrawBitmap(hdc, bitmap, x, y);
}

void QkCustomControl::DrawFocus(HDC hdc) {
    if (!m_hWnd || GetFocus() != m_hWnd || uiStateHas(m_hWnd, UISF_HIDEFOCUS))
        return;
    CalcFocusRect();
    if (!hasArea(fromWin32(m_rcFocus)))
        return;
    // The dots are a pattern in the DC's colours.
    ::SetTextColor(hdc, RGB(0, 0, 0));
    ::SetBkColor(hdc, RGB(255, 255, 255));
    DrawFocusRect(hdc, &m_rcFocus);
}

void QkCustomControl::CalcFocusRect() {
    const int inset = scaled(kFocusInset);
    if (m_bExplicitFocusRect) {
        m_rcFocus = toWin32(focusRectAround(fromWin32(m_rcItem), fromWin32(m_rcClip), inset));
        return;
    }
    m_rcFocus = windowRectIn(m_hWnd, m_hWnd);
    InflateRect(&m_rcFocus, -inset, -inset);
}

void QkCustomControl::Detach() {
    stopAnsweringColours(*this);
    m_hWnd = nullptr;
}

void QkCustomControl::SetFont(std::wstring_view face, int size, int weight) {
    m_fontFace = FontFace(face);
    m_nFontSize = size;
    m_nFontWeight = weight;
}

HFONT QkCustomControl::ControlFont() const {
    return GetFont(m_nFontSize, GetFontFace(), m_nFontWeight, 0);
}

COLORREF QkCustomControl::StateTextColor() {
    return IsWindowEnabled(m_hWnd) ? GetTextColor() : GetDisabledTextColor();
}

void QkCustomControl::FollowTable(COLORREF QkCustomControl::*field, UiColor index) {
    const auto place =
        static_cast<std::size_t>(std::ranges::find(kFollowers, field) - kFollowers.begin());
    this->*field = GetUIColor(index);
    m_followed.at(place) = static_cast<std::int8_t>(index);
    m_taken.at(place) = this->*field;
}

void QkCustomControl::RenewTableColours() {
    for (std::size_t i = 0; i < kFollowers.size(); ++i) {
        if (m_followed.at(i) == kFollowsNothing)
            continue;
        const COLORREF now = GetUIColor(m_followed.at(i));
        COLORREF& field = this->*kFollowers.at(i);
        if (field == m_taken.at(i))
            field = now;
        m_taken.at(i) = now;
    }
}

LRESULT QkCustomControl::AskStandard(UINT message, WPARAM wParam, LPARAM lParam) const {
    if (!m_hWnd)
        return 0;
    return m_standardProc ? CallWindowProcW(m_standardProc, m_hWnd, message, wParam, lParam)
                          : SendMessageW(m_hWnd, message, wParam, lParam);
}

std::wstring QkCustomControl::GetText() const {
    const auto textInto = [this](wchar_t* buffer, std::size_t size) {
        return static_cast<std::size_t>(
            AskStandard(WM_GETTEXT, size, reinterpret_cast<LPARAM>(buffer)));
    };
    // Most texts are short and cost one question instead of two.
    std::array<wchar_t, 128> brief{};
    const std::size_t taken = textInto(brief.data(), brief.size());
    if (taken < brief.size() - 1)
        return {brief.data(), taken};
    std::wstring text(static_cast<std::size_t>(AskStandard(WM_GETTEXTLENGTH)) + 1, L'\0');
    text.resize(textInto(text.data(), text.size()));
    return text;
}

UINT QkCustomControl::TextFlags(std::wstring_view text) const {
    UINT flags = 0;
    const LONG_PTR exStyle = GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE);
    // A mirrored window reads from right to left by itself.
    if ((exStyle & WS_EX_RTLREADING) != 0 && (exStyle & WS_EX_LAYOUTRTL) == 0)
        flags |= DT_RTLREADING;
    if (GetWindowLongPtrW(m_hWnd, GWL_STYLE) & BS_MULTILINE)
        flags |= DT_WORDBREAK;
    // Without a prefix character there is nothing to hide, and nobody is asked.
    const bool hasPrefix = text.find(L'&') != std::wstring_view::npos;
    if (!m_bHonourUiState || (hasPrefix && uiStateHas(m_hWnd, UISF_HIDEACCEL)))
        flags |= DT_HIDEPREFIX;
    if (m_bWordEllipsis)
        flags |= DT_WORD_ELLIPSIS;
    return flags;
}

void QkCustomControl::GiveFont(HFONT font) {
    const auto handle = static_cast<UINT32>(HandleToULong(font));
    if (m_givenFont == handle)
        return;
    // No redraw: this is the drawing.
    SendMessageW(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    m_givenFont = handle;
}

void QkCustomControl::DrawCaption(HDC hdc, const std::wstring& text, const RECT& bounds,
                                  UINT alignment) {
    const HFONT font = ControlFont();
    if (!font)
        QkLib::reportAssertFailure(kNoFont);
    GiveFont(font);
    useFont(hdc, font);
    ::SetTextColor(hdc, StateTextColor());
    const UINT flags = alignment | TextFlags(text);
    const CaptionBox box = captionBox(bounds, flags);
    const int length = static_cast<int>(text.size());
    RECT measured = toWin32(box.working());
    DrawTextW(hdc, text.c_str(), length, &measured, flags | DT_CALCRECT);
    m_rcItem = toWin32(box.placed(fromWin32(measured)));
    RECT drawn = m_rcItem;
    DrawTextW(hdc, text.c_str(), length, &drawn, flags);
}

}  // namespace QkDlg

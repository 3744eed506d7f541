#include "QkDlg/QkFlatBtn.h"

#include "QkCustBtn/ButtonLayout.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Bitmaps.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/MouseTracking.h"
#include "QkUtil/Rects.h"
#include "QkUtil/Resources.h"

namespace QkDlg {

namespace {

// Geometry, at 96 DPI where it is scaled.
constexpr int kImageMargin = 4;
constexpr int kRingDistance = 2;

bool hasStyle(HWND hwnd, LONG_PTR mask, LONG_PTR value) {
    return (GetWindowLongPtrW(hwnd, GWL_STYLE) & mask) == value;
}

/// The caption's DT_ alignment: what the style asks for, else what the control is set to.
UINT captionAlignment(HWND hwnd, UINT horizontal, UINT vertical) {
    const LONG_PTR style = GetWindowLongPtrW(hwnd, GWL_STYLE);
    switch (style & BS_CENTER) {
        case BS_LEFT: horizontal = DT_LEFT; break;
        case BS_RIGHT: horizontal = DT_RIGHT; break;
        case BS_CENTER: horizontal = DT_CENTER; break;
        default: break;
    }
    switch (style & BS_VCENTER) {
        case BS_TOP: vertical = DT_TOP; break;
        case BS_BOTTOM: vertical = DT_BOTTOM; break;
        case BS_VCENTER: vertical = DT_VCENTER; break;
        default: break;
    }
    return horizontal | vertical;
}

ImageAlignment imageAlignment(HWND hwnd) {
    if (hasStyle(hwnd, BS_VCENTER, BS_TOP))
        return ImageAlignment::Top;
    if (hasStyle(hwnd, BS_VCENTER, BS_BOTTOM))
        return ImageAlignment::Bottom;
    return ImageAlignment::Middle;
}

UniqueRegion ringRegion(const RECT& ring) {
    UniqueRegion region(CreateRectRgnIndirect(&ring));
    RECT inside = ring;
    InflateRect(&inside, -1, -1);
    const UniqueRegion hole(CreateRectRgnIndirect(&inside));
    CombineRgn(region.get(), region.get(), hole.get(), RGN_DIFF);
    return region;
}

bool isInside(const Message& message) {
    const RECT client = clientRect(message.hwnd);
    return PtInRect(&client, {message.x(), message.y()}) != FALSE;
}

}  // namespace

QkFlatBtn::QkFlatBtn(UINT id, const UINT32* imageIds, std::wstring_view fontFace, int fontSize)
    : QkCustomControl(id, imageIds, fontFace, fontSize) {
    m_clrBk = GetUIColor(UICLR_FACE);
}

void QkFlatBtn::UseAccentColours() {
    m_clrText = GetUIColor(UICLR_WHITE);
    FollowTable(&QkFlatBtn::m_clrBk, UICLR_ACCENT);
    FollowTable(&QkFlatBtn::m_clrPressed, UICLR_ACCENT);
}

QkFlatBtn::~QkFlatBtn() {
    EndEffects();
    // A window that is still there goes on with its standard look.
    if (m_hWnd)
        InvalidateRect(m_hWnd, nullptr, TRUE);
}

// Painting

void QkFlatBtn::Paint(HDC hdc) {
    Paint(m_bMouseDown ? State::Pressed : m_bHover ? State::Hot : State::Normal, hdc);
}

void QkFlatBtn::Paint(State state, HDC hdc) {
    if (!m_hWnd)
        return;
    if (!hdc) {
        const WindowDc window(m_hWnd);
        if (window)
            Paint(state, window.get());
        return;
    }
    RenewTableColours();
    m_rcClip = clientRect(m_hWnd);
    {
        const Canvas canvas(hdc, m_hWnd, {m_rcClip.right, m_rcClip.bottom});
        PaintContent(canvas.dc(), state);
    }
    if (m_bOuterFrame)
        PaintOuterFrame(state, hdc);
}

void QkFlatBtn::PaintContent(HDC dc, State state) {
    const std::wstring caption = GetText();
    UpdateImage();
    const FreshPicture picture(ImageIdFor(state));
    const HBITMAP bitmap = picture.get();

    fillRect(dc, m_rcClip, GetBkColor());
    SetBkMode(dc, TRANSPARENT);
    if (m_bDrawImage)
        frameRect(dc, m_rcClip, m_clrCurBorder);

    const ImageSide side = m_bImageAbove   ? ImageSide::Above
                           : m_bImageRight ? ImageSide::Right
                                           : ImageSide::Left;
    const Size image = bitmapSize(bitmap);
    const ButtonLayout layout =
        layOutButton({fromWin32(m_rcClip), image, bitmap != nullptr, !caption.empty(), side,
                      imageAlignment(m_hWnd), m_bImageGap, captionPadding()});
    if (caption.empty()) {
        // Nothing is written: the focus rectangle goes round the picture.
        m_rcItem = toWin32(layout.imagePlace(image));
    } else {
        DrawCaption(
            dc, caption, toWin32(layout.text),
            captionAlignment(m_hWnd, static_cast<UINT>(m_nLayout), static_cast<UINT>(m_nImageGap)));
    }
    if (bitmap) {
        if (m_bGreyDisabled && !IsWindowEnabled(m_hWnd))
            greyPicture(bitmap);
        DrawImage(dc, bitmap, layout.imageX, layout.imageY);
    }
    DrawFocus(dc);
}

void QkFlatBtn::PaintOuterFrame(State state, HDC target) {
    if (state == State::Normal && IsRectEmpty(&m_rcRing))
        return;
    const HWND parent = GetParent(m_hWnd);
    const WindowDc parentDc(parent);
    if (state == State::Normal) {
        frameRect(parentDc.get(), m_rcRing, ::GetBkColor(target));
        EraseOuterFrame();
        return;
    }
    m_rcRing = windowRectIn(m_hWnd, parent);
    InflateRect(&m_rcRing, kRingDistance, kRingDistance);
    frameRect(parentDc.get(), m_rcRing, GetUIColor(UICLR_ACCENT));
    // What the parent still has to paint there must not go over the ring.
    ValidateRgn(parent, ringRegion(m_rcRing).get());
}

void QkFlatBtn::EraseOuterFrame() {
    if (IsRectEmpty(&m_rcRing))
        return;
    // The parent may have another ground than its DC tells.
    InvalidateRgn(GetParent(m_hWnd), ringRegion(m_rcRing).get(), TRUE);
    SetRectEmpty(&m_rcRing);
}

UINT QkFlatBtn::ImageIdFor(State state) const {
    const unsigned bucket = dpiBucket(screenDpi());
    const UINT id = m_images.idOf(static_cast<UINT32>(state), bucket);
    return id != 0 ? id : m_images.idOf(0, bucket);
}

COLORREF QkFlatBtn::GetTextColor() {
    return IsHighContrast() ? GetSysColor(COLOR_BTNTEXT) : m_clrText;
}

COLORREF QkFlatBtn::GetBkColor() {
    return IsHighContrast() ? GetSysColor(COLOR_BTNFACE) : QkCustomControl::GetBkColor();
}

void QkFlatBtn::DrawFocus(HDC hdc) {
    // The standard button has been told, and asking the system costs more.
    if ((AskStandard(BM_GETSTATE) & BST_FOCUS) != 0)
        QkCustomControl::DrawFocus(hdc);
}

void QkFlatBtn::CalcFocusRect() {
    if (m_bSizeToImage)
        m_rcFocus = windowRectIn(m_hWnd, m_hWnd);
    else
        QkCustomControl::CalcFocusRect();
}

// Mouse

int QkFlatBtn::OnAnimateColor(COLORREF colour) {
    m_clrAnim = colour;
    Refresh();
    return 1;
}

void QkFlatBtn::OnMouseMove(int, int) {
    if (m_bNoHotTrack || m_bHover)
        return;
    m_bHover = true;
    trackMouseLeave(m_hWnd);
    RenewTableColours();
    const COLORREF background = GetBkColor();
    if (background != GetUIColor(UICLR_ACCENT)) {
        // In high contrast the face is the system's and has nowhere to fade to.
        if (!IsHighContrast() && !m_fade.IsRunning())
            m_fade.Start(m_hWnd, background, m_clrHover);
        m_clrCurBorder = m_clrHotBorder;
    }
    Paint(State::Hot, nullptr);
}

void QkFlatBtn::OnLButtonDown(int, int) {
    if (!m_bNoHotTrack)
        m_bMouseDown = true;
    m_bPressed = true;
    Paint(State::Pressed, nullptr);
}

void QkFlatBtn::OnLButtonUp(int, int) {
    if (!m_bNoHotTrack)
        m_bMouseDown = false;
    m_bPressed = false;
    // Normal even under the mouse; the next WM_PAINT shows the hot state again.
    Paint(State::Normal, nullptr);
}

void QkFlatBtn::OnMouseLeave() {
    m_fade.Stop();
    m_clrCurBorder = m_clrBorder;
    m_clrAnim = kNoColor;
    m_bHover = false;
    Paint(State::Normal, nullptr);
}

void QkFlatBtn::OnCaptureLost() {
    if (m_bPressed)
        OnLButtonUp(0, 0);
}

void QkFlatBtn::OnDisable() {
    OnCaptureLost();
    if (m_bHover)
        OnMouseLeave();
}

void QkFlatBtn::EndEffects() {
    m_fade.Stop();
    if (m_hWnd)
        EraseOuterFrame();
}

// Messages

/// Passes a press on. Where the standard button did not take the mouse, as for the arrow of a
/// split button, whose menu has swallowed the release by now, the press is over.
LRESULT QkFlatBtn::PassPressOn(const Message& message, DWORD_PTR referenceData) {
    const LRESULT result = message.passOn();
    auto* const button = livingControl<QkFlatBtn>(message.hwnd, referenceData);
    if (button && GetCapture() != message.hwnd)
        button->OnCaptureLost();
    return result;
}

LRESULT CALLBACK QkFlatBtn::ButtonProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    auto* const button = livingControl<QkFlatBtn>(hwnd, referenceData);
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, ButtonProc, subclassId);
        if (button) {
            button->EndEffects();
            button->Detach();
        }
        return message.passOn();
    }
    if (!button)
        return message.passOn();

    switch (id) {
        case WM_MOUSEMOVE:
            // A press that is dragged out still gets the moves, and nobody would tell of a second
            // leaving.
            if (isInside(message))
                button->OnMouseMove(message.x(), message.y());
            break;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            button->OnLButtonDown(message.x(), message.y());
            return PassPressOn(message, referenceData);
        case WM_LBUTTONUP: button->OnLButtonUp(message.x(), message.y()); break;
        case WM_MOUSELEAVE: button->OnMouseLeave(); break;
        case WM_CAPTURECHANGED: button->OnCaptureLost(); break;
        case WM_WINDOWPOSCHANGED: button->EraseOuterFrame(); break;
        case WM_PAINT: {
            const PaintDc paint(hwnd);
            button->Paint(paint.get());
            return 1;
        }
        // Painting covers all of it.
        case WM_ERASEBKGND: return 1;
        case WM_SETFONT: button->ForgetGivenFont(); break;
        case WM_PRINTCLIENT: button->Paint(reinterpret_cast<HDC>(wParam)); return 1;
        case WM_FADECOLOR: return button->OnAnimateColor(static_cast<COLORREF>(lParam));
        case WM_ENABLE:
            if (!wParam)
                button->OnDisable();
            return passOnUnseen(message);
        case BM_SETSTYLE:
        case BM_SETIMAGE:
        case WM_SETTEXT:
        case WM_UPDATEUISTATE:
        case WM_THEMECHANGED: return passOnUnseen(message);
        // The host may be told of the focus, and screen readers of the state, so the window stays
        // visible.
        case BM_SETCHECK: button->OnSetCheck(wParam != 0); return passOnAndRepaint(message);
        case BM_SETSTATE:
        case WM_SETFOCUS:
        case WM_KILLFOCUS: return passOnAndRepaint(message);
        default: break;
    }
    return message.passOn();
}

void QkFlatBtn::InstallButtonProcedure() {
    installSubclass(m_hWnd, ButtonProc, *this);
    // A window that is already on the screen shows the standard look.
    Refresh();
}

// Attach

void QkFlatBtn::ResetEffects() {
    m_fade.Stop();
    m_bMouseDown = false;
    m_bHover = false;
    SetRectEmpty(&m_rcRing);
}

void QkFlatBtn::Attach(HWND hwnd) {
    QkCustomControl::Attach(hwnd);
    ResetEffects();
    if (m_bSizeToImage) {
        ResizeToImage();
        // The standard button, as it erases itself, asks a host for colours that may end this
        // object.
        if (!livingControl<QkFlatBtn>(hwnd, reinterpret_cast<DWORD_PTR>(this)))
            return;
    }
    InstallButtonProcedure();
}

void QkFlatBtn::ResizeToImage() {
    const FreshPicture picture(ImageIdFor(State::Normal));
    const HWND hwnd = m_hWnd;
    const HWND parent = GetParent(hwnd);
    if (!picture.get() || !parent)
        return;
    const Size image = bitmapSize(picture.get());
    const int margin = scaled(kImageMargin);
    const RECT old = windowRectIn(hwnd, parent);
    const int width = image.width + margin;
    const int height = image.height + margin;
    MoveWindow(hwnd, (old.left + old.right) / 2 - width / 2,
               (old.top + old.bottom) / 2 - height / 2, width, height, FALSE);
    if (IsWindowVisible(hwnd))
        InvalidateRect(parent, &old, TRUE);
}

}  // namespace QkDlg

#include "Stage.h"

#include <cstdio>
#include <cstdlib>

#include "Floor.h"
#include "QkUtil/WindowClass.h"

namespace QkDlgBench {

namespace {

constexpr int kPlace = 10;
constexpr UINT_PTR kBareId = 1;
constexpr SIZE kHostSize{600, 400};

struct EmptyTemplate {
    DLGTEMPLATE header;
    WORD menu;
    WORD windowClass;
    WORD title;
};

INT_PTR CALLBACK hostProc(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

LRESULT CALLBACK bareProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                          DWORD_PTR) {
    return DefSubclassProc(window, message, wParam, lParam);
}

SIZE clientSizeOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

}  // namespace

const char* nameOf(Look look) {
    constexpr std::array kNames{"standard", "bare", "flat", "floor"};
    return kNames[static_cast<std::size_t>(look)];
}

void giveUp(const char* what, const char* name) {
    std::fprintf(stderr, "%s: %s\n", name, what);
    std::exit(2);
}

void subclassBare(HWND window) {
    SetWindowSubclass(window, &bareProc, kBareId, 0);
}

int scaled(int length) {
    const QkDlg::WindowDc screen(nullptr);
    return MulDiv(length, GetDeviceCaps(screen.get(), LOGPIXELSX), USER_DEFAULT_SCREEN_DPI);
}

void settle() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    GdiFlush();
}

UniqueWindow makeHost(bool visible, int place) {
    EmptyTemplate words{};
    words.header.style = WS_POPUP | WS_CAPTION | WS_CLIPCHILDREN;
    UniqueWindow host(
        CreateDialogIndirectW(GetModuleHandleW(nullptr), &words.header, nullptr, &hostProc));
    if (!host)
        giveUp("no window", "host");
    SetWindowPos(host.get(), nullptr, place % 2 * scaled(kHostSize.cx),
                 place / 2 * scaled(kHostSize.cy), scaled(kHostSize.cx), scaled(kHostSize.cy),
                 SWP_NOZORDER);
    if (visible)
        ShowWindow(host.get(), SW_SHOW);
    settle();
    return host;
}

UniqueWindow makeControlWindow(HWND host, const Kind& kind, bool visible) {
    const DWORD style = WS_CHILD | kind.style | (visible ? WS_VISIBLE : 0UL);
    UniqueWindow window(CreateWindowExW(kind.exStyle, kind.windowClass, kind.text, style,
                                        scaled(kPlace), scaled(kPlace), scaled(kind.size.cx),
                                        scaled(kind.size.cy), host, nullptr,
                                        GetModuleHandleW(nullptr), nullptr));
    if (!window)
        giveUp("no window", kind.name);
    return window;
}

// Subject

Subject::Subject(HWND host, const Kind& kind, Look look) : m_kind(&kind) {
    if (look == Look::Floor) {
        m_floor = std::make_unique<FloorPainter>(kind.text);
        m_window.reset(m_floor->createWindow(host));
        return;
    }
    m_window = makeControlWindow(host, kind, false);
    const auto font = static_cast<WPARAM>(SendMessageW(host, WM_GETFONT, 0, 0));
    SendMessageW(window(), WM_SETFONT, font, FALSE);
    if (kind.fill)
        kind.fill(window());
    if (look == Look::Bare)
        subclassBare(window());
    if (look == Look::Flat) {
        m_control = kind.makeFlat(0);
        m_control->Attach(window());
    }
}

Subject::~Subject() = default;

SIZE Subject::clientSize() const {
    return clientSizeOf(window());
}

void Subject::show() const {
    ShowWindow(window(), SW_SHOWNA);
    settle();
    // A control that is covered would paint nothing in no time.
    const SIZE size = clientSize();
    RECT seen{};
    const QkDlg::WindowDc dc(window());
    if (GetClipBox(dc.get(), &seen) == NULLREGION || seen.right - seen.left < size.cx ||
        seen.bottom - seen.top < size.cy)
        giveUp("does not show as a whole", m_kind->name);
}

void Subject::hide() const {
    ShowWindow(window(), SW_HIDE);
    settle();
}

void Subject::setClientSize(SIZE size) const {
    const SIZE now = clientSize();
    RECT whole{};
    GetWindowRect(window(), &whole);
    SetWindowPos(window(), nullptr, 0, 0, whole.right - whole.left + size.cx - now.cx,
                 whole.bottom - whole.top + size.cy - now.cy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Subject::become(const Subject& model) const {
    RECT place{};
    GetWindowRect(model.window(), &place);
    MapWindowPoints(nullptr, GetParent(model.window()), reinterpret_cast<POINT*>(&place), 2);
    SetWindowPos(window(), nullptr, place.left, place.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    setClientSize(model.clientSize());
    // The height of a closed combo box follows that of its field.
    const LRESULT difference = model.clientSize().cy - clientSize().cy;
    if (difference != 0 && QkDlg::windowClassIs(window(), L"ComboBox")) {
        const LRESULT height = SendMessageW(window(), CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0);
        SendMessageW(window(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), height + difference);
    }
    std::array<wchar_t, 100> text{};
    GetWindowTextW(model.window(), text.data(), static_cast<int>(text.size()));
    if (!m_floor)
        SetWindowTextW(window(), text.data());
}

// Quartet

Hosts::Hosts() {
    for (std::size_t i = 0; i < kLooks.size(); ++i)
        m_hosts[i] = makeHost(true, static_cast<int>(i));
}

Quartet::Quartet(const Hosts& hosts, const Kind& kind) : m_kind(&kind) {
    for (const Look look : kLooks) {
        m_subjects[static_cast<std::size_t>(look)] =
            std::make_unique<Subject>(hosts.of(look), kind, look);
    }
    const Subject& flat = in(Look::Flat);
    for (const Look look : {Look::Standard, Look::Bare, Look::Floor}) {
        in(look).become(flat);
        const SIZE size = in(look).clientSize();
        const SIZE wanted = flat.clientSize();
        if (size.cx != wanted.cx || size.cy != wanted.cy)
            std::fprintf(stderr, "%s: %s is %ldx%ld, flat is %ldx%ld\n", kind.name, nameOf(look),
                         size.cx, size.cy, wanted.cx, wanted.cy);
    }
}

}  // namespace QkDlgBench

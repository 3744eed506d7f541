#include "Floor.h"

namespace QkDlgBench {

namespace {

constexpr wchar_t kClassName[] = L"QkBenchFloor";

void registerClass(WNDPROC procedure) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = kClassName;
    RegisterClassExW(&description);
}

}  // namespace

HWND FloorPainter::createWindow(HWND parent) {
    registerClass(&WindowProc);
    HWND window = CreateWindowExW(0, kClassName, nullptr, WS_CHILD, 0, 0, 0, 0, parent, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return window;
}

LRESULT CALLBACK FloorPainter::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = reinterpret_cast<FloorPainter*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
        case WM_ERASEBKGND: return TRUE;
        case WM_PAINT: self->paint(window, QkDlg::PaintDc(window).get()); return 0;
        case WM_PRINTCLIENT: self->paint(window, reinterpret_cast<HDC>(wParam)); return 0;
        default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

void FloorPainter::makeBitmap(HDC target, const RECT& client) {
    m_memory.reset(CreateCompatibleDC(target));
    m_bitmap.reset(CreateCompatibleBitmap(target, client.right, client.bottom));
    SelectObject(m_memory.get(), m_bitmap.get());
    SelectObject(m_memory.get(), GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(m_memory.get(), TRANSPARENT);
    m_size = client;
}

void FloorPainter::paint(HWND window, HDC target) {
    RECT client{};
    GetClientRect(window, &client);
    if (!EqualRect(&client, &m_size))
        makeBitmap(target, client);
    HDC memory = m_memory.get();
    FillRect(memory, &client, GetSysColorBrush(COLOR_WINDOW));
    RECT place = client;
    DrawTextW(memory, m_text.c_str(), -1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    BitBlt(target, 0, 0, client.right, client.bottom, memory, 0, 0, SRCCOPY);
}

}  // namespace QkDlgBench

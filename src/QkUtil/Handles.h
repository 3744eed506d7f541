#pragma once

#include <memory>
#include <type_traits>
#include <utility>

#include "QkDlg/Win32.h"

namespace QkDlg {

struct GdiDeleter {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
struct MemoryDcDeleter {
    void operator()(HDC dc) const { DeleteDC(dc); }
};

struct IconDeleter {
    void operator()(HICON icon) const { DestroyIcon(icon); }
};

struct KernelHandleDeleter {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

// Owners of one handle each. Borrowed handles stay plain.
template <typename Handle>
using UniqueGdi = std::unique_ptr<std::remove_pointer_t<Handle>, GdiDeleter>;
using UniqueBrush = UniqueGdi<HBRUSH>;
using UniquePen = UniqueGdi<HPEN>;
using UniqueBitmap = UniqueGdi<HBITMAP>;
using UniqueFont = UniqueGdi<HFONT>;
using UniqueRegion = UniqueGdi<HRGN>;
/// Of what says null when it fails, such as an event.
using UniqueKernelHandle = std::unique_ptr<void, KernelHandleDeleter>;
using UniqueIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter>;
using MemoryDc = std::unique_ptr<std::remove_pointer_t<HDC>, MemoryDcDeleter>;

[[nodiscard]] inline UniqueBrush solidBrush(COLORREF colour) {
    return UniqueBrush(CreateSolidBrush(colour));
}

/// A DC of a window's client area (GetDC), released with the window that it was taken from.
/// A null window gives a DC of the screen.
class WindowDc {
public:
    explicit WindowDc(HWND hwnd) : m_hwnd(hwnd), m_dc(GetDC(hwnd)) {}
    ~WindowDc() {
        if (m_dc)
            ReleaseDC(m_hwnd, m_dc);
    }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    WindowDc(WindowDc&&) = delete;
    WindowDc& operator=(WindowDc&&) = delete;

    [[nodiscard]] HDC get() const { return m_dc; }
    explicit operator bool() const { return m_dc != nullptr; }

private:
    HWND m_hwnd;
    HDC m_dc;
};

/// A DC of a window with its border and scroll bars (GetWindowDC). A null window gives a DC of
/// the screen.
class WholeWindowDc {
public:
    explicit WholeWindowDc(HWND hwnd) : m_hwnd(hwnd), m_dc(GetWindowDC(hwnd)) {}
    ~WholeWindowDc() {
        if (m_dc)
            ReleaseDC(m_hwnd, m_dc);
    }
    WholeWindowDc(const WholeWindowDc&) = delete;
    WholeWindowDc& operator=(const WholeWindowDc&) = delete;
    WholeWindowDc(WholeWindowDc&&) = delete;
    WholeWindowDc& operator=(WholeWindowDc&&) = delete;

    [[nodiscard]] HDC get() const { return m_dc; }

private:
    HWND m_hwnd;
    HDC m_dc;
};

/// BeginPaint and EndPaint.
class PaintDc {
public:
    explicit PaintDc(HWND hwnd) : m_hwnd(hwnd), m_dc(BeginPaint(hwnd, &m_paint)) {}
    ~PaintDc() { EndPaint(m_hwnd, &m_paint); }
    PaintDc(const PaintDc&) = delete;
    PaintDc& operator=(const PaintDc&) = delete;
    PaintDc(PaintDc&&) = delete;
    PaintDc& operator=(PaintDc&&) = delete;

    [[nodiscard]] HDC get() const { return m_dc; }

private:
    HWND m_hwnd;
    PAINTSTRUCT m_paint{};
    HDC m_dc;
};

/// An object selected into a DC for as long as this lives. Declare it after the object's owner. A
/// null object selects nothing.
class Selection {
public:
    Selection(HDC dc, HGDIOBJ object)
        : m_dc(dc), m_previous(object ? SelectObject(dc, object) : nullptr) {}
    ~Selection() {
        if (m_previous)
            SelectObject(m_dc, m_previous);
    }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    Selection(Selection&&) = delete;
    Selection& operator=(Selection&&) = delete;

    [[nodiscard]] bool failed() const { return m_previous == nullptr; }

private:
    HDC m_dc;
    HGDIOBJ m_previous;
};

/// All that is set about a DC, put back at the end. For host code that is let at one.
class SavedDc {
public:
    explicit SavedDc(HDC dc) : m_dc(dc), m_saved(SaveDC(dc)) {}
    ~SavedDc() {
        if (m_saved != 0)
            RestoreDC(m_dc, m_saved);
    }
    SavedDc(const SavedDc&) = delete;
    SavedDc& operator=(const SavedDc&) = delete;
    SavedDc(SavedDc&&) = delete;
    SavedDc& operator=(SavedDc&&) = delete;

private:
    HDC m_dc;
    int m_saved;
};

}  // namespace QkDlg

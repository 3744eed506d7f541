#pragma once

#include <string>

#include "QkUtil/Handles.h"

namespace QkDlg {

/// Something that takes the text of a resource, such as an XML document.
class TextReceiver {
public:
    virtual ~TextReceiver() = default;
    TextReceiver(const TextReceiver&) = delete;
    TextReceiver& operator=(const TextReceiver&) = delete;

    /// False when the text is not of the receiver's language.
    [[nodiscard]] virtual bool Parse(const std::wstring& text) = 0;

protected:
    TextReceiver() = default;
};

/// A bitmap resource as a DIB section with its pixels as stored; null when there is none of that
/// id, or the id is 0. A null module means the library's own.
[[nodiscard]] UniqueBitmap LoadBitmapResource(UINT id, HMODULE module = nullptr);

/// A bitmap resource of the library, to be drawn at once: as LoadBitmapResource gives it, and free
/// to be changed by drawing, but it stays, and the next one of that id is the same. GUI thread
/// only.
class FreshPicture {
public:
    explicit FreshPicture(UINT id);

    /// Null when there is none of that id.
    [[nodiscard]] HBITMAP get() const { return m_bitmap; }

    /// Frees what is kept for the next drawing.
    static void freeKept();

private:
    UniqueBitmap m_own;
    HBITMAP m_bitmap = nullptr;
};

/// An entry of the library's string table; empty when there is none.
[[nodiscard]] std::wstring LoadStringResource(UINT id);

/// Finds the resource `name` of type RT_HTML and gives its text to `receiver`. False when the
/// resource is missing or cannot be read, when its bytes are not text (see wideFromTextBytes), and
/// when the receiver refuses it.
[[nodiscard]] bool LoadResourceText(HMODULE module, const wchar_t* name, TextReceiver& receiver);

}  // namespace QkDlg

#include "QkDlg/DialogTemplates.h"

#include <array>
#include <optional>
#include <span>
#include <utility>

#include "Dlg/TemplateFont.h"
#include "QkDlg/DialogFonts.h"
#include "lib/AssertReport.h"
#include "lib/Narrow.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kResourceNotLocked{"src/Dlg", 58};
constexpr QkLib::AssertSite kNoTemplate{"src/Dlg", 92};
constexpr QkLib::AssertSite kDialogFailed{"src/Dlg", 104};
constexpr QkLib::AssertSite kEndCodeTooLarge{"src/Dlg", 106};
constexpr QkLib::AssertSite kResourceNotFound{"src/Dlg", 151};
constexpr QkLib::AssertSite kResourceNotLoaded{"src/Dlg", 154};
constexpr QkLib::AssertSite kResourceNotCopied{"src/Dlg", 156};

/// What every template copy has to spare, for a longer face name.
constexpr SIZE_T kSpareBytes = 64;

static_assert(sizeof(wchar_t) == sizeof(char16_t) && sizeof(WORD) == sizeof(std::uint16_t));

/// A template block while it is locked.
class LockedTemplate {
public:
    explicit LockedTemplate(const GlobalBlock& block)
        : m_block(block.get()),
          m_bytes(m_block ? GlobalLock(m_block) : nullptr),
          m_size(m_block ? GlobalSize(m_block) : 0) {}
    ~LockedTemplate() {
        if (m_bytes)
            GlobalUnlock(m_block);
    }
    LockedTemplate(const LockedTemplate&) = delete;
    LockedTemplate& operator=(const LockedTemplate&) = delete;
    LockedTemplate(LockedTemplate&&) = delete;
    LockedTemplate& operator=(LockedTemplate&&) = delete;

    [[nodiscard]] bool failed() const { return !m_bytes; }
    [[nodiscard]] std::span<std::uint16_t> words() const {
        return {static_cast<std::uint16_t*>(m_bytes), m_size / sizeof(WORD)};
    }
    /// The words of the template itself, without the spare ones.
    [[nodiscard]] std::size_t used() const {
        return (m_size > kSpareBytes ? m_size - kSpareBytes : 0) / sizeof(WORD);
    }

private:
    HGLOBAL m_block;
    void* m_bytes;
    SIZE_T m_size;
};

struct ResourceReleaser {
    void operator()(HGLOBAL resource) const { FreeResource(resource); }
};
using LoadedResource = std::unique_ptr<void, ResourceReleaser>;

std::u16string_view units(const wchar_t* text) {
    return {reinterpret_cast<const char16_t*>(text), static_cast<std::size_t>(lstrlenW(text))};
}

/// Words that the template lacks for a face of that length; none when it cannot be read.
std::size_t missingWords(const LockedTemplate& locked, std::size_t faceLength) {
    const auto shape = readTemplateShape(locked.words().first(locked.used()));
    const std::size_t needed = shape ? wordsWithFont(*shape, locked.used(), faceLength) : 0;
    return needed > locked.words().size() ? needed - locked.words().size() : 0;
}

/// Makes the block larger, at another place if need be. Leaves it as it is when memory is short.
void grow(GlobalBlock& block, std::size_t bytes) {
    const SIZE_T size = GlobalSize(block.get()) + bytes;
    if (HGLOBAL larger = GlobalReAlloc(block.get(), size, GMEM_MOVEABLE | GMEM_ZEROINIT)) {
        static_cast<void>(block.release());
        block.reset(larger);
    }
}

struct DialogFontChoice {
    std::array<wchar_t, LF_FACESIZE + 1> face{};
    int size = 0;
};

std::optional<DialogFontChoice> dialogFont() {
    DialogFontChoice font;
    const bool chosen =
        GetDialogFont(font.face.data(), static_cast<int>(font.face.size()), font.size);
    return chosen ? std::optional(font) : std::nullopt;
}

int endCode(INT_PTR result) {
    if (result == -1)
        QkLib::reportAssertFailure(kDialogFailed);
    return QkLib::narrow<INT32>(result, kEndCodeTooLarge);
}

}  // namespace

GlobalBlock CopyResourceToGlobal(HGLOBAL resourceData, DWORD size) {
    const void* bytes = LockResource(resourceData);
    if (!bytes)
        QkLib::reportAssertFailure(kResourceNotLocked);
    GlobalBlock copy(GlobalAlloc(0, size + kSpareBytes));
    const LockedTemplate locked(copy);
    if (locked.failed())
        return nullptr;
    CopyMemory(locked.words().data(), bytes, size);
    return copy;
}

GlobalBlock SetTemplateFont(GlobalBlock dialogTemplate, const wchar_t* faceName, WORD pointSize,
                            DWORD extraStyle) {
    const TemplateFont font{units(faceName), pointSize};
    std::size_t used = 0;
    std::size_t missing = 0;
    {
        const LockedTemplate locked(dialogTemplate);
        if (locked.failed())
            return nullptr;
        used = locked.used();
        missing = missingWords(locked, font.face.size());
    }
    if (missing > 0)
        grow(dialogTemplate, missing * sizeof(WORD));

    const LockedTemplate locked(dialogTemplate);
    if (locked.failed())
        return nullptr;
    if (!setTemplateFont(locked.words(), used, font, extraStyle))
        addTemplateStyle(locked.words().first(used), extraStyle);
    return dialogTemplate;
}

GlobalBlock LoadDialogTemplate(HMODULE module, const wchar_t* templateName, DWORD extraStyle) {
    HRSRC found = FindResourceW(module, templateName, RT_DIALOG);
    if (!found)
        QkLib::reportAssertFailure(kResourceNotFound);
    const LoadedResource resource(LoadResource(module, found));
    if (!resource)
        QkLib::reportAssertFailure(kResourceNotLoaded);
    GlobalBlock copy = CopyResourceToGlobal(resource.get(), SizeofResource(module, found));
    if (!copy)
        QkLib::reportAssertFailure(kResourceNotCopied);

    if (const auto font = dialogFont())
        return SetTemplateFont(std::move(copy), font->face.data(), static_cast<WORD>(font->size),
                               extraStyle);
    if (extraStyle == 0)
        return copy;
    const LockedTemplate locked(copy);
    if (locked.failed())
        return nullptr;
    addTemplateStyle(locked.words().first(locked.used()), extraStyle);
    return copy;
}

int RunModalDialog(HMODULE module, const wchar_t* templateName, HWND parent, DLGPROC dialogProc,
                   LPARAM initParam, DWORD extraStyle) {
    if (extraStyle == 0 && !dialogFont())
        return endCode(DialogBoxParamW(module, templateName, parent, dialogProc, initParam));
    const GlobalBlock dialogTemplate = LoadDialogTemplate(module, templateName, extraStyle);
    if (!dialogTemplate)
        QkLib::reportAssertFailure(kNoTemplate);
    return endCode(DialogBoxIndirectParamW(module,
                                           static_cast<const DLGTEMPLATE*>(dialogTemplate.get()),
                                           parent, dialogProc, initParam));
}

}  // namespace QkDlg

#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "QkDlg/DialogTemplates.h"
#include "QkDlg/Win32.h"

namespace QkPreview {

/// Which dialog template of a module is meant.
struct TemplateName {
    std::wstring name;  ///< empty: the template has a number
    WORD id = 0;
    LANGID language = 0;

    /// For FindResource; valid as long as this object.
    [[nodiscard]] const wchar_t* resource() const {
        return name.empty() ? MAKEINTRESOURCEW(id) : name.c_str();
    }
    /// The name or number, and the language: "1001 (0x0409)".
    [[nodiscard]] std::wstring shown() const;
};

/// A template copy that may be changed.
struct TemplateCopy {
    QkDlg::GlobalBlock block;  ///< null: there is no such template, or no memory for it
    DWORD bytes = 0;           ///< of the template itself; the block is longer

    [[nodiscard]] std::span<std::uint16_t> words() const;
};

/// A program or DLL opened for its resources: none of its code runs, and it need not be made for
/// this processor.
class Module {
public:
    explicit Module(const std::wstring& file);

    /// Null when the file is no module or cannot be read; the reason is in GetLastError.
    [[nodiscard]] HMODULE get() const { return module_.get(); }

    /// All dialog templates in all languages, in the module's order.
    [[nodiscard]] std::vector<TemplateName> templates() const;

    [[nodiscard]] TemplateCopy copyTemplate(const TemplateName& name) const;

private:
    struct Freer {
        void operator()(HMODULE module) const { FreeLibrary(module); }
    };
    std::unique_ptr<std::remove_pointer_t<HMODULE>, Freer> module_;
};

/// The files that a module argument stands for: itself, or what fits the pattern, by name.
[[nodiscard]] std::vector<std::wstring> matchingFiles(const std::wstring& pattern);

[[nodiscard]] std::wstring fileNameOf(const std::wstring& path);

/// "0x0409".
[[nodiscard]] std::wstring hexWord(WORD number);

}  // namespace QkPreview

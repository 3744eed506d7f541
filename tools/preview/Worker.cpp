#include "preview/Worker.h"

#include <algorithm>

#include "QkDlg/QkXAppGlobals.h"
#include "QkUtil/Handles.h"
#include "QkXML/DialogDefaults.h"
#include "common/Console.h"
#include "common/GdiObjects.h"
#include "common/Picture.h"
#include "lib/Text.h"
#include "preview/ControlClasses.h"
#include "preview/ConversionReport.h"
#include "preview/PreviewDialog.h"
#include "preview/Record.h"
#include "preview/Sheets.h"

namespace QkPreview {
namespace {

using QkDlgTools::UniquePicture;

constexpr DWORD kSettleMilliseconds = 30;
// Caches fill when a dialog shows for the first time, not later.
constexpr int kLeakRounds = 3;

void tell(RecordKind kind, const std::wstring& first, const std::wstring& second = {}) {
    QkDlgTools::printOut(toLine({kind, first, second}));
}

void settle() {
    const ULONGLONG end = GetTickCount64() + kSettleMilliseconds;
    MSG message{};
    do {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    } while (GetTickCount64() < end);
}

std::optional<std::wstring> readText(const std::wstring& file) {
    HANDLE opened = CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return std::nullopt;
    const QkDlg::UniqueKernelHandle owner(opened);
    LARGE_INTEGER size{};
    constexpr LONGLONG kLargest = 16LL * 1024 * 1024;
    if (!GetFileSizeEx(opened, &size) || size.QuadPart > kLargest)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(opened, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        return std::nullopt;
    bytes.resize(read);
    return QkLib::wideFromTextBytes(bytes);
}

/// Gives the library the description that the options name, or else the module's own. What is
/// wrong with it, if anything.
std::optional<std::wstring> describe(const Options& options, const Module& module) {
    QkDlg::AppGlobals().Init(module.get(), nullptr, nullptr);
    if (!options.xml.empty()) {
        const auto text = readText(options.xml);
        if (!text || !QkDlg::setDialogDescriptions(*text))
            return options.xml + L" cannot be read or is no XML";
    }
    QkDlg::loadDialogDefaults();
    if (const auto& error = QkDlg::dialogDescriptions().LastError())
        return L"DLG_XML: " + QkDlg::GetErrorText(*error);
    return std::nullopt;
}

bool isWanted(const TemplateName& name, const Options& options) {
    if (options.language && *options.language != name.language)
        return false;
    if (!options.dialog)
        return true;
    if (name.name.empty())
        return parseNumber(*options.dialog, UINT16_MAX) == std::optional<std::uint32_t>(name.id);
    return lstrcmpiW(options.dialog->c_str(), name.name.c_str()) == 0;
}

/// How well a language suits the user; more is better.
int languageRank(LANGID language) {
    const LANGID own = GetUserDefaultUILanguage();
    if (language == own)
        return 3;
    if (PRIMARYLANGID(language) == PRIMARYLANGID(own))
        return 2;
    return PRIMARYLANGID(language) == LANG_NEUTRAL ? 1 : 0;
}

/// The wanted templates; the most suitable one where there is room for one only.
std::vector<TemplateName> wantedTemplates(const Module& module, const Options& options) {
    std::vector<TemplateName> names = module.templates();
    std::erase_if(names, [&](const TemplateName& name) { return !isWanted(name, options); });
    const bool single = options.interactive() || !options.png.empty();
    if (!single || names.empty())
        return names;
    return {*std::ranges::max_element(
        names, {}, [](const TemplateName& name) { return languageRank(name.language); })};
}

std::wstring quoted(const std::wstring& caption) {
    return caption.empty() ? std::wstring() : L" \"" + caption + L"\"";
}

class Worker {
public:
    Worker(const Options& options, const Module& module)
        : options_(options),
          module_(module),
          fileName_(fileNameOf(options.modules.front())),
          names_(wantedTemplates(module, options)) {}

    void run() const {
        if (*options_.worker == 0 && !names_.empty())
            tell(RecordKind::Text, fileName_);
        for (std::size_t i = *options_.worker; i < names_.size(); ++i)
            dealWith(i);
        if (options_.check)
            tellUnmatched();
    }

private:
    [[nodiscard]] bool listing() const {
        return !options_.check && options_.png.empty() && options_.all.empty();
    }

    void dealWith(std::size_t index) const {
        const TemplateName& name = names_[index];
        const TemplateCopy copy = module_.copyTemplate(name);
        const auto contents = copy.block ? readTemplate(copy.words()) : std::nullopt;
        const std::wstring shown = name.shown() + (contents ? quoted(contents->caption) : L"");
        const std::wstring title = fileName_ + L" " + shown;
        tell(RecordKind::Begin, std::to_wstring(index), title);
        if (options_.check)
            tell(RecordKind::Text, L"  " + shown);
        if (listing())
            list(shown, contents);
        else
            preview(name, title);
    }

    void list(const std::wstring& shown, const std::optional<TemplateContents>& contents) const {
        if (const auto fault = templateFault(contents))
            return tell(RecordKind::Fault, fileName_ + L" " + shown + L": " + *fault);
        const std::wstring kind = contents->extended ? L"extended" : L"classic";
        tell(RecordKind::Text, L"  " + shown + L"  " + kind + L", " +
                                   std::to_wstring(contents->controlCount) + L" controls");
    }

    void preview(const TemplateName& name, const std::wstring& title) const {
        const int before = QkDlgTools::countGdiObjects().all;
        bool shown = false;
        if (options_.all.empty())
            shown = open(name, title, options_.plain ? Look::Plain : Look::Flat, true);
        else
            shown = picturePair(name, title);
        if (!shown)
            return;
        tell(RecordKind::Shown, title);
        if (QkDlgTools::countGdiObjects().all > before)
            tellLeak(name, title);
    }

    /// Growth at first is expected: fonts and brushes are kept for later dialogs.
    [[nodiscard]] int lastingGrowth(const TemplateName& name, Look which) const {
        int growth = 0;
        for (int round = 0; round < kLeakRounds; ++round) {
            const int before = QkDlgTools::countGdiObjects().all;
            static_cast<void>(picture(OpenPreview(module_, name, which, false)));
            growth = QkDlgTools::countGdiObjects().all - before;
            if (growth <= 0)
                return 0;
        }
        return growth;
    }

    void tellLeak(const TemplateName& name, const std::wstring& title) const {
        const int plain = lastingGrowth(name, Look::Plain);
        const int flat = lastingGrowth(name, Look::Flat);
        const std::wstring text = title + L": leaves " + std::to_wstring(std::max(plain, flat)) +
                                  L" GDI objects behind each time";
        if (flat > plain)
            tell(RecordKind::Fault, text + L", " + std::to_wstring(plain) + L" when plain");
        else if (plain > 0)
            tell(RecordKind::Remark, text + L", also when plain");
    }

    static UniquePicture picture(const OpenPreview& preview) {
        if (!preview.window())
            return nullptr;
        preview.showForPicture();
        settle();
        return QkDlgTools::capturedClient(preview.window());
    }

    /// One look of a dialog. Findings are told with one of the looks only.
    [[nodiscard]] UniquePicture look(const TemplateName& name, const std::wstring& title, Look look,
                                     bool telling) const {
        const OpenPreview preview(module_, name, look, false);
        if (telling)
            tellFindings(title, preview);
        return picture(preview);
    }

    void tellFindings(const std::wstring& title, const OpenPreview& preview) const {
        for (const std::wstring& remark : preview.findings().remarks)
            tell(RecordKind::Remark, std::wstring(title).append(L": ").append(remark));
        if (preview.findings().fault)
            tell(RecordKind::Fault, title + L": " + *preview.findings().fault);
        if (!options_.check)
            return;
        for (const QkDlg::ConvertedChild& child : preview.children())
            tell(RecordKind::Text, L"    " + describeChild(child));
    }

    /// Checked only, or for a picture of its own.
    [[nodiscard]] bool open(const TemplateName& name, const std::wstring& title, Look which,
                            bool telling) const {
        const UniquePicture taken = look(name, title, which, telling);
        if (!taken || options_.png.empty())
            return taken != nullptr;
        return save(taken.get(), options_.png, title);
    }

    [[nodiscard]] bool picturePair(const TemplateName& name, const std::wstring& title) const {
        const UniquePicture flat = look(name, title, Look::Flat, true);
        if (!flat)
            return false;
        const UniquePicture plain = look(name, title, Look::Plain, false);
        return save(besideEachOther(plain.get(), flat.get()).get(), pictureFile(name), title);
    }

    [[nodiscard]] bool save(HBITMAP bitmap, const std::wstring& file,
                            const std::wstring& title) const {
        if (!QkDlgTools::savePng(bitmap, file)) {
            tell(RecordKind::Fault, title + L": the picture cannot be saved as " + file);
            return false;
        }
        tell(RecordKind::Picture, file, title);
        return true;
    }

    [[nodiscard]] std::wstring pictureFile(const TemplateName& name) const {
        std::wstring file = options_.prefix + L"-" +
                            (name.name.empty() ? std::to_wstring(name.id) : name.name) + L"-" +
                            hexWord(name.language).substr(2) + L".png";
        std::ranges::replace_if(
            file, [](wchar_t unit) { return unit < L' ' || std::wcschr(L"\\/:*?\"<>|", unit); },
            L'_');
        return options_.all + L"\\" + file;
    }

    void tellUnmatched() const {
        TemplateIds ids;
        for (const TemplateName& name : module_.templates()) {
            const TemplateCopy copy = module_.copyTemplate(name);
            const auto contents = copy.block ? readTemplate(copy.words()) : std::nullopt;
            if (!name.name.empty() || !contents)
                continue;
            for (const TemplateControl& control : contents->controls)
                ids[name.id].insert(control.id);
        }
        for (const std::wstring& line : unmatchedDescriptions(QkDlg::dialogDescriptions(), ids))
            tell(RecordKind::Fault, line);
    }

    const Options& options_;
    const Module& module_;
    std::wstring fileName_;
    std::vector<TemplateName> names_;
};

std::wstring openFault(const std::wstring& file) {
    return file + L": not a module that can be opened (error " + std::to_wstring(GetLastError()) +
           L")";
}

}  // namespace

int runWorker(const Options& options) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    const Module module(options.modules.front());
    if (!module.get()) {
        tell(RecordKind::Fault, openFault(options.modules.front()));
        return 1;
    }
    registerCommonClasses();
    if (const auto fault = describe(options, module))
        tell(RecordKind::Fault, fileNameOf(options.modules.front()) + L": " + *fault);
    Worker(options, module).run();
    return 0;
}

int runInteractive(const Options& options) {
    const Module module(options.modules.front());
    if (!module.get()) {
        QkDlgTools::printError(openFault(options.modules.front()) + L"\n", L"QkPreview");
        return 1;
    }
    registerCommonClasses();
    auto fault = describe(options, module);
    const std::vector<TemplateName> names = wantedTemplates(module, options);
    if (!fault && names.empty())
        fault = L"there is no such dialog template";
    if (!fault) {
        const OpenPreview preview(module, names.front(), options.plain ? Look::Plain : Look::Flat,
                                  true);
        for (const std::wstring& remark : preview.findings().remarks)
            QkDlgTools::printOut(L"remark: " + remark + L"\n");
        fault = preview.findings().fault;
        if (preview.window())
            preview.run();
    }
    if (fault)
        QkDlgTools::printError(*fault + L"\n", L"QkPreview");
    return fault ? 1 : 0;
}

}  // namespace QkPreview

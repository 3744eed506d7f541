// What it costs to make a dialog flat: opens, redraws and closes the same dialog standard and flat
// in turn, and prints medians in milliseconds.
//
// DialogBench [ROUNDS [COUNT]]: with COUNT, dialogs of that many controls only
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QkDlg/QkXDlg.h"

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kWarmUpRounds = 2;
constexpr int kDefaultRounds = 31;
constexpr int kMany = 300;  ///< controls of one kind
constexpr WORD kFirstId = 1000;

// The dialog

/// Predefined window classes of dialog templates.
constexpr WORD kButtonClass = 0x80;
constexpr WORD kEditClass = 0x81;
constexpr WORD kStaticClass = 0x82;
constexpr WORD kComboClass = 0x85;

struct Kind {
    const char* name;
    WORD windowClass;
    DWORD style;
};
constexpr std::array kKinds{
    Kind{"edits", kEditClass, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP},
    Kind{"statics", kStaticClass, SS_LEFT},
    Kind{"buttons", kButtonClass, BS_PUSHBUTTON | WS_TABSTOP},
    Kind{"check boxes", kButtonClass, BS_AUTOCHECKBOX | WS_TABSTOP},
    Kind{"radio buttons", kButtonClass, BS_AUTORADIOBUTTON},
    Kind{"combo lists", kComboClass, CBS_DROPDOWNLIST | WS_TABSTOP},
    Kind{"combo boxes", kComboClass, CBS_DROPDOWN | WS_TABSTOP},
};

/// Builds a dialog template word by word.
class TemplateWriter {
public:
    void word(WORD value) { m_words.push_back(value); }
    void words(std::initializer_list<int> values) {
        for (const int value : values)
            word(static_cast<WORD>(value));
    }
    void dword(DWORD value) {
        word(LOWORD(value));
        word(HIWORD(value));
    }
    void text(std::wstring_view value) {
        for (const wchar_t unit : value)
            word(static_cast<WORD>(unit));
        word(0);
    }
    void align() {
        if (m_words.size() % 2 != 0)
            word(0);
    }
    [[nodiscard]] std::vector<WORD> take() { return std::move(m_words); }

private:
    std::vector<WORD> m_words;
};

/// A dialog of `count` controls in a grid, of all kinds in turn or of a single one.
std::vector<WORD> dialogTemplate(int count, const Kind* only) {
    constexpr int kColumns = 20;
    constexpr int kCellWidth = 60;
    constexpr int kCellHeight = 18;
    constexpr int kPointSize = 9;
    const int rows = (count + kColumns - 1) / kColumns;

    TemplateWriter out;
    out.dword(WS_POPUP | WS_CAPTION | WS_VISIBLE | DS_SETFONT);
    out.dword(0);
    out.words({count, 0, 0, kColumns * kCellWidth, rows * kCellHeight});
    out.words({0, 0});  // no menu, no class of its own
    out.text(L"Bench");
    out.words({kPointSize});
    out.text(L"Tahoma");
    for (int i = 0; i < count; ++i) {
        const Kind& kind = only ? *only : kKinds[static_cast<std::size_t>(i) % kKinds.size()];
        // A combo's height is that of its list when it is open.
        const int height = kind.windowClass == kComboClass ? 4 * kCellHeight : kCellHeight - 4;
        out.align();
        out.dword(kind.style | WS_CHILD | WS_VISIBLE);
        out.dword(kind.windowClass == kEditClass ? WS_EX_CLIENTEDGE : 0);
        out.words({2 + i % kColumns * kCellWidth, 2 + i / kColumns * kCellHeight, kCellWidth - 4,
                   height, kFirstId + i, 0xFFFF, kind.windowClass});
        out.text(L"Control " + std::to_wstring(i));
        out.word(0);
    }
    return out.take();
}

class BenchDialog : public QkDlg::QkXDlg {
public:
    explicit BenchDialog(bool flat) : QkXDlg(0) { m_bFlat = flat; }

    void open(const std::vector<WORD>& words) {
        CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                   reinterpret_cast<const DLGTEMPLATE*>(words.data()), nullptr,
                                   GetDialogProc(), reinterpret_cast<LPARAM>(this));
        if (!m_hWnd || !IsWindowVisible(m_hWnd)) {
            std::fputs("the dialog did not open\n", stderr);
            std::exit(1);
        }
    }
    void redraw() const {
        RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
    void close() { DestroyWindow(std::exchange(m_hWnd, nullptr)); }
};

// Measuring

/// Until everything is painted.
void settle() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    GdiFlush();
}

template <typename Action>
double timeOf(Action action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    settle();
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

enum Stage { kOpen, kRedraw, kClose, kStages };
constexpr std::array<const char*, kStages> kStageNames{"open", "redraw", "close"};

/// Times of one dialog by stage, one for each round.
using Times = std::array<std::vector<double>, kStages>;

void runOnce(const std::vector<WORD>& words, bool flat, Times& times) {
    auto dialog = std::make_unique<BenchDialog>(flat);
    times[kOpen].push_back(timeOf([&] { dialog->open(words); }));
    times[kRedraw].push_back(timeOf([&] { dialog->redraw(); }));
    times[kClose].push_back(timeOf([&] {
        dialog->close();
        dialog.reset();
    }));
}

double quantile(std::vector<double> values, double share) {
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

void compare(const char* name, int count, const Kind* only, int rounds) {
    const std::vector<WORD> words = dialogTemplate(count, only);
    Times standard;
    Times flat;
    for (int round = 0; round < rounds + kWarmUpRounds; ++round) {
        if (round == kWarmUpRounds) {
            standard = {};
            flat = {};
        }
        runOnce(words, false, standard);
        runOnce(words, true, flat);
    }
    for (std::size_t stage = 0; stage < kStages; ++stage) {
        const auto spread = [](const std::vector<double>& times) {
            return (quantile(times, 0.75) - quantile(times, 0.25)) / quantile(times, 0.5) * 100;
        };
        const double before = quantile(standard[stage], 0.5);
        const double after = quantile(flat[stage], 0.5);
        std::printf("%4d %-14s %-7s %9.2f %9.2f %7.2f %6.0f%% %6.0f%%\n", count, name,
                    kStageNames[stage], before, after, after / before, spread(standard[stage]),
                    spread(flat[stage]));
    }
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : kDefaultRounds;
    const int only = argc > 2 ? std::atoi(argv[2]) : 0;
    std::puts("                            standard      flat   ratio     spread (quartiles)");
    for (const int count : {10, 100, 300}) {
        if (only == 0 || only == count)
            compare("mixed", count, nullptr, rounds);
    }
    const int ofOneKind = only != 0 ? only : kMany;
    for (const Kind& kind : kKinds)
        compare(kind.name, ofOneKind, &kind, rounds);
    return 0;
}

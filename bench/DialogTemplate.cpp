#include "DialogTemplate.h"

#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace QkDlgBench {

namespace {

constexpr WORD kFirstId = 1000;
constexpr int kColumns = 20;
constexpr int kCellWidth = 60;   ///< dialog units
constexpr int kCellHeight = 16;  ///< dialog units
constexpr int kPointSize = 9;

/// Predefined window classes of dialog templates.
constexpr WORD kButtonClass = 0x80;
constexpr WORD kEditClass = 0x81;
constexpr WORD kStaticClass = 0x82;
constexpr WORD kComboClass = 0x85;

struct Child {
    WORD windowClass;
    DWORD style;
    DWORD exStyle;
};
constexpr DWORD kEditStyle = ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;
constexpr std::array kChildren{
    Child{kStaticClass, SS_LEFT, 0},
    Child{kEditClass, kEditStyle, WS_EX_CLIENTEDGE},
    Child{kButtonClass, BS_PUSHBUTTON | WS_TABSTOP, 0},
    Child{kButtonClass, BS_AUTOCHECKBOX | WS_TABSTOP, 0},
    Child{kButtonClass, BS_AUTORADIOBUTTON, 0},
    Child{kComboClass, CBS_DROPDOWNLIST | WS_TABSTOP, 0},
    Child{kComboClass, CBS_DROPDOWN | WS_TABSTOP, 0},
    Child{kButtonClass, BS_SPLITBUTTON | WS_TABSTOP, 0},
    Child{kEditClass, kEditStyle | ES_PASSWORD, WS_EX_CLIENTEDGE},
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

void writeChild(TemplateWriter& out, int index) {
    const Child& child = kChildren[static_cast<std::size_t>(index) % kChildren.size()];
    // A combo's height is that of its list when it is open.
    const int height = child.windowClass == kComboClass ? 4 * kCellHeight : kCellHeight - 3;
    out.align();
    out.dword(child.style | WS_CHILD | WS_VISIBLE);
    out.dword(child.exStyle);
    out.words({2 + index % kColumns * kCellWidth, 2 + index / kColumns * kCellHeight,
               kCellWidth - 4, height, kFirstId + index, 0xFFFF, child.windowClass});
    out.text(L"Control " + std::to_wstring(index));
    out.word(0);
}

}  // namespace

std::vector<WORD> mixedDialog(int count) {
    const int rows = (count + kColumns - 1) / kColumns;
    TemplateWriter out;
    out.dword(WS_POPUP | WS_CAPTION | WS_VISIBLE | DS_SETFONT);
    out.dword(0);
    out.words({count, 0, 0, kColumns * kCellWidth, rows * kCellHeight + 2});
    out.words({0, 0});  // no menu, no class of its own
    out.text(L"Bench");
    out.words({kPointSize});
    out.text(L"Tahoma");
    for (int i = 0; i < count; ++i)
        writeChild(out, i);
    return out.take();
}

}  // namespace QkDlgBench

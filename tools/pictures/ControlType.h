#pragma once

// What a sheet of states shows, as tables: a row for each specimen of a control, a column for each
// state that it is brought into. Lengths are pixels at 96 DPI.

#include <memory>
#include <span>

#include "QkDlg/QkCustomControl.h"
#include "QkUtil/Geometry.h"

namespace QkPictures {

enum class State { Normal, Hot, Pressed, Focused, Disabled, Open };

/// A point within a control, in percent of its width and height.
struct Spot {
    int x = 50;
    int y = 50;
};

/// Does something to the control of a specimen.
using Step = void (*)(HWND control);

struct Column {
    const wchar_t* label = nullptr;
    State state = State::Normal;
    Spot mouse{};          ///< where the mouse goes for Hot and Pressed
    Step begin = nullptr;  ///< while the control is still a standard one
    Step end = nullptr;    ///< once it is flat and in its state
};

/// Bits of the columns that a specimen is shown in.
constexpr unsigned kAllColumns = ~0U;

struct Specimen {
    const wchar_t* label = nullptr;
    const wchar_t* text = L"";
    DWORD style = 0;        ///< besides the type's
    QkDlg::Size size{};     ///< empty: the type's
    Step fill = nullptr;    ///< while the control is still a standard one
    Step show = nullptr;    ///< once it is flat
    bool mirrored = false;  ///< in a dialog that runs from right to left
    unsigned columns = kAllColumns;
    std::unique_ptr<QkDlg::QkCustomControl> (*make)() = nullptr;  ///< null: the type's
};

struct ControlType {
    const wchar_t* name = nullptr;  ///< for file names
    const wchar_t* className = nullptr;
    DWORD style = 0;
    DWORD exStyle = 0;
    QkDlg::Size size{};
    int listHeight = 0;  ///< of a combo box, which is created with its list
    int roomBelow = 0;   ///< for what opens
    int roomBeside = 0;  ///< for what the flat control adds
    std::unique_ptr<QkDlg::QkCustomControl> (*make)() = nullptr;
    std::span<const Column> columns{};
    std::span<const Specimen> specimens{};
};

/// The control id of every specimen.
constexpr UINT kControlId = 100;

template <typename Control>
std::unique_ptr<QkDlg::QkCustomControl> make() {
    return std::make_unique<Control>(kControlId);
}

// The tables, by family.
[[nodiscard]] std::span<const ControlType> buttonTypes();
[[nodiscard]] std::span<const ControlType> fieldTypes();
[[nodiscard]] std::span<const ControlType> barTypes();
[[nodiscard]] std::span<const ControlType> listTypes();

}  // namespace QkPictures

#pragma once

#include <array>
#include <optional>
#include <vector>

#include "QkCustCtrl/ListViewLayout.h"
#include "QkCustCtrl/ListViewQueries.h"
#include "QkUtil/Handles.h"

namespace QkDlg {

/// Fills in the ground of a list, which shows wherever there is no row and no header item.
void fillListGround(HDC dc, const RECT& rect);

/// Paints the items of a header and the rows and cells of a list, as NM_CUSTOMDRAW asks for them.
/// The results are those to answer it with.
class ListViewPainter {
    struct Run;

public:
    /// What a row or a header item is filled with and framed in.
    struct Face {
        COLORREF fill;
        COLORREF frame;
    };

    ListViewPainter();

    /// A run of painting begins: what is the same for all its rows is found out once. Returns the
    /// run that this one interrupts, as when the host answers for a text by opening a dialog.
    [[nodiscard]] std::optional<Run> Begin(const PaintedList& painted);
    /// The run is over, and the one that it interrupted goes on.
    void End(std::optional<Run> outer);
    /// What texts are written in; of the process's cache.
    [[nodiscard]] HFONT Font() const { return m_listFont; }
    /// What the run paints; null between two runs.
    [[nodiscard]] const PaintedList* Current() const { return m_run ? &m_run->painted : nullptr; }

    /// The application has told the list the text of an item (LVN_GETDISPINFO). Within a run it
    /// need not be asked once more.
    void Hear(const LVITEMW& told);

    [[nodiscard]] LRESULT PaintHeaderItem(const NMCUSTOMDRAW& draw, HWND header) const;
    [[nodiscard]] LRESULT PaintRow(const NMLVCUSTOMDRAW& draw, const PaintedList& painted);
    [[nodiscard]] LRESULT PaintCell(const NMLVCUSTOMDRAW& draw, const PaintedList& painted);
    /// A row with all its cells, within a run. The list need not ask for each cell, then.
    [[nodiscard]] LRESULT PaintWholeRow(const NMCUSTOMDRAW& draw);

private:
    enum class RowLook { Plain, Hot, Selected };

    /// What the list says of a row in one answer, as each question takes its time.
    struct RowState {
        int row = -1;
        RECT rect{};  ///< of the row: not every version of the control tells that of a cell
        RowLook look = RowLook::Plain;
        UINT state = 0;
        int image = I_IMAGENONE;
        ListText label{};
    };

    struct ToldText {
        int row = -1;
        int subItem = -1;
        ListText text{};
    };

    struct Column {
        RECT rect{};  ///< in client coordinates of the list; only left and right count
        bool rightAligned = false;
    };

    struct Run {
        PaintedList painted;
        ListLengths lengths{0};
        bool highContrast = false;
        bool enabled = true;
        int firstDisplayed = 0;
        int columnCount = -1;                        ///< not asked for yet
        std::vector<std::optional<Column>> columns;  ///< by sub-item, each filled in when needed
        RowState row;                                ///< the one being painted
        ToldText told;                               ///< the last text that was heard
    };

    /// What decides how the check boxes look.
    struct Colours {
        bool highContrast;
        COLORREF ground;

        bool operator==(const Colours&) const = default;
    };

    [[nodiscard]] static Colours ColoursOfNow();
    [[nodiscard]] Run NewRun(const PaintedList& painted);
    [[nodiscard]] static const Column& ColumnOf(Run& run, int subItem);
    [[nodiscard]] static const ListText* ToldTextOf(const Run& run, int row, int subItem);
    [[nodiscard]] static RowState RowOf(const Run& run, const NMCUSTOMDRAW& draw);
    [[nodiscard]] static ListText CellText(const Run& run, int subItem);
    [[nodiscard]] static Face FaceOf(const Run& run);
    [[nodiscard]] static COLORREF TextColour(const Run& run, bool first);
    static void BeginRow(Run& run, const NMCUSTOMDRAW& draw);
    void DrawCell(Run& run, HDC dc, int subItem);
    void PaintPictures(HDC dc, const CellParts& parts, const Run& run) const;
    void PaintCheckBox(HDC dc, const Rect& box, const Run& run) const;
    void LoadCheckBitmaps();

    HFONT m_listFont;                            ///< of the process's cache
    std::array<UniqueBitmap, 2> m_checkBitmaps;  ///< unchecked, checked
    SIZE m_checkSize{};                          ///< of each
    Colours m_bitmapsFor{};
    std::optional<Run> m_run;
};

}  // namespace QkDlg

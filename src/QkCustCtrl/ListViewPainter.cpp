#include "QkCustCtrl/ListViewPainter.h"

#include <utility>

#include "QkDlg/DialogFonts.h"
#include "QkDlg/ImageIdList.h"
#include "QkDlg/UiColors.h"
#include "QkUtil/Bitmaps.h"
#include "QkUtil/ClassProcedure.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"
#include "QkUtil/Resources.h"
#include "QkXML/DialogDefaults.h"

namespace QkDlg {

namespace {

constexpr UINT32 kCheckedImage = 62024;
constexpr UINT32 kUncheckedImage = 62048;

constexpr int kListFontSize = 9;
constexpr UINT kTextFlags = DT_BOTTOM | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX;

constexpr COLORREF kHeaderText = 0x797979;
constexpr COLORREF kFirstColumnText = 0x212121;
constexpr COLORREF kOtherColumnText = 0xA9A9A9;

// The flat check box in high contrast: a frame and a square in it.
constexpr COLORREF kColourBits = 0xFFFFFF;
constexpr int kMarkShare = 4;
constexpr int kFrameShare = 16;
constexpr int kThinBelow = 32;
constexpr int kThinFrame = 2;

using Face = ListViewPainter::Face;

constexpr Face kPlainFace{0xFFFFFF, 0xFFFFFF};
constexpr Face kHotFace{0xFBF3E5, 0xE6C37A};
constexpr Face kSelectedFace{0xFDE8D2, 0xE6A869};

Face systemFace(int colour) {
    return {GetSysColor(colour), GetSysColor(colour)};
}

HBRUSH dcBrush(HDC dc, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

void paintFace(HDC dc, const RECT& rect, const Face& face) {
    FillRect(dc, &rect, dcBrush(dc, face.fill));
    FrameRect(dc, &rect, dcBrush(dc, face.frame));
}

void drawFocusCue(HDC dc, const RECT& row, const ListLengths& lengths) {
    RECT cue = row;
    InflateRect(&cue, -lengths.overlap, -lengths.overlap);
    // The dots are a pattern in the DC's colours.
    SetTextColor(dc, RGB(0, 0, 0));
    SetBkColor(dc, RGB(255, 255, 255));
    DrawFocusRect(dc, &cue);
}

bool hasArea(const RECT& rect) {
    return rect.right > rect.left && rect.bottom > rect.top;
}

/// Writes a text in the font that is selected.
void writeText(HDC dc, const wchar_t* text, const Rect& area, bool rightAligned) {
    RECT rect = toWin32(area);
    DrawTextW(dc, text, -1, &rect, kTextFlags | (rightAligned ? DT_RIGHT : DT_LEFT));
}

// The ground has been filled, and a focus rectangle may be on it.
void setTextColours(HDC dc, COLORREF text, COLORREF ground) {
    SetTextColor(dc, text);
    SetBkColor(dc, ground);
    SetBkMode(dc, TRANSPARENT);
}

/// Takes the middle out of a high-contrast check box, whose recoloured picture is all of one
/// colour, and puts the mark there.
void hollowOut(HDC dc, const Rect& box, int width, bool checked) {
    const int line = width < kThinBelow ? kThinFrame : width / kFrameShare;
    const int border = width / kFrameShare + line;
    const RECT inside{box.left + border, box.top + border, box.left + width - border,
                      box.top + width - border};
    FillRect(dc, &inside, dcBrush(dc, GetSysColor(COLOR_WINDOW)));
    if (!checked)
        return;
    const int mark = width / kMarkShare;
    const int offset = (width - mark) / 2;
    const RECT square{box.left + offset, box.top + offset, box.left + offset + mark,
                      box.top + offset + mark};
    FillRect(dc, &square, dcBrush(dc, GetSysColor(COLOR_WINDOW) ^ kColourBits));
}

void writeHeader(HDC dc, const HeaderItem& item, const RECT& rect, COLORREF ink) {
    const ListLengths lengths(screenDpi());
    Rect area = headerTextArea(fromWin32(rect), lengths);
    if (area.width() <= 0 || area.height() <= 0)
        return;
    if (item.isSorted()) {
        const HeaderParts parts = layOutSortedHeader(area, textSize(dc, item.text.data()),
                                                     item.isRightAligned(), lengths);
        const bool up = (item.format & HDF_SORTUP) != 0;
        for (int line = 0; line < parts.arrow.height(); ++line) {
            const RECT pixels = toWin32(sortArrowLine(parts.arrow, line, up));
            FillRect(dc, &pixels, dcBrush(dc, ink));
        }
        area = parts.text;
    }
    writeText(dc, item.text.data(), area, item.isRightAligned());
}

}  // namespace

void fillListGround(HDC dc, const RECT& rect) {
    const COLORREF ground = IsHighContrast() ? GetSysColor(COLOR_WINDOW) : kPlainFace.fill;
    FillRect(dc, &rect, dcBrush(dc, ground));
}

ListViewPainter::ListViewPainter()
    : m_listFont(GetFont(kListFontSize, defaultFontFace(), FW_NORMAL, 0)) {
    LoadCheckBitmaps();
}

ListViewPainter::Colours ListViewPainter::ColoursOfNow() {
    return {IsHighContrast(), GetSysColor(COLOR_WINDOW)};
}

// Recoloured first: what is premultiplied has lost the pixels' own colours.
void ListViewPainter::LoadCheckBitmaps() {
    m_bitmapsFor = ColoursOfNow();
    const unsigned bucket = dpiBucket(screenDpi());
    std::size_t next = 0;
    for (const UINT32 image : {kUncheckedImage, kCheckedImage}) {
        UniqueBitmap bitmap = LoadBitmapResource(image + bucket);
        if (bitmap) {
            PrepareGlyphForState(bitmap.get(), true);
            premultiplyBitmap(bitmap.get());
            // Where it is not blended but copied, what is transparent would come out black.
            if (IsLowColourDisplay())
                putOnWhite(bitmap.get());
        }
        m_checkBitmaps.at(next++) = std::move(bitmap);
    }
    const Size size = bitmapSize(m_checkBitmaps.front().get());
    m_checkSize = {size.width, size.height};
}

// A run of painting

ListViewPainter::Run ListViewPainter::NewRun(const PaintedList& painted) {
    Run run;
    run.painted = painted;
    run.lengths = ListLengths(screenDpi());
    run.highContrast = IsHighContrast();
    run.enabled = IsWindowEnabled(painted.list) != FALSE;
    run.firstDisplayed = firstDisplayedOf(painted.header);
    if (ColoursOfNow() != m_bitmapsFor)
        LoadCheckBitmaps();
    return run;
}

std::optional<ListViewPainter::Run> ListViewPainter::Begin(const PaintedList& painted) {
    return std::exchange(m_run, NewRun(painted));
}

void ListViewPainter::End(std::optional<Run> outer) {
    m_run = std::move(outer);
}

const ListViewPainter::Column& ListViewPainter::ColumnOf(Run& run, int subItem) {
    const auto index = static_cast<std::size_t>(subItem);
    if (index >= run.columns.size())
        run.columns.resize(index + 1);
    std::optional<Column>& column = run.columns.at(index);
    if (column)
        return *column;
    column.emplace();
    const HWND header = run.painted.header;
    column->rect = columnRect(run.painted, index);
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    askClass(header, HDM_GETITEMW, index, &item);
    column->rightAligned = (item.fmt & HDF_JUSTIFYMASK) == HDF_RIGHT;
    return *column;
}

void ListViewPainter::Hear(const LVITEMW& told) {
    if (!m_run || (told.mask & LVIF_TEXT) == 0 || !told.pszText ||
        told.pszText == LPSTR_TEXTCALLBACKW)
        return;
    m_run->told.row = told.iItem;
    m_run->told.subItem = told.iSubItem;
    lstrcpynW(m_run->told.text.data(), told.pszText, static_cast<int>(m_run->told.text.size()));
}

const ListText* ListViewPainter::ToldTextOf(const Run& run, int row, int subItem) {
    return run.told.row == row && run.told.subItem == subItem ? &run.told.text : nullptr;
}

ListViewPainter::RowState ListViewPainter::RowOf(const Run& run, const NMCUSTOMDRAW& draw) {
    RowState row;
    LVITEMW item{};
    item.stateMask = ~0U;
    item.iItem = static_cast<int>(draw.dwItemSpec);
    const ListText* const told = run.painted.icons ? nullptr : ToldTextOf(run, item.iItem, 0);
    if (told) {
        row.label = *told;
        // Not LVM_GETITEMSTATE: an owner-data list of Wine's leaves some of its bits to chance.
        item.mask = LVIF_STATE;
        askClass(run.painted.list, LVM_GETITEMW, 0, &item);
    } else {
        item.mask = LVIF_STATE | LVIF_TEXT | (run.painted.icons ? LVIF_IMAGE : 0U);
        readText(run.painted.list, item, row.label);
    }
    row.row = item.iItem;
    row.rect = draw.rc;
    row.state = item.state;
    if (run.painted.icons)
        row.image = item.iImage;
    if ((row.state & (LVIS_SELECTED | LVIS_DROPHILITED)) != 0 ||
        (draw.uItemState & CDIS_DROPHILITED) != 0)
        row.look = RowLook::Selected;
    else if (row.row == run.painted.hotRow)
        row.look = RowLook::Hot;
    return row;
}

// Header, row, cell

LRESULT ListViewPainter::PaintHeaderItem(const NMCUSTOMDRAW& draw, HWND header) const {
    if (!hasArea(draw.rc))
        return CDRF_SKIPDEFAULT;
    const bool highContrast = IsHighContrast();
    const auto index = static_cast<int>(draw.dwItemSpec);
    Face face = kPlainFace;
    if (highContrast)
        face = systemFace(COLOR_WINDOW);
    else if ((draw.uItemState & CDIS_SELECTED) != 0)
        face = kSelectedFace;
    else if (hotHeaderItemOf(header) == index)
        face = kHotFace;
    paintFace(draw.hdc, draw.rc, face);

    const COLORREF ink = highContrast ? GetSysColor(COLOR_WINDOWTEXT) : kHeaderText;
    const Selection font(draw.hdc, m_listFont);
    setTextColours(draw.hdc, ink, face.fill);
    writeHeader(draw.hdc, HeaderItem(header, index), draw.rc, ink);
    return CDRF_SKIPDEFAULT;
}

void ListViewPainter::BeginRow(Run& run, const NMCUSTOMDRAW& draw) {
    run.row = RowOf(run, draw);
    paintFace(draw.hdc, draw.rc, FaceOf(run));
    if (run.painted.focusCue && (run.row.state & LVIS_FOCUSED) != 0)
        drawFocusCue(draw.hdc, draw.rc, run.lengths);
}

LRESULT ListViewPainter::PaintRow(const NMLVCUSTOMDRAW& draw, const PaintedList& painted) {
    std::optional<Run> own;
    BeginRow(m_run ? *m_run : own.emplace(NewRun(painted)), draw.nmcd);
    return CDRF_NOTIFYSUBITEMDRAW;
}

LRESULT ListViewPainter::PaintWholeRow(const NMCUSTOMDRAW& draw) {
    Run& run = *m_run;
    BeginRow(run, draw);
    if (run.columnCount < 0)
        run.columnCount = static_cast<int>(askClass(run.painted.header, HDM_GETITEMCOUNT));
    for (int subItem = 0; subItem < run.columnCount; ++subItem)
        DrawCell(run, draw.hdc, subItem);
    return CDRF_SKIPDEFAULT;
}

LRESULT ListViewPainter::PaintCell(const NMLVCUSTOMDRAW& draw, const PaintedList& painted) {
    std::optional<Run> own;
    Run& run = m_run ? *m_run : own.emplace(NewRun(painted));
    if (run.row.row != static_cast<int>(draw.nmcd.dwItemSpec))
        run.row = RowOf(run, draw.nmcd);
    DrawCell(run, draw.nmcd.hdc, draw.iSubItem);
    return CDRF_SKIPDEFAULT;
}

void ListViewPainter::DrawCell(Run& run, HDC dc, int subItem) {
    const Column& column = ColumnOf(run, subItem);
    const RECT cell{column.rect.left, run.row.rect.top, column.rect.right, run.row.rect.bottom};
    if (!hasArea(cell) || !RectVisible(dc, &cell))
        return;
    const CellKind kind = kindOfCells(run.painted, subItem, run.firstDisplayed);
    const CellParts parts = layOutCell(fromWin32(cell), kind, run.lengths);
    if (kind.firstDisplayed && (kind.hasCheckBox || kind.hasIcon))
        PaintPictures(dc, parts, run);

    const ListText text = subItem == 0 ? run.row.label : CellText(run, subItem);
    const Selection font(dc, m_listFont);
    setTextColours(dc, TextColour(run, kind.firstDisplayed), FaceOf(run).fill);
    writeText(dc, text.data(), parts.text, column.rightAligned);
}

ListText ListViewPainter::CellText(const Run& run, int subItem) {
    if (const ListText* const told = ToldTextOf(run, run.row.row, subItem))
        return *told;
    return cellText(run.painted.list, run.row.row, subItem);
}

ListViewPainter::Face ListViewPainter::FaceOf(const Run& run) {
    if (run.highContrast)
        return systemFace(run.row.look == RowLook::Plain ? COLOR_WINDOW : COLOR_HIGHLIGHT);
    switch (run.row.look) {
        case RowLook::Selected: return kSelectedFace;
        case RowLook::Hot: return kHotFace;
        default: return kPlainFace;
    }
}

COLORREF ListViewPainter::TextColour(const Run& run, bool first) {
    // The colour of disabled texts need not be readable on that of a selection.
    if (run.highContrast && run.row.look != RowLook::Plain)
        return GetSysColor(COLOR_HIGHLIGHTTEXT);
    if (run.highContrast)
        return GetSysColor(run.enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
    if (first && !run.enabled)
        return GetDisabledTextColor();
    return first ? kFirstColumnText : kOtherColumnText;
}

// Check box and icon belong to the row, whichever of its cells is displayed first.
void ListViewPainter::PaintPictures(HDC dc, const CellParts& parts, const Run& run) const {
    if (parts.checkBox != Rect{})
        PaintCheckBox(dc, parts.checkBox, run);
    if (parts.icon != Rect{} && run.row.image >= 0) {
        const UINT overlay = run.row.state & LVIS_OVERLAYMASK;
        const UniqueIcon icon(
            ImageList_GetIcon(run.painted.icons, run.row.image, ILD_TRANSPARENT | overlay));
        if (icon)
            DrawIconEx(dc, parts.icon.left, parts.icon.top, icon.get(), parts.icon.width(),
                       parts.icon.height(), 0, nullptr, DI_NORMAL | DI_NOMIRROR);
    }
}

void ListViewPainter::PaintCheckBox(HDC dc, const Rect& box, const Run& run) const {
    const bool checked = (run.row.state & LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
    const HBITMAP bitmap = m_checkBitmaps.at(checked ? 1 : 0).get();
    if (!bitmap)
        return;
    if (IsLowColourDisplay())
        copyBitmap(dc, bitmap, box.left, box.top);
    else
        AlphaBlendBitmap(dc, bitmap, box.left, box.top, m_checkSize.cx, m_checkSize.cy);
    if (m_bitmapsFor.highContrast)
        hollowOut(dc, box, m_checkSize.cx, checked);
}

}  // namespace QkDlg

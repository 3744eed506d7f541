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

/// The cursor in client coordinates of a window, unless the mouse is over another one.
std::optional<POINT> cursorIn(HWND hwnd) {
    POINT cursor{};
    if (!GetCursorPos(&cursor))
        return std::nullopt;
    POINT inside = cursor;
    ScreenToClient(hwnd, &inside);
    const RECT client = clientRect(hwnd);
    // Mostly the mouse is elsewhere, and what window that is need not be asked.
    if (!PtInRect(&client, inside) || WindowFromPoint(cursor) != hwnd)
        return std::nullopt;
    return inside;
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

Size textSize(HDC dc, const wchar_t* text) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text, lstrlenW(text), &size);
    return {size.cx, size.cy};
}

/// Asks the list for what the mask of `item` names and for its text.
template <typename Text>
void readText(HWND list, LVITEMW& item, Text& text) {
    constexpr auto capacity = static_cast<int>(std::tuple_size_v<Text>);
    item.pszText = text.data();
    item.cchTextMax = capacity;
    askClass(list, LVM_GETITEMW, 0, &item);
    // A list may answer with a text of its own instead of filling the buffer.
    if (item.pszText && item.pszText != text.data() && item.pszText != LPSTR_TEXTCALLBACKW)
        lstrcpynW(text.data(), item.pszText, capacity);
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

struct HeaderItem {
    std::array<wchar_t, 260> text{};
    int format = 0;

    HeaderItem(HWND header, int index) {
        HDITEMW item{};
        item.mask = HDI_TEXT | HDI_FORMAT;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        askClass(header, HDM_GETITEMW, static_cast<WPARAM>(index), &item);
        format = item.fmt;
        // A header may answer with a text of its own instead of filling the buffer.
        if (item.pszText && item.pszText != text.data())
            lstrcpynW(text.data(), item.pszText, item.cchTextMax);
    }

    [[nodiscard]] bool isRightAligned() const { return (format & HDF_JUSTIFYMASK) == HDF_RIGHT; }
    [[nodiscard]] bool isSorted() const { return (format & (HDF_SORTUP | HDF_SORTDOWN)) != 0; }
};

/// In client coordinates of the list, up and down those of the header.
RECT columnRect(const PaintedList& painted, std::size_t subItem) {
    RECT rect{};
    askClass(painted.header, HDM_GETITEMRECT, subItem, &rect);
    // The header moves with the list when that one scrolls sideways.
    MapWindowPoints(painted.header, painted.list, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

HFONT listFont() {
    return GetFont(kListFontSize, defaultFontFace(), FW_NORMAL, 0);
}

/// The rows whose texts say how wide a column has to be: the first, and the one after the last.
std::pair<int, int> rowsToMeasure(HWND list) {
    const auto count = static_cast<int>(askClass(list, LVM_GETITEMCOUNT));
    if ((GetWindowLongPtrW(list, GWL_STYLE) & LVS_OWNERDATA) == 0)
        return {0, count};
    const auto top = static_cast<int>(askClass(list, LVM_GETTOPINDEX));
    const auto page = static_cast<int>(askClass(list, LVM_GETCOUNTPERPAGE));
    return {top, std::min(top + page + 1, count)};
}

int headerWidth(HDC dc, const HeaderItem& item, const ListLengths& lengths) {
    const int arrow = item.isSorted() ? lengths.underText + 2 * lengths.arrow - 1 : 0;
    return textSize(dc, item.text.data()).width + 2 * lengths.inset + arrow;
}

int firstDisplayedOf(HWND header) {
    return static_cast<int>(askClass(header, HDM_ORDERTOINDEX));
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

int hotRowOf(HWND list) {
    const std::optional<POINT> cursor = cursorIn(list);
    if (!cursor || !isBelowHeader(cursor->y, ListLengths(screenDpi())))
        return -1;
    LVHITTESTINFO hit{};
    hit.pt = *cursor;
    askClass(list, LVM_HITTEST, 0, &hit);
    return (hit.flags & LVHT_ONITEM) != 0 ? hit.iItem : -1;
}

int hotHeaderItemOf(HWND header) {
    const std::optional<POINT> cursor = cursorIn(header);
    if (!cursor)
        return -1;
    HDHITTESTINFO hit{};
    hit.pt = *cursor;
    askClass(header, HDM_HITTEST, 0, &hit);
    return (hit.flags & (HHT_ONHEADER | HHT_ONDIVIDER | HHT_ONDIVOPEN)) != 0 ? hit.iItem : -1;
}

RECT labelArea(const PaintedList& painted, int row) {
    RECT bounds{};
    bounds.left = LVIR_BOUNDS;
    askClass(painted.list, LVM_GETITEMRECT, static_cast<WPARAM>(row), &bounds);
    const ListLengths lengths(screenDpi());
    const RECT column = columnRect(painted, 0);
    const Rect cell{column.left, bounds.top, column.right, bounds.bottom};
    const CellKind kind{firstDisplayedOf(painted.header) == 0, painted.checkBoxes,
                        painted.icons != nullptr};
    const Rect text = layOutCell(cell, kind, lengths).text;
    const RECT area{text.left - lengths.inset, cell.top, cell.right, cell.bottom};
    return area.right - area.left < lengths.row ? RECT{} : area;
}

int widthToFit(const PaintedList& painted, int column, bool withHeader) {
    const ListLengths lengths(screenDpi());
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    const Selection font(dc.get(), listFont());
    const CellKind kind{firstDisplayedOf(painted.header) == column, painted.checkBoxes,
                        painted.icons != nullptr};
    const int besideText = -layOutCell({}, kind, lengths).text.width();
    int width = withHeader ? headerWidth(dc.get(), HeaderItem(painted.header, column), lengths) : 0;
    const auto [first, end] = rowsToMeasure(painted.list);
    // The application that is asked for a text may end the list.
    for (int row = first; row < end && IsWindow(painted.list); ++row) {
        std::array<wchar_t, 260> text{};
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.iSubItem = column;
        readText(painted.list, item, text);
        width = std::max(width, textSize(dc.get(), text.data()).width + besideText);
    }
    return width;
}

void fillListGround(HDC dc, const RECT& rect) {
    const COLORREF ground = IsHighContrast() ? GetSysColor(COLOR_WINDOW) : kPlainFace.fill;
    FillRect(dc, &rect, dcBrush(dc, ground));
}

ListViewPainter::ListViewPainter() : m_listFont(listFont()) {
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
    lstrcpynW(m_run->told.text.data(), told.pszText, kTextCapacity);
}

const ListViewPainter::Text* ListViewPainter::ToldTextOf(const Run& run, int row, int subItem) {
    return run.told.row == row && run.told.subItem == subItem ? &run.told.text : nullptr;
}

ListViewPainter::RowState ListViewPainter::RowOf(const Run& run, const NMCUSTOMDRAW& draw) {
    RowState row;
    LVITEMW item{};
    item.stateMask = ~0U;
    item.iItem = static_cast<int>(draw.dwItemSpec);
    const Text* const told = run.painted.icons ? nullptr : ToldTextOf(run, item.iItem, 0);
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
    const bool first = subItem == run.firstDisplayed;
    const CellKind kind{first, run.painted.checkBoxes, run.painted.icons != nullptr};
    const CellParts parts = layOutCell(fromWin32(cell), kind, run.lengths);
    if (first && (kind.hasCheckBox || kind.hasIcon))
        PaintPictures(dc, parts, run);

    const Text text = subItem == 0 ? run.row.label : CellText(run, subItem);
    const Selection font(dc, m_listFont);
    setTextColours(dc, TextColour(run, first), FaceOf(run).fill);
    writeText(dc, text.data(), parts.text, column.rightAligned);
}

ListViewPainter::Text ListViewPainter::CellText(const Run& run, int subItem) {
    if (const Text* const told = ToldTextOf(run, run.row.row, subItem))
        return *told;
    Text text{};
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = run.row.row;
    item.iSubItem = subItem;
    readText(run.painted.list, item, text);
    return text;
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

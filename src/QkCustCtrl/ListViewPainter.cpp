#include "QkCustCtrl/ListViewPainter.h"

#include "QkDlg/DialogFonts.h"
#include "QkDlg/ImageIdList.h"
#include "QkDlg/UiColors.h"
#include "QkUtil/Bitmaps.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"
#include "QkUtil/Resources.h"
#include "QkXML/DialogDefaults.h"

namespace QkDlg {

namespace {

constexpr UINT32 kCheckedImage = 62024;
constexpr UINT32 kUncheckedImage = 62048;

constexpr int kListFontSize = 9;
constexpr int kTextCapacity = 260;
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
    if (!GetCursorPos(&cursor) || WindowFromPoint(cursor) != hwnd)
        return std::nullopt;
    ScreenToClient(hwnd, &cursor);
    return cursor;
}

bool hasArea(const RECT& rect) {
    return rect.right > rect.left && rect.bottom > rect.top;
}

/// Writes a text in the font that is selected.
void writeText(HDC dc, const wchar_t* text, const Rect& area, bool rightAligned) {
    RECT rect = toWin32(area);
    DrawTextW(dc, text, -1, &rect, kTextFlags | (rightAligned ? DT_RIGHT : DT_LEFT));
}

void setTextColours(HDC dc, COLORREF text, COLORREF ground) {
    SetTextColor(dc, text);
    SetBkColor(dc, ground);
    SetBkMode(dc, OPAQUE);
}

Size textSize(HDC dc, const wchar_t* text) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text, lstrlenW(text), &size);
    return {size.cx, size.cy};
}

using Text = std::array<wchar_t, kTextCapacity>;

Text cellText(HWND list, int row, int subItem) {
    Text text{};
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = subItem;
    item.pszText = text.data();
    item.cchTextMax = kTextCapacity;
    SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    // A list may answer with a text of its own instead of filling the buffer.
    if (item.pszText && item.pszText != text.data() && item.pszText != LPSTR_TEXTCALLBACKW)
        lstrcpynW(text.data(), item.pszText, kTextCapacity);
    return text;
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
    Text text{};
    int format = 0;

    HeaderItem(HWND header, int index) {
        HDITEMW item{};
        item.mask = HDI_TEXT | HDI_FORMAT;
        item.pszText = text.data();
        item.cchTextMax = kTextCapacity;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&item));
        format = item.fmt;
        // A header may answer with a text of its own instead of filling the buffer.
        if (item.pszText && item.pszText != text.data())
            lstrcpynW(text.data(), item.pszText, kTextCapacity);
    }

    [[nodiscard]] bool isRightAligned() const { return (format & HDF_JUSTIFYMASK) == HDF_RIGHT; }
    [[nodiscard]] bool isSorted() const { return (format & (HDF_SORTUP | HDF_SORTDOWN)) != 0; }
};

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
    SendMessageW(list, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return (hit.flags & LVHT_ONITEM) != 0 ? hit.iItem : -1;
}

int hotHeaderItemOf(HWND header) {
    const std::optional<POINT> cursor = cursorIn(header);
    if (!cursor)
        return -1;
    HDHITTESTINFO hit{};
    hit.pt = *cursor;
    SendMessageW(header, HDM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    return (hit.flags & (HHT_ONHEADER | HHT_ONDIVIDER | HHT_ONDIVOPEN)) != 0 ? hit.iItem : -1;
}

void fillListGround(HDC dc, const RECT& rect) {
    const COLORREF ground = IsHighContrast() ? GetSysColor(COLOR_WINDOW) : kPlainFace.fill;
    FillRect(dc, &rect, dcBrush(dc, ground));
}

ListViewPainter::ListViewPainter()
    : m_listFont(GetFont(kListFontSize, defaultFontFace(), FW_NORMAL, 0)) {
    LoadCheckBitmaps();
}

// Recoloured first: what is premultiplied has lost the pixels' own colours.
void ListViewPainter::LoadCheckBitmaps() {
    m_bitmapsInHighContrast = IsHighContrast();
    const unsigned bucket = dpiBucket(screenDpi());
    std::size_t next = 0;
    for (const UINT32 image : {kUncheckedImage, kCheckedImage}) {
        UniqueBitmap bitmap = LoadBitmapResource(image + bucket);
        if (bitmap) {
            PrepareGlyphForState(bitmap.get(), true);
            premultiplyBitmap(bitmap.get());
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
    run.hotRow = hotRowOf(painted.list);
    run.firstDisplayed = static_cast<int>(SendMessageW(painted.header, HDM_ORDERTOINDEX, 0, 0));
    if (run.highContrast != m_bitmapsInHighContrast)
        LoadCheckBitmaps();
    return run;
}

void ListViewPainter::Begin(const PaintedList& painted) {
    m_run = NewRun(painted);
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
    // The header moves with the list when that one scrolls sideways.
    SendMessageW(header, HDM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&column->rect));
    MapWindowPoints(header, run.painted.list, reinterpret_cast<POINT*>(&column->rect), 2);
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    SendMessageW(header, HDM_GETITEMW, index, reinterpret_cast<LPARAM>(&item));
    column->rightAligned = (item.fmt & HDF_JUSTIFYMASK) == HDF_RIGHT;
    return *column;
}

ListViewPainter::RowState ListViewPainter::StateOf(const Run& run, const NMCUSTOMDRAW& draw) {
    constexpr UINT marked = LVIS_SELECTED | LVIS_DROPHILITED;
    const LRESULT state =
        SendMessageW(run.painted.list, LVM_GETITEMSTATE, draw.dwItemSpec, marked | LVIS_FOCUSED);
    RowState row;
    row.row = static_cast<int>(draw.dwItemSpec);
    row.focused = (state & LVIS_FOCUSED) != 0;
    if ((state & marked) != 0 || (draw.uItemState & CDIS_DROPHILITED) != 0)
        row.look = RowLook::Selected;
    else if (row.row == run.hotRow)
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

LRESULT ListViewPainter::PaintRow(const NMLVCUSTOMDRAW& draw, const PaintedList& painted) {
    std::optional<Run> own;
    Run& run = m_run ? *m_run : own.emplace(NewRun(painted));
    run.row = StateOf(run, draw.nmcd);
    paintFace(draw.nmcd.hdc, draw.nmcd.rc, FaceOf(run));
    if (run.row.focused && painted.focusCue)
        drawFocusCue(draw.nmcd.hdc, draw.nmcd.rc, run.lengths);
    return CDRF_NOTIFYSUBITEMDRAW;
}

LRESULT ListViewPainter::PaintCell(const NMLVCUSTOMDRAW& draw, const PaintedList& painted) {
    std::optional<Run> own;
    Run& run = m_run ? *m_run : own.emplace(NewRun(painted));
    if (run.row.row != static_cast<int>(draw.nmcd.dwItemSpec))
        run.row = StateOf(run, draw.nmcd);
    const Column& column = ColumnOf(run, draw.iSubItem);
    const Rect cell{column.rect.left, draw.nmcd.rc.top, column.rect.right, draw.nmcd.rc.bottom};
    if (!hasArea(toWin32(cell)))
        return CDRF_SKIPDEFAULT;

    const bool first = draw.iSubItem == run.firstDisplayed;
    const CellKind kind{first, painted.checkBoxes, painted.icons != nullptr};
    const CellParts parts = layOutCell(cell, kind, run.lengths);
    const HDC dc = draw.nmcd.hdc;
    if (kind.firstDisplayed)
        PaintPictures(dc, parts, run);

    const Text text = cellText(painted.list, run.row.row, draw.iSubItem);
    const Selection font(dc, m_listFont);
    setTextColours(dc, TextColour(run, first), FaceOf(run).fill);
    writeText(dc, text.data(), parts.text, column.rightAligned);
    return CDRF_SKIPDEFAULT;
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
    if (run.highContrast && run.enabled)
        return GetSysColor(run.row.look == RowLook::Plain ? COLOR_WINDOWTEXT : COLOR_HIGHLIGHTTEXT);
    if (run.highContrast || (first && !run.enabled))
        return GetDisabledTextColor();
    return first ? kFirstColumnText : kOtherColumnText;
}

// Check box and icon belong to the row, whichever of its cells is displayed first.
void ListViewPainter::PaintPictures(HDC dc, const CellParts& parts, const Run& run) const {
    LVITEMW item{};
    item.mask = LVIF_IMAGE | LVIF_STATE;
    item.stateMask = LVIS_STATEIMAGEMASK | LVIS_OVERLAYMASK;
    item.iItem = run.row.row;
    SendMessageW(run.painted.list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    if (parts.checkBox != Rect{}) {
        const bool checked = (item.state & LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2);
        PaintCheckBox(dc, parts.checkBox, checked);
    }
    if (parts.icon != Rect{} && item.iImage >= 0) {
        const UINT overlay = item.state & LVIS_OVERLAYMASK;
        const UniqueIcon icon(
            ImageList_GetIcon(run.painted.icons, item.iImage, ILD_TRANSPARENT | overlay));
        if (icon)
            DrawIconEx(dc, parts.icon.left, parts.icon.top, icon.get(), parts.icon.width(),
                       parts.icon.height(), 0, nullptr, DI_NORMAL | DI_NOMIRROR);
    }
}

void ListViewPainter::PaintCheckBox(HDC dc, const Rect& box, bool checked) const {
    const HBITMAP bitmap = m_checkBitmaps.at(checked ? 1 : 0).get();
    if (!bitmap)
        return;
    if (IsLowColourDisplay())
        copyBitmap(dc, bitmap, box.left, box.top);
    else
        AlphaBlendBitmap(dc, bitmap, box.left, box.top, m_checkSize.cx, m_checkSize.cy);
    if (m_bitmapsInHighContrast)
        hollowOut(dc, box, m_checkSize.cx, checked);
}

}  // namespace QkDlg

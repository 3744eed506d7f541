#include "QkDlg/QkFlatListView.h"

#include <memory>
#include <string>
#include <string_view>

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr UINT32 kFlatStyle = 0x410060;
constexpr COLORREF kSelected = 0xFDE8D2;
constexpr COLORREF kGround = RGB(255, 240, 245);
constexpr UINT kRepaint = RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW;
constexpr UINT kChecked = INDEXTOSTATEIMAGEMASK(2);
constexpr UINT kUnchecked = INDEXTOSTATEIMAGEMASK(1);

/// What the standard list answers, asked below every other procedure.
constexpr UINT kBelow = WM_APP + 100;
LRESULT CALLBACK answerFromBelow(HWND list, UINT message, WPARAM wp, LPARAM lp, UINT_PTR,
                                 DWORD_PTR) {
    return message == kBelow ? DefSubclassProc(list, static_cast<UINT>(lp), wp, 0)
                             : DefSubclassProc(list, message, wp, lp);
}
LRESULT tell(HWND window, UINT message, WPARAM wp = 0, LPARAM lp = 0) {
    return SendMessageW(window, message, wp, lp);
}
LRESULT below(HWND list, UINT message, WPARAM wp = 0) {
    return tell(list, kBelow, wp, static_cast<LPARAM>(message));
}
template <typename Record>
LRESULT send(HWND window, UINT message, int index, Record& record) {
    return tell(window, message, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&record));
}
LRESULT setImages(HWND list, HIMAGELIST images, WPARAM kind = LVSIL_SMALL) {
    return tell(list, LVM_SETIMAGELIST, kind, reinterpret_cast<LPARAM>(images));
}
HIMAGELIST images(LRESULT answer) {
    return reinterpret_cast<HIMAGELIST>(answer);
}

UINT state(HWND list, int row, UINT mask = LVIS_STATEIMAGEMASK) {
    return static_cast<UINT>(
        tell(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), static_cast<LPARAM>(mask)));
}
void setState(HWND list, int row, UINT bits, UINT mask = LVIS_STATEIMAGEMASK) {
    LVITEMW item{};
    item.state = bits;
    item.stateMask = mask;
    send(list, LVM_SETITEMSTATE, row, item);
}
RECT rowRect(HWND list, int row) {
    RECT rect{};
    rect.left = LVIR_BOUNDS;
    send(list, LVM_GETITEMRECT, row, rect);
    return rect;
}
Image shown(HWND window) {
    UpdateWindow(window);
    return onScreen(window);
}
HWND headerOf(HWND list) {
    return reinterpret_cast<HWND>(tell(list, LVM_GETHEADER, 0, 0));
}

struct Kind {
    DWORD style = LVS_REPORT;
    LPARAM exStyle = 0;
    int rows = 4;
};

class ListViewTest : public WindowTest {
protected:
    // The first list with bars fills caches. What is lost each time shows in doesNotLeak.
    ListViewTest() { allowGdiGrowth(10); }

    /// A plain list in which rows are called "Row 0" and so on.
    HWND addPlain(const Kind& kind, int id = 101, int y = 10) {
        const HWND list = host_.add(WC_LISTVIEWW, L"", kind.style, scaledArea(10, y, 300, 160), id);
        SetWindowSubclass(list, answerFromBelow, 99, 0);
        tell(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, kind.exStyle);
        for (int i = 0; i < 2; ++i) {
            LVCOLUMNW column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            column.pszText = const_cast<wchar_t*>(L"Column");
            column.cx = scaled(100);
            send(list, LVM_INSERTCOLUMNW, i, column);
        }
        for (int row = 0; row < kind.rows; ++row)
            insert(list, row, row);
        drain();
        return list;
    }
    HWND addFlat(const Kind& kind, int id = 101, int y = 10) {
        return attach(addPlain(kind, id, y));
    }
    HWND attach(HWND list) {
        objects_.push_back(flatten<QkFlatListView>(list));
        return list;
    }
    static void insert(HWND list, int row, int name) {
        std::wstring text = L"Row " + std::to_wstring(name);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = text.data();
        send(list, LVM_INSERTITEMW, 0, item);
    }
    static void clickRow(HWND list, int row, int x = 60) {
        click(list, scaled(x), rowRect(list, row).top + scaled(12));
    }
    static void clickBox(HWND list, int row) { clickRow(list, row, 8); }

    HostDialog host_{
        {.background = kGround, .width = scaled(400), .height = scaled(360), .style = WS_POPUP}};
    std::vector<std::unique_ptr<QkFlatListView>> objects_;
};

/// The themes that windows are given while a patched GetProcAddress finds this function.
std::wstring themes;
HRESULT WINAPI noteTheme(HWND, const wchar_t* name, const wchar_t*) {
    themes += name ? name : L"null;";
    return S_OK;
}
bool knowsThemes = true;
FARPROC WINAPI findNote(HMODULE, LPCSTR name) {
    return knowsThemes && std::string_view(name) == "SetWindowTheme"
               ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&noteTheme))
               : nullptr;
}

HIMAGELIST makeImages() {
    return ImageList_Create(16, 16, ILC_COLOR32, 1, 1);
}

// All that is the application's comes back, as changed meanwhile, whichever way report view ends.
TEST_F(ListViewTest, ApplicationsImagesStylesChecksAndThemeComeBackWhenFlatModeEnds) {
    for (const int way : {0, 1, 2}) {
        SCOPED_TRACE(way);
        themes.clear();
        knowsThemes = way != 1;
        const ImportPatch patch("GetProcAddress", &findNote);
        const HIMAGELIST first = makeImages();
        const HIMAGELIST second = makeImages();
        const HWND list = addPlain({LVS_REPORT, LVS_EX_CHECKBOXES});
        setImages(list, first);
        setState(list, 1, kChecked);
        const COLORREF ground = static_cast<COLORREF>(below(list, LVM_GETBKCOLOR));
        attach(list);
        EXPECT_EQ(below(list, LVM_GETEXTENDEDLISTVIEWSTYLE), kFlatStyle);
        EXPECT_NE(images(below(list, LVM_GETIMAGELIST, LVSIL_SMALL)), first);
        EXPECT_EQ(images(tell(list, LVM_GETIMAGELIST, LVSIL_SMALL)), first);
        EXPECT_EQ(tell(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0), LVS_EX_CHECKBOXES);
        EXPECT_EQ(state(list, 1), kChecked) << "lost on the way in";
        EXPECT_EQ(images(setImages(list, second)), first);
        EXPECT_EQ(setImages(list, second, LVSIL_STATE), 0);
        EXPECT_EQ(tell(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_GRIDLINES), 1);
        EXPECT_EQ(tell(list, WM_THEMECHANGED, 0, 0), 1);
        setState(list, 3, kChecked);
        host_.forget();
        if (way == 0)
            tell(list, LVM_SETVIEW, LV_VIEW_ICON, 0);
        else if (way == 1)
            SetWindowLongPtrW(list, GWL_STYLE,
                              GetWindowLongPtrW(list, GWL_STYLE) & ~LONG_PTR{LVS_TYPEMASK});
        else
            objects_.clear();
        EXPECT_EQ(host_.timesHeard({WM_NOTIFY, 101, static_cast<int>(LVN_ITEMCHANGED)}), 0)
            << "nothing has changed";
        EXPECT_EQ(below(list, LVM_GETEXTENDEDLISTVIEWSTYLE), LVS_EX_CHECKBOXES | LVS_EX_GRIDLINES);
        EXPECT_EQ(images(below(list, LVM_GETIMAGELIST, LVSIL_SMALL)), second);
        EXPECT_EQ(static_cast<COLORREF>(below(list, LVM_GETBKCOLOR)), ground);
        for (int row = 0; row < 4; ++row)
            EXPECT_EQ(state(list, row), row % 2 == 1 ? kChecked : kUnchecked) << row;
        EXPECT_EQ(themes, way == 1 ? L"" : L"null;Explorer");
        DestroyWindow(list);  // and the list destroys its images
        ImageList_Destroy(first);
        objects_.clear();
    }
}

// A list that starts in another view has no header yet. A view that is refused changes nothing.
TEST_F(ListViewTest, FlatModeFollowsTheViewThatTheListIsReallyIn) {
    const HWND list = addFlat({LVS_ICON});
    const QkFlatListView& object = *objects_.front();
    EXPECT_FALSE(object.IsFlat());
    for (const int view : {LV_VIEW_DETAILS, LV_VIEW_LIST, LV_VIEW_DETAILS, LV_VIEW_TILE,
                           LV_VIEW_SMALLICON, LV_VIEW_DETAILS, 77}) {
        tell(list, LVM_SETVIEW, static_cast<WPARAM>(view), 0);
        const bool report = tell(list, LVM_GETVIEW, 0, 0) == LV_VIEW_DETAILS;
        EXPECT_EQ(object.IsFlat(), report) << view;
        EXPECT_EQ(below(list, LVM_GETEXTENDEDLISTVIEWSTYLE) == kFlatStyle, report) << view;
    }
}

TEST_F(ListViewTest, CheckBoxesAnswerMouseAndSpaceBarAndSelectionFollowsTheMouseOnly) {
    constexpr UINT marks = LVIS_SELECTED | LVIS_FOCUSED;
    const HWND list = addFlat({LVS_REPORT, LVS_EX_CHECKBOXES});
    clickBox(list, 1);
    EXPECT_EQ(state(list, 1), kChecked);
    EXPECT_EQ(state(list, 1, marks), marks);
    EXPECT_EQ(GetFocus(), list);
    keyTap(VK_SPACE);
    EXPECT_EQ(state(list, 1), kUnchecked);
    EXPECT_EQ(state(list, 1, marks), marks) << "the space bar leaves the selection";
    clickBox(list, 1);
    clickBox(list, 1);
    EXPECT_EQ(state(list, 1), kUnchecked);
    EXPECT_EQ(state(list, 1, marks), UINT{LVIS_FOCUSED});
    keyTap(VK_DOWN);
    keyTap(VK_SPACE);
    EXPECT_EQ(state(list, 2), kChecked);
    tell(list, WM_LBUTTONDBLCLK, MK_LBUTTON,
         MAKELPARAM(scaled(8), rowRect(list, 3).top + scaled(12)));
    EXPECT_EQ(state(list, 3), kChecked) << "a double click is a press";
    clickRow(list, 0);
    EXPECT_EQ(state(list, 0), kUnchecked) << "beside the box";
}

/// What a list of that look tells its parent of one course of input.
HeardList heardFrom(HostDialog& host, HWND list) {
    host.forget();
    click(list, scaled(60), rowRect(list, 1).top + scaled(12));
    keyDown(VK_CONTROL);
    click(list, scaled(60), rowRect(list, 3).top + scaled(12));
    keyUp(VK_CONTROL);
    for (const int key : {VK_UP, VK_HOME, VK_END, VK_RETURN, VK_F5})
        keyTap(key);
    typeText(L"Row 2");
    keyDown(VK_SHIFT);
    keyTap(VK_UP);
    keyUp(VK_SHIFT);
    doubleClick(list);
    tell(list, LVM_DELETEITEM, 1, 0);
    HeardList heard = host.heard();
    std::erase_if(heard, [](const Heard& one) {
        const auto code = static_cast<UINT>(one.code);
        return code == static_cast<UINT>(LVN_HOTTRACK) || code == LVN_GETDISPINFOW ||
               code == static_cast<UINT>(LVN_ITEMACTIVATE);
    });
    return heard;
}

TEST_F(ListViewTest, SameInputSendsTheNotificationsOfAPlainList) {
    const HWND plain = addPlain({LVS_REPORT, LVS_EX_FULLROWSELECT, 5});
    const HeardList expected = heardFrom(host_, plain);
    EXPECT_GT(expected.size(), 20U);
    DestroyWindow(plain);
    EXPECT_EQ(heardFrom(host_, addFlat({LVS_REPORT, LVS_EX_FULLROWSELECT, 5})), expected);
}

// The box stands in whichever column is displayed first, and is found there by the mouse.
TEST_F(ListViewTest, ColumnsAreDraggedIfAllowedAndInsertedItemsHaveAnUncheckedBox) {
    const HWND list = addFlat({LVS_REPORT, LVS_EX_CHECKBOXES, 0});
    for (const UINT message : std::initializer_list<UINT>{LVM_INSERTITEMW, LVM_INSERTITEMA}) {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.state = 0xFFFF;  // not in the mask
        item.lParam = 42;
        send(list, message, 0, item);
        EXPECT_EQ(item.mask, UINT{LVIF_PARAM}) << "the caller's own";
        EXPECT_EQ(state(list, 0, ~0U), kUnchecked);
    }
    setState(list, 0, kChecked);
    const HWND header = headerOf(list);
    for (const LPARAM allowed : {0, 1}) {
        tell(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, allowed * LVS_EX_HEADERDRAGDROP);
        drag(header, {scaled(50), scaled(10)}, {scaled(190), scaled(10)});
        EXPECT_EQ(tell(header, HDM_ORDERTOINDEX, 0, 0), allowed);
    }
    moveAway();
    EXPECT_LT(shown(list).boundingBoxOf(kAccent).value().right, scaled(20));
    clickBox(list, 0);
    EXPECT_EQ(state(list, 0), kUnchecked);
}

TEST_F(ListViewTest, RowsAndHeaderShowWhatMouseAndSelectionDoAndWhiteBesideThem) {
    const HWND list = addFlat({LVS_REPORT, LVS_EX_CHECKBOXES});
    const HWND header = headerOf(list);
    const auto ground = [list](int row) {
        const RECT rect = rowRect(list, row);
        return shown(list).at(rect.right - scaled(4), rect.bottom - scaled(3));
    };
    setState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(ground(1), kSelected);
    EXPECT_EQ(shown(list).at(0, rowRect(list, 1).top + 3), 0xE6A869U) << "its frame";
    for (const int row : {2, 3}) {
        moveTo(list, scaled(60), rowRect(list, row).top + scaled(12));
        EXPECT_EQ(ground(row), kHover);
        EXPECT_EQ(ground(5 - row), kWhite) << "the row that the mouse is not over";
    }
    const auto headerGround = [header] { return shown(header).at(scaled(190), scaled(21)); };
    moveTo(header, scaled(150), scaled(10));
    EXPECT_EQ(ground(3), kWhite);
    EXPECT_EQ(headerGround(), kHover);
    press();
    EXPECT_EQ(headerGround(), kSelected);
    release();
    moveAway();
    EXPECT_EQ(headerGround(), kWhite);

    setState(list, 0, kChecked);
    EXPECT_TRUE(shown(list).contains(kAccent)) << "checked by the host";
    const Image image = shown(list);
    const RECT last = rowRect(list, 3);
    EXPECT_THAT(image.part({last.right, 0, image.width(), image.height()}), isFilledWith(kWhite));
    EXPECT_THAT(image.part({0, last.bottom, last.right, image.height()}), isFilledWith(kWhite));
}

// One of text and ground from the scheme and the other not would be unreadable.
TEST_F(ListViewTest, HighContrastTakesEveryColourFromTheSchemeAndCheckedDiffersFromUnchecked) {
    const SystemColours scheme({{COLOR_WINDOW, RGB(0, 0, 0)},
                                {COLOR_WINDOWTEXT, RGB(255, 255, 0)},
                                {COLOR_HIGHLIGHT, RGB(0, 0, 200)},
                                {COLOR_HIGHLIGHTTEXT, RGB(0, 255, 0)}});
    const HWND list = addFlat({LVS_REPORT, LVS_EX_CHECKBOXES});
    setState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
    setState(list, 2, kChecked);
    HighContrast contrast;
    RedrawWindow(list, nullptr, nullptr, kRepaint);
    const Image image = onScreen(list);
    const auto part = [&](int row, int left, int right) {
        const RECT rect = rowRect(list, row);
        return image.part(Box(scaled(left), rect.top + 1, scaled(right), rect.bottom - 1));
    };
    EXPECT_TRUE(part(0, 20, 80).contains(RGB(255, 255, 0)));
    EXPECT_TRUE(part(1, 20, 80).contains(RGB(0, 255, 0)));
    EXPECT_NE(part(0, 0, 18), part(2, 0, 18));
    EXPECT_TRUE(part(0, 0, 18).contains(kWhite)) << "the box shows on black";
    EXPECT_THAT(image.part({scaled(220), 0, scaled(280), scaled(140)}), isFilledWith(RGB(0, 0, 0)));
    contrast.turn(false);
    RedrawWindow(list, nullptr, nullptr, kRepaint);
    EXPECT_TRUE(onScreen(list).contains(kAccent)) << "the bitmaps are loaded anew";
}

// The image list goes back before the list destroys its own, so who owned it still does.
TEST_F(ListViewTest, TwoListsOfOneParentEndIndependentlyAndNothingIsLost) {
    int edge = 0;
    const auto alive = [&edge](HIMAGELIST list) {
        return ImageList_GetIconSize(list, &edge, &edge) != FALSE;
    };
    const HIMAGELIST given = makeImages();
    const HIMAGELIST shared = makeImages();
    ImageList_ReplaceIcon(shared, -1, LoadIconW(nullptr, IDI_APPLICATION));
    const HWND first = addFlat({LVS_REPORT, 0});
    const HWND second = addFlat({LVS_REPORT | LVS_SHAREIMAGELISTS, 0, 1}, 102, 180);
    setImages(first, given);
    setImages(second, shared);
    setState(second, 0, LVIS_SELECTED, LVIS_SELECTED);
    DestroyWindow(first);
    EXPECT_FALSE(alive(given));
    objects_.erase(objects_.begin());
    EXPECT_TRUE(shown(second).contains(kSelected)) << "the other one stays flat";

    EXPECT_TRUE(doesNotLeak(50, [&] {
        static_cast<void>(printed(second));
        static_cast<void>(printed(headerOf(second)));
    }));
    EXPECT_TRUE(doesNotLeak(8, [this] {
        const HWND another = addFlat({LVS_REPORT, LVS_EX_CHECKBOXES, 9}, 103, 180);
        DestroyWindow(another);
        objects_.pop_back();
    }));
    const HWND third = addPlain({LVS_REPORT, 0}, 103);
    objects_.back()->Attach(third);
    EXPECT_EQ(images(below(second, LVM_GETIMAGELIST, LVSIL_SMALL)), shared) << "given back";
    EXPECT_EQ(below(third, LVM_GETEXTENDEDLISTVIEWSTYLE), kFlatStyle);
    DestroyWindow(second);
    EXPECT_TRUE(alive(shared));
    ImageList_Destroy(shared);
}

/// Looks after any message that can change what a list shows.
LRESULT CALLBACK watchFrames(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR) {
    const LRESULT result = DefSubclassProc(window, message, wp, lp);
    const bool shows =
        message == WM_PAINT || message == WM_ERASEBKGND || message == WM_WINDOWPOSCHANGED;
    if (shows && IsWindowVisible(window)) {
        const Image image = onScreen(GetAncestor(window, GA_ROOT));
        EXPECT_FALSE(image.part(Box(scaledArea(10, 10, 180, 100))).contains(kGround)) << message;
    }
    return result;
}

TEST_F(ListViewTest, NoFrameShowsTheHostInTheListWhileThatScrollsAndResizes) {
    const HWND list = addFlat({LVS_REPORT, 0, 60});
    for (const HWND window : {list, headerOf(list), host_.window()})
        SetWindowSubclass(window, watchFrames, 77, 0);
    for (int step = 0; step < 6; ++step) {
        tell(list, LVM_SCROLL, 0, scaled(60));
        SetWindowPos(list, nullptr, 0, 0, scaled(300 - 20 * step), scaled(160 - 10 * step),
                     SWP_NOMOVE);
        tell(list, LVM_SETCOLUMNWIDTH, 0, scaled(90 - 5 * step));
        InvalidateRect(host_.window(), nullptr, TRUE);
        drain();
    }
    RemoveWindowSubclass(host_.window(), watchFrames, 77);
    DestroyWindow(list);
}

// No text ends in dots: the cells look as they do in a wide column.
TEST_F(ListViewTest, ColumnFittedToItsTextsCutsNone) {
    const HWND list = addFlat({LVS_REPORT, 0, 1});
    std::wstring text = L"Some words in the second column";
    LVITEMW item{};
    item.iSubItem = 1;
    item.pszText = text.data();
    send(list, LVM_SETITEMTEXTW, 0, item);
    const HWND header = headerOf(list);
    const LONG left = scaled(20);
    tell(list, LVM_SETCOLUMNWIDTH, 0, left);
    for (const bool byMouse : {false, true}) {
        // The divider stands in the header's middle.
        tell(list, LVM_SETCOLUMNWIDTH, 1, clientBox(header).right / 2 - left);
        if (byMouse)
            doubleClick(header);
        else
            tell(list, LVM_SETCOLUMNWIDTH, 1, LVSCW_AUTOSIZE);
        const auto width = static_cast<LONG>(tell(list, LVM_GETCOLUMNWIDTH, 1));
        const RECT row = rowRect(list, 0);
        const Box cell(left, row.top + 2, left + width - scaled(8), row.bottom - 2);
        const Image fitted = shown(list).part(cell);
        tell(list, LVM_SETCOLUMNWIDTH, 1, width + scaled(50));
        EXPECT_THAT(fitted, looksLike(shown(list).part(cell))) << "by mouse: " << byMouse;
    }
}

TEST_F(ListViewTest, ThumbTakesTheListToWhereItStandsAndItsReleaseMovesNothing) {
    const HWND bar = host_.add(L"SCROLLBAR", L"", SBS_HORZ, area(0, 0, 1, 1), 7);
    SetScrollRange(bar, SB_CTL, 0, 200, FALSE);
    for (const bool report : {true, false}) {
        const HWND list = addFlat({LVS_REPORT, 0, 60});
        tell(list, LVM_SETVIEW, report ? LV_VIEW_DETAILS : LV_VIEW_LIST);
        if (!report)  // its columns are not scaled
            MoveWindow(list, 10, 10, 300, 160, FALSE);
        for (const int position : {4, 1, report ? 40 : 3}) {
            SetScrollPos(bar, SB_CTL, position, FALSE);
            for (const auto code : std::initializer_list<WPARAM>{SB_THUMBTRACK, SB_THUMBPOSITION}) {
                tell(list, report ? WM_VSCROLL : WM_HSCROLL, code, reinterpret_cast<LPARAM>(bar));
                EXPECT_EQ(GetScrollPos(list, report ? SB_VERT : SB_HORZ), position);
            }
        }
        DestroyWindow(list);
    }
}

}  // namespace

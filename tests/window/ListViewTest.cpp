#include "QkDlg/QkFlatListView.h"

#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "support/Paper.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr UINT32 kFlatStyle = 0x410060;
constexpr COLORREF kSelected = 0xFDE8D2;
constexpr COLORREF kSelectedFrame = 0xE6A869;
constexpr COLORREF kHot = 0xFBF3E5;
constexpr COLORREF kWhite = 0xFFFFFF;
constexpr UINT kChecked = INDEXTOSTATEIMAGEMASK(2);
constexpr UINT kUnchecked = INDEXTOSTATEIMAGEMASK(1);

/// What the standard list answers, asked below every other procedure.
constexpr UINT kBelow = WM_APP + 100;
LRESULT CALLBACK answerFromBelow(HWND list, UINT message, WPARAM wp, LPARAM lp, UINT_PTR,
                                 DWORD_PTR) {
    return message == kBelow ? DefSubclassProc(list, static_cast<UINT>(lp), wp, 0)
                             : DefSubclassProc(list, message, wp, lp);
}
LRESULT below(HWND list, UINT message, WPARAM wp = 0) {
    return SendMessageW(list, kBelow, wp, static_cast<LPARAM>(message));
}

template <typename Record>
LRESULT send(HWND window, UINT message, int index, Record& record) {
    return SendMessageW(window, message, static_cast<WPARAM>(index),
                        reinterpret_cast<LPARAM>(&record));
}

UINT state(HWND list, int row, UINT mask = LVIS_STATEIMAGEMASK) {
    return static_cast<UINT>(
        SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), static_cast<LPARAM>(mask)));
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
HWND headerOf(HWND list) {
    return reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
}

struct Kind {
    DWORD style = LVS_REPORT;
    LPARAM exStyle = 0;
    int rows = 4;
    int columns = 2;
};

class ListViewTest : public WindowTest {
protected:
    /// A plain list in which rows are called "Row 0" and so on.
    HWND addPlain(const Kind& kind, int id = 101, int y = 10) {
        const HWND list = host_.add(WC_LISTVIEWW, L"", kind.style, scaledArea(10, y, 300, 160), id);
        SetWindowSubclass(list, answerFromBelow, 99, 0);
        SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, kind.exStyle);
        for (int i = 0; i < kind.columns; ++i) {
            LVCOLUMNW column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            column.pszText = const_cast<wchar_t*>(L"Column");
            column.cx = scaled(100);
            send(list, LVM_INSERTCOLUMNW, i, column);
        }
        for (int row = 0; row < kind.rows; ++row)
            insert(list, row);
        drain();
        return list;
    }
    HWND addFlat(const Kind& kind, int id = 101, int y = 10) {
        const HWND list = addPlain(kind, id, y);
        attach(list);
        return list;
    }
    QkFlatListView& attach(HWND list) {
        objects_.push_back(std::make_unique<QkFlatListView>(101));
        objects_.back()->Attach(list);
        UpdateWindow(list);
        drain();
        return *objects_.back();
    }
    static void insert(HWND list, int row) {
        std::wstring text = L"Row " + std::to_wstring(row);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = text.data();
        send(list, LVM_INSERTITEMW, 0, item);
    }
    static void clickBox(HWND list, int row) {
        const RECT rect = rowRect(list, row);
        click(list, rect.left + scaled(8), rect.top + scaled(12));
    }
    static void clickRow(HWND list, int row) {
        const RECT rect = rowRect(list, row);
        click(list, rect.left + scaled(60), rect.top + scaled(12));
    }

    HostDialog host_{{.width = scaled(400), .height = scaled(360)}};
    std::vector<std::unique_ptr<QkFlatListView>> objects_;
};

/// Notes the themes that windows are given, or lets there be no function for it.
class Themes {
public:
    explicit Themes(bool known) : patch_("GetProcAddress", &find) {
        original_ = patch_.original<FARPROC WINAPI(HMODULE, LPCSTR)>();
        known_ = known;
        given_.clear();
    }
    [[nodiscard]] static const std::wstring& given() { return given_; }

private:
    static HRESULT WINAPI set(HWND, const wchar_t* name, const wchar_t*) {
        given_ += name ? name : L"null";
        given_ += L';';
        return S_OK;
    }
    static FARPROC WINAPI find(HMODULE module, LPCSTR name) {
        if (std::string_view(name) != "SetWindowTheme")
            return original_(module, name);
        return known_ ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&set)) : nullptr;
    }
    inline static FARPROC(WINAPI* original_)(HMODULE, LPCSTR) = nullptr;
    inline static bool known_ = true;
    inline static std::wstring given_;
    ImportPatch patch_;
};

struct ImageListDeleter {
    void operator()(HIMAGELIST images) const { ImageList_Destroy(images); }
};
using Images = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDeleter>;
Images makeImages() {
    return Images(ImageList_Create(16, 16, ILC_COLOR32, 1, 1));
}
LPARAM asParam(const Images& images) {
    return reinterpret_cast<LPARAM>(images.get());
}

// All that is the application's comes back, as changed meanwhile, whichever way report view ends.
TEST_F(ListViewTest, ApplicationsImagesStylesChecksAndThemeComeBackWhenFlatModeEnds) {
    const Images first = makeImages();
    const Images second = makeImages();
    for (const int way : {0, 1, 2}) {
        SCOPED_TRACE(way);
        const Themes themes(way != 1);
        const HWND list = addPlain({LVS_REPORT | LVS_SHAREIMAGELISTS, LVS_EX_CHECKBOXES});
        SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, asParam(first));
        setState(list, 1, kChecked);
        const COLORREF ground = static_cast<COLORREF>(below(list, LVM_GETBKCOLOR));
        attach(list);
        EXPECT_EQ(below(list, LVM_GETEXTENDEDLISTVIEWSTYLE), kFlatStyle);
        EXPECT_NE(below(list, LVM_GETIMAGELIST, LVSIL_SMALL), asParam(first));
        EXPECT_EQ(SendMessageW(list, LVM_GETIMAGELIST, LVSIL_SMALL, 0), asParam(first));
        EXPECT_EQ(SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0), LVS_EX_CHECKBOXES);
        EXPECT_EQ(state(list, 0), kUnchecked);
        EXPECT_EQ(state(list, 1), kChecked) << "lost on the way in";

        EXPECT_EQ(SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, asParam(second)),
                  asParam(first));
        EXPECT_EQ(SendMessageW(list, LVM_SETIMAGELIST, LVSIL_STATE, asParam(second)), 0);
        EXPECT_EQ(
            SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_GRIDLINES, LVS_EX_GRIDLINES),
            1);
        EXPECT_EQ(SendMessageW(list, WM_THEMECHANGED, 0, 0), 1);
        setState(list, 3, kChecked);
        host_.forget();
        if (way == 0)
            SendMessageW(list, LVM_SETVIEW, LV_VIEW_ICON, 0);
        else if (way == 1)
            SetWindowLongPtrW(list, GWL_STYLE,
                              GetWindowLongPtrW(list, GWL_STYLE) & ~LONG_PTR{LVS_TYPEMASK});
        else
            objects_.clear();
        EXPECT_EQ(host_.timesHeard(notified(101, LVN_ITEMCHANGED)), 0) << "nothing has changed";
        EXPECT_EQ(below(list, LVM_GETEXTENDEDLISTVIEWSTYLE), LVS_EX_CHECKBOXES | LVS_EX_GRIDLINES);
        EXPECT_EQ(below(list, LVM_GETIMAGELIST, LVSIL_SMALL), asParam(second));
        EXPECT_EQ(static_cast<COLORREF>(below(list, LVM_GETBKCOLOR)), ground);
        for (int row = 0; row < 4; ++row)
            EXPECT_EQ(state(list, row), row % 2 == 1 ? kChecked : kUnchecked) << row;
        EXPECT_EQ(themes.given(), way == 1 ? L"" : L"null;Explorer;");
        DestroyWindow(list);
        objects_.clear();
    }
}

// A list that starts in another view has no header yet. A view that is refused changes nothing.
TEST_F(ListViewTest, FlatModeFollowsTheViewThatTheListIsReallyIn) {
    const HWND list = addPlain({LVS_ICON});
    const QkFlatListView& object = attach(list);
    EXPECT_FALSE(object.IsFlat());
    for (const int view : {LV_VIEW_DETAILS, LV_VIEW_LIST, LV_VIEW_DETAILS, LV_VIEW_TILE,
                             LV_VIEW_SMALLICON, LV_VIEW_DETAILS, 77}) {
        SendMessageW(list, LVM_SETVIEW, static_cast<WPARAM>(view), 0);
        const bool report = SendMessageW(list, LVM_GETVIEW, 0, 0) == LV_VIEW_DETAILS;
        EXPECT_EQ(object.IsFlat(), report) << view;
        EXPECT_EQ(below(list, LVM_GETEXTENDEDLISTVIEWSTYLE) == kFlatStyle, report) << view;
    }
    ASSERT_TRUE(object.IsFlat());
    UpdateWindow(headerOf(list));
    EXPECT_THAT(onScreen(headerOf(list)).part({scaled(250), 0, scaled(290), scaled(20)}),
                isFilledWith(kWhite));
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
    const RECT row = rowRect(list, 3);
    const LPARAM inside = MAKELPARAM(row.left + scaled(19) - scaled(4), row.top + scaled(5));
    SendMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, inside);
    EXPECT_EQ(state(list, 3), kChecked) << "a double click is a press";
    clickRow(list, 0);
    EXPECT_EQ(state(list, 0), kUnchecked) << "beside the box";

    // Without check boxes both are the standard list's.
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_CHECKBOXES, 0);
    clickBox(list, 0);
    keyTap(VK_SPACE);
    EXPECT_EQ(state(list, 0), kUnchecked);
}

TEST_F(ListViewTest, InsertedItemsHaveAnUncheckedBoxAndTheCallersRecordStaysAsItWas) {
    const HWND list = addFlat({LVS_REPORT, LVS_EX_CHECKBOXES, 0});
    for (const UINT message : {LVM_INSERTITEMW, LVM_INSERTITEMA}) {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.state = 0xFFFF;  // not in the mask
        item.lParam = 42;
        const LVITEMW before = item;
        ASSERT_EQ(send(list, message, 0, item), 0);
        EXPECT_EQ(std::memcmp(&item, &before, sizeof item), 0);
        EXPECT_EQ(state(list, 0, ~0U), kUnchecked);
        LVITEMW read{};
        read.mask = LVIF_PARAM;
        send(list, LVM_GETITEMW, 0, read);
        EXPECT_EQ(read.lParam, 42);
        item.mask = LVIF_STATE;
        item.state = kChecked | LVIS_CUT;
        item.stateMask = LVIS_STATEIMAGEMASK | LVIS_CUT;
        send(list, message, 0, item);
        EXPECT_EQ(state(list, 0, ~0U), kUnchecked | LVIS_CUT);
    }
}

Image shown(HWND list) {
    UpdateWindow(list);
    return onScreen(list);
}

TEST_F(ListViewTest, RowsAndHeaderShowWhatTheMouseAndTheSelectionDo) {
    const HWND list = addFlat({LVS_REPORT, LVS_EX_CHECKBOXES});
    const HWND header = headerOf(list);
    const auto ground = [list](int row) {
        const RECT rect = rowRect(list, row);
        return shown(list).at(rect.right - scaled(4), rect.bottom - scaled(3));
    };
    setState(list, 1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(ground(1), kSelected);
    EXPECT_EQ(shown(list).at(rowRect(list, 1).right - 1, rowRect(list, 1).top + 3), kSelectedFrame);
    EXPECT_EQ(ground(2), kWhite);
    for (const int row : {2, 3}) {
        moveTo(list, scaled(60), rowRect(list, row).top + scaled(12));
        EXPECT_EQ(ground(row), kHot);
        EXPECT_EQ(ground(5 - row), kWhite) << "the row that the mouse is not over";
    }
    moveTo(header, scaled(150), scaled(10));
    EXPECT_EQ(ground(3), kWhite);
    EXPECT_EQ(onScreen(header).at(scaled(190), scaled(21)), kHot);
    press();
    EXPECT_EQ(shown(header).at(scaled(190), scaled(21)), kSelected);
    release();
    moveAway();
    EXPECT_EQ(onScreen(header).at(scaled(190), scaled(21)), kWhite);

    // Checking, by the host as well, changes the picture; nothing is beside columns and rows.
    const auto box = [list] {
        const RECT row = rowRect(list, 0);
        return shown(list).part(Box(row.left, row.top, row.left + scaled(18), row.bottom));
    };
    const Image unchecked = box();
    setState(list, 0, kChecked);
    EXPECT_TRUE(box().contains(RGB(27, 118, 192)));
    EXPECT_FALSE(unchecked.contains(RGB(27, 118, 192)));
    const Box client = clientBox(list);
    const LONG right = rowRect(list, 0).right;
    EXPECT_THAT(shown(list).part({right, 0, client.right, client.bottom}), isFilledWith(kWhite));
    EXPECT_THAT(shown(list).part({0, rowRect(list, 3).bottom, right, client.bottom}),
                isFilledWith(kWhite));
    EXPECT_THAT(printed(list), looksLike(shown(list)));
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
    InvalidateRect(list, nullptr, TRUE);
    InvalidateRect(headerOf(list), nullptr, TRUE);
    const Image image = shown(list);
    const auto part = [&](int row, int left, int width) {
        const RECT rect = rowRect(list, row);
        return image.part(
            Box(rect.left + left, rect.top + 1, rect.left + left + width, rect.bottom - 1));
    };
    EXPECT_FALSE(image.contains(kSelected));
    EXPECT_TRUE(part(0, scaled(20), scaled(60)).contains(RGB(255, 255, 0)));
    EXPECT_TRUE(part(1, scaled(20), scaled(60)).contains(RGB(0, 255, 0)));
    EXPECT_TRUE(part(1, scaled(20), scaled(60)).contains(RGB(0, 0, 200)));
    EXPECT_NE(part(0, 0, scaled(18)), part(2, 0, scaled(18)));
    EXPECT_TRUE(part(0, 0, scaled(18)).contains(kWhite)) << "the box shows on black";
    EXPECT_THAT(image.part({scaled(220), 0, scaled(280), scaled(140)}), isFilledWith(RGB(0, 0, 0)));
    EXPECT_TRUE(onScreen(headerOf(list)).contains(RGB(255, 255, 0)));
    contrast.turn(false);
    InvalidateRect(list, nullptr, TRUE);
    EXPECT_TRUE(shown(list).contains(RGB(27, 118, 192))) << "the bitmaps are loaded anew";
}

// The check box stands in whichever column is displayed first, where the mouse finds it, and a
// header that is dragged takes the column along if the application allowed it.
TEST_F(ListViewTest, ColumnsCanBeDraggedIfAllowedAndTheFirstDisplayedOneHasTheCheckBox) {
    const HWND list = addFlat({LVS_REPORT, LVS_EX_CHECKBOXES, 4, 2});
    const HWND header = headerOf(list);
    setState(list, 0, kChecked);
    const auto order = [header] {
        return static_cast<int>(SendMessageW(header, HDM_ORDERTOINDEX, 0, 0));
    };
    const POINT from{scaled(50), scaled(10)};
    const POINT to{scaled(190), scaled(10)};
    drag(header, from, to);
    EXPECT_EQ(order(), 0);
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_HEADERDRAGDROP, LVS_EX_HEADERDRAGDROP);
    drag(header, from, to);
    EXPECT_EQ(order(), 1);
    moveAway();
    const auto boxes = shown(list).boundingBoxOf(RGB(27, 118, 192));
    ASSERT_TRUE(boxes);
    EXPECT_LT(boxes->right, scaled(20));
    clickBox(list, 0);
    EXPECT_EQ(state(list, 0), kUnchecked);
}

/// What a list of that look tells its parent of one course of input.
HeardList heardFrom(HostDialog& host, HWND list) {
    const auto row = [list](int index) {
        return POINT{scaled(60), rowRect(list, index).top + scaled(12)};
    };
    host.forget();
    click(list, row(1).x, row(1).y);
    keyDown(VK_CONTROL);
    click(list, row(3).x, row(3).y);
    keyUp(VK_CONTROL);
    for (const int key : {VK_UP, VK_HOME, VK_END, VK_RETURN, VK_F5})
        keyTap(key);
    typeText(L"Row 2");
    keyDown(VK_SHIFT);
    keyTap(VK_UP);
    keyUp(VK_SHIFT);
    doubleClick(list);
    SendMessageW(list, LVM_DELETEITEM, 1, 0);
    HeardList heard;
    for (const Heard& one : host.heard()) {
        const auto code = static_cast<UINT>(one.code);
        if (code != static_cast<UINT>(LVN_HOTTRACK) && code != static_cast<UINT>(LVN_ITEMACTIVATE))
            heard.push_back({one.message, 0, one.code, 0});
    }
    return heard;
}

TEST_F(ListViewTest, SameInputSendsTheNotificationsOfAPlainList) {
    const HWND plain = addPlain({LVS_REPORT, LVS_EX_FULLROWSELECT, 5}, 101);
    const HeardList expected = heardFrom(host_, plain);
    EXPECT_GT(expected.size(), 20U);
    DestroyWindow(plain);
    EXPECT_EQ(heardFrom(host_, addFlat({LVS_REPORT, LVS_EX_FULLROWSELECT, 5}, 102)), expected);
}

TEST_F(ListViewTest, ThumbOfAForeignBarScrollsTheListAndAListWithoutARangeStays) {
    const HWND list = addFlat({LVS_REPORT, 0, 100});
    const HWND bar = host_.add(WC_SCROLLBARW, L"", SBS_VERT, scaledArea(350, 10, 17, 100), 300);
    SCROLLINFO info{sizeof info, SIF_POS | SIF_RANGE, 0, 99, 0, 50, 0};
    SetScrollInfo(bar, SB_CTL, &info, FALSE);
    const auto top = [list] { return SendMessageW(list, LVM_GETTOPINDEX, 0, 0); };
    const auto request = MAKEWPARAM(SB_THUMBPOSITION, 0);
    EXPECT_EQ(SendMessageW(list, WM_VSCROLL, request, reinterpret_cast<LPARAM>(bar)), 0);
    EXPECT_GE(top(), 50);
    EXPECT_LE(top(), 70) << "a page of rows counts for the whole client height";
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    for (const UINT message : {WM_VSCROLL, WM_HSCROLL})
        SendMessageW(list, message, request, reinterpret_cast<LPARAM>(bar));
    EXPECT_EQ(top(), 0);
}

// The image list goes back before the list destroys its own, so who owned it still does.
TEST_F(ListViewTest, TwoListsOfOneParentEndIndependentlyInWhateverOrder) {
    const auto alive = [](HIMAGELIST images) {
        int width = 0;
        int height = 0;
        return ImageList_GetIconSize(images, &width, &height) != FALSE;
    };
    Images given = makeImages();
    const Images shared = makeImages();
    const HWND first = addFlat({LVS_REPORT, 0});
    const HWND second = addFlat({LVS_REPORT | LVS_SHAREIMAGELISTS, 0}, 102, 180);
    SendMessageW(first, LVM_SETIMAGELIST, LVSIL_SMALL, asParam(given));
    SendMessageW(second, LVM_SETIMAGELIST, LVSIL_SMALL, asParam(shared));
    objects_.front().reset();
    EXPECT_NE(below(first, LVM_GETEXTENDEDLISTVIEWSTYLE), kFlatStyle);
    setState(second, 0, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_TRUE(shown(second).contains(kSelected)) << "the other one stays flat";
    const HIMAGELIST givenAway = given.release();
    DestroyWindow(first);
    EXPECT_FALSE(alive(givenAway));
    DestroyWindow(second);
    EXPECT_TRUE(alive(shared.get()));
    objects_.clear();
    RedrawWindow(host_.window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

TEST_F(ListViewTest, ParentIsWhiteUnderAVisibleListOnly) {
    const HWND list = addFlat({LVS_REPORT, 0});
    const Paper paper(host_.window());
    for (const bool visible : {true, false}) {
        ShowWindow(list, visible ? SW_SHOW : SW_HIDE);
        SetDCBrushColor(paper.dc(), 0);
        PatBlt(paper.dc(), 0, 0, 4000, 4000, BLACKNESS);
        const MessageSpy quiet(host_.window(), {WM_ERASEBKGND});
        host_.onMessage([](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            return message == WM_ERASEBKGND ? std::optional<LRESULT>(1) : std::nullopt;
        });
        SendMessageW(host_.window(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(paper.dc()), 0);
        EXPECT_EQ(GetPixel(paper.dc(), scaled(20), scaled(20)), visible ? kWhite : 0);
    }
}

TEST_F(ListViewTest, PaintingLeaksNothing) {
    const Images icons = makeImages();
    const HICON icon = LoadIconW(nullptr, IDI_APPLICATION);
    ImageList_ReplaceIcon(icons.get(), -1, icon);
    const HWND list = addFlat({LVS_REPORT | LVS_SHAREIMAGELISTS, LVS_EX_CHECKBOXES});
    SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, asParam(icons));
    const Paper paper(list);
    EXPECT_TRUE(doesNotLeak(paintRounds(), [&] {
        SendMessageW(list, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(paper.dc()), PRF_CLIENT);
        SendMessageW(headerOf(list), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(paper.dc()),
                     PRF_CLIENT);
    }));
}

}  // namespace

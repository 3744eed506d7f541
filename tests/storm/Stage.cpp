#include "Stage.h"

#include <array>
#include <sstream>
#include <utility>

#include "Exports/ControlFactory.h"
#include "QkDlg/QkDlg.h"
#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxSimple.h"
#include "QkDlg/QkFlatListView.h"
#include "QkDlg/QkFlatSlider.h"

namespace QkDlgTest {

namespace {

using ControlPtr = std::unique_ptr<QkDlg::QkCustomControl>;

template <int type>
ControlPtr ofType(UINT id) {
    return QkDlg::makeControl(type, id);
}
template <typename Control>
ControlPtr ofClass(UINT id) {
    return std::make_unique<Control>(id);
}
template <typename Bar, bool vertical>
ControlPtr bar(UINT id) {
    return std::make_unique<Bar>(id, vertical);
}

constexpr DWORD kPlaces = BS_LEFT | BS_RIGHT | BS_TOP | BS_BOTTOM | BS_MULTILINE | BS_NOTIFY;
// Wine's edit cuts a text that it may not scroll, and goes on cutting before its beginning.
constexpr DWORD kRolls = ES_AUTOHSCROLL | ES_AUTOVSCROLL;
constexpr DWORD kScrolls = WS_VSCROLL | WS_HSCROLL;

// The controls of a converted dialog when they begin: the ids, none of IDOK and the like.
constexpr int kFirstId = 1001;
constexpr int kColumns = 3;

/// A question about a control's state, for all of a family.
struct Query {
    unsigned family;
    UINT message;
    WPARAM wp = 0;
    LRESULT compared = -1;  ///< which bits of the answer
};
constexpr std::array kQueries{
    Query{kButton, BM_GETCHECK},
    // The system tells late, and by the clock, that the mouse is no longer there.
    Query{kButton, BM_GETSTATE, 0, ~LRESULT{BST_HOT}},
    Query{kEdit, EM_GETSEL},
    Query{kEdit, EM_GETMODIFY},
    Query{kEdit, EM_CANUNDO},
    Query{kEdit, EM_GETLIMITTEXT},
    Query{kEdit, EM_GETLINECOUNT},
    Query{kEdit, EM_GETFIRSTVISIBLELINE},
    Query{kCombo, CB_GETCURSEL},
    Query{kCombo, CB_GETCOUNT},
    Query{kCombo, CB_GETEDITSEL},
    Query{kCombo, CB_GETDROPPEDSTATE},
    Query{kCombo, CB_GETITEMDATA, 0},
    Query{kProgress, PBM_GETPOS},
    Query{kProgress, PBM_GETRANGE, TRUE},
    Query{kProgress, PBM_GETRANGE, FALSE},
    Query{kProgress, PBM_GETBARCOLOR},
    Query{kProgress, PBM_GETSTATE},
    Query{kTrackbar, TBM_GETPOS},
    Query{kTrackbar, TBM_GETRANGEMIN},
    Query{kTrackbar, TBM_GETRANGEMAX},
    Query{kListView, LVM_GETITEMCOUNT},
    Query{kListView, LVM_GETSELECTEDCOUNT},
    Query{kListView, LVM_GETSELECTIONMARK},
    Query{kListView, LVM_GETEXTENDEDLISTVIEWSTYLE},
    Query{kListView, LVM_GETIMAGELIST, LVSIL_SMALL},
    Query{kListView, LVM_GETCOLUMNWIDTH, 0},
    Query{kListView, LVM_GETVIEW},
    Query{kListBox, LB_GETCOUNT},
    Query{kListBox, LB_GETCURSEL},
    Query{kListBox, LB_GETTOPINDEX},
};

/// Which of the windows on the stage, or none, has focus or mouse: inner windows count as theirs.
int indexOf(const std::vector<Actor>& actors, HWND window) {
    for (std::size_t i = 0; i < actors.size(); ++i) {
        const HWND own = actors[i].window;
        if (own && window && (own == window || IsChild(own, window)))
            return static_cast<int>(i);
    }
    return -1;
}

void describeItems(std::ostream& out, const Actor& actor) {
    const auto ask = [&](UINT message, WPARAM wp, LPARAM lp = 0) {
        return SendMessageW(actor.window, message, wp, lp);
    };
    const auto count = static_cast<WPARAM>(ask(LVM_GETITEMCOUNT, 0));
    for (WPARAM i = 0; i < count; ++i) {
        std::array<wchar_t, 32> text{};
        LVITEMW item{};
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        ask(LVM_GETITEMTEXTW, i, reinterpret_cast<LPARAM>(&item));
        out << " [" << std::wstring(text.data()).size() << ' '
            << ask(LVM_GETITEMSTATE, i, LVIS_SELECTED | LVIS_FOCUSED) << ']';
    }
}

void describeScroll(std::ostream& out, HWND window, int bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    if (GetScrollInfo(window, bar, &info))
        out << " scroll " << info.nMin << ".." << info.nMax << '/' << info.nPage << " at "
            << info.nPos;
}

std::string narrow(const std::wstring& text) {
    std::string result;
    for (const wchar_t character : text)
        result += character > L'~' || character < L' ' ? '?' : static_cast<char>(character);
    return result;
}

void describe(std::ostream& out, const Actor& actor) {
    out << '\n' << actor.id << ' ' << actor.kind->name;
    if (!actor.window) {
        out << " gone";
        return;
    }
    const HWND window = actor.window;
    const unsigned differs = actor.kind->differences;
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    out << std::hex << " style " << (style & ~LONG_PTR{actor.kind->ownStyle}) << std::dec;
    if ((differs & kOwnText) == 0)
        out << " text '" << narrow(textOf(window)) << '\'';
    if ((differs & kOwnPlace) == 0) {
        RECT place{};
        GetWindowRect(window, &place);
        MapWindowPoints(HWND_DESKTOP, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
        out << " at " << place.left << ',' << place.top << ' ' << place.right << ','
            << place.bottom;
    }
    for (const Query& query : kQueries) {
        if (query.family & actor.kind->family)
            out << ' ' << std::hex << query.message << std::dec << '='
                << (SendMessageW(window, query.message, query.wp, 0) & query.compared);
    }
    if (actor.kind->family & kListView)
        describeItems(out, actor);
    if (actor.kind->family & kScroll)
        describeScroll(out, window, SB_CTL);
    if ((style & WS_VSCROLL) != 0 && (actor.kind->family & (kEdit | kListBox)) != 0)
        describeScroll(out, window, SB_VERT);
}

using Begin = std::function<void(HWND)>;

INT_PTR CALLBACK plainDialog(HWND dialog, UINT message, WPARAM, LPARAM lp) {
    if (message == WM_INITDIALOG)
        (*reinterpret_cast<const Begin*>(lp))(dialog);
    return message == WM_INITDIALOG;
}

/// A dialog that ends when the storm says so.
class StormDialog : public QkDlg::QkXDlg {
public:
    explicit StormDialog(Begin begin) : QkXDlg(1), begin_(std::move(begin)) {
        m_bFlat = true;
        m_bCentreOnParent = false;
    }
    bool OnInitDialog() override {
        begin_(m_hWnd);
        return QkXDlg::OnInitDialog();
    }
    bool OnOK() override { return true; }
    bool OnCancel() override { return true; }

private:
    Begin begin_;
};

struct alignas(DWORD) EmptyTemplate {
    DLGTEMPLATE header{WS_POPUP | WS_CLIPCHILDREN, 0, 0, 20, 20, 300, 250};
    std::array<WORD, 3> noMenuNoClassNoTitle{};
};

}  // namespace

const std::vector<Kind>& kinds() {
    using namespace QkDlg;
    static const std::vector<Kind> all{
        {"push",
         WC_BUTTONW,
         {BS_PUSHBUTTON, BS_DEFPUSHBUTTON | BS_NOTIFY},
         kPlaces,
         kButton,
         0,
         0,
         ofType<QK_PUSH_BUTTON>},
        {"blue",
         WC_BUTTONW,
         {BS_DEFPUSHBUTTON, BS_NOTIFY},
         kPlaces,
         kButton,
         0,
         0,
         ofType<QK_BLUE_BUTTON>},
        {"settings",
         WC_BUTTONW,
         {BS_PUSHBUTTON},
         BS_NOTIFY,
         kButton,
         kOwnMouse | kOwnPlace,
         0,
         ofType<QK_SETTINGS_BUTTON>},
        {"split",
         WC_BUTTONW,
         {BS_SPLITBUTTON, BS_DEFSPLITBUTTON},
         kPlaces,
         kButton,
         0,
         0,
         ofType<QK_SPLIT_BUTTON>},
        {"drop", WC_BUTTONW, {BS_SPLITBUTTON}, kPlaces, kButton, 0, 0, ofType<QK_DROP_BUTTON>},
        {"radio",
         WC_BUTTONW,
         {BS_AUTORADIOBUTTON, BS_RADIOBUTTON | BS_LEFTTEXT},
         kPlaces,
         kButton,
         0,
         0,
         ofType<QK_RADIO_BUTTON>},
        {"check",
         WC_BUTTONW,
         {BS_AUTOCHECKBOX, BS_CHECKBOX, BS_AUTO3STATE | BS_LEFTTEXT},
         kPlaces,
         kButton,
         0,
         0,
         ofType<QK_CHECK_BOX>},
        {"switch",
         WC_BUTTONW,
         {BS_AUTOCHECKBOX, BS_CHECKBOX},
         BS_NOTIFY,
         kButton,
         kOwnMouse | kOwnText | kOwnPlace,
         0,
         ofType<QK_TOGGLE>},
        {"static",
         WC_STATICW,
         {SS_LEFT, SS_CENTER | SS_NOTIFY, SS_SIMPLE, SS_ENDELLIPSIS},
         SS_NOTIFY | SS_NOPREFIX | SS_CENTERIMAGE,
         kStatic,
         kOwnPlace,
         0,
         ofType<QK_STATIC_TEXT>},
        {"edit",
         WC_EDITW,
         {WS_BORDER | ES_AUTOHSCROLL, ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL,
          ES_READONLY | ES_AUTOHSCROLL},
         ES_READONLY | ES_UPPERCASE,
         kEdit,
         0,
         WS_BORDER,
         ofType<QK_EDIT>},
        {"password",
         WC_EDITW,
         {WS_BORDER | ES_PASSWORD | ES_AUTOHSCROLL, ES_PASSWORD | ES_AUTOHSCROLL},
         ES_READONLY,
         kEdit,
         kOwnMouse | kOwnMask,
         WS_BORDER | ES_PASSWORD,
         ofType<QK_PASSWORD>},
        {"progress",
         PROGRESS_CLASSW,
         {0, PBS_VERTICAL, PBS_MARQUEE, PBS_SMOOTH},
         PBS_MARQUEE,
         kProgress,
         0,
         0,
         ofType<QK_PROGRESS_BAR>},
        {"trackbar",
         TRACKBAR_CLASSW,
         {0, TBS_VERT, TBS_NOTICKS},
         TBS_VERT,
         kTrackbar,
         0,
         0,
         ofType<QK_PROGRESS_BAR>},
        {"combo-list",
         WC_COMBOBOXW,
         {CBS_DROPDOWNLIST, CBS_DROPDOWNLIST | CBS_SORT | WS_VSCROLL},
         0,
         kCombo,
         0,
         0,
         ofType<QK_COMBO_DROPDOWN_LIST>},
        {"combo-edit",
         WC_COMBOBOXW,
         {CBS_DROPDOWN | CBS_AUTOHSCROLL, CBS_DROPDOWN | CBS_AUTOHSCROLL | CBS_SORT},
         0,
         kCombo,
         0,
         WS_CLIPCHILDREN,
         ofClass<QkFlatComboBoxDropdown>},
        {"combo-simple",
         WC_COMBOBOXW,
         {CBS_SIMPLE | CBS_AUTOHSCROLL},
         0,
         kCombo,
         0,
         WS_CLIPCHILDREN,
         ofClass<QkFlatComboBoxSimple>},
        {"scroll-v",
         WC_SCROLLBARW,
         {SBS_VERT},
         0,
         kScroll,
         kOwnMouse | kOwnKeys | kOwnScrolling,
         0,
         bar<QkFlatScrollbar, true>},
        {"scroll-h",
         WC_SCROLLBARW,
         {SBS_HORZ},
         0,
         kScroll,
         kOwnMouse | kOwnKeys | kOwnScrolling,
         0,
         bar<QkFlatScrollbar, false>},
        {"slider-v",
         WC_SCROLLBARW,
         {SBS_VERT},
         0,
         kSlider,
         kOwnMouse | kOwnKeys | kOwnScrolling,
         0,
         bar<QkFlatSlider, true>},
        {"slider-h",
         WC_STATICW,
         {SS_LEFT | SS_NOTIFY},
         0,
         kSlider,
         kOwnMouse | kOwnKeys | kOwnScrolling,
         0,
         bar<QkFlatSlider, false>},
        {"list",
         WC_LISTVIEWW,
         {LVS_REPORT, LVS_REPORT | LVS_SINGLESEL, LVS_REPORT | LVS_EDITLABELS, LVS_ICON},
         LVS_SHOWSELALWAYS | LVS_NOCOLUMNHEADER,
         kListView,
         kOwnMouse | kOwnKeys,
         WS_CLIPSIBLINGS,
         ofClass<QkFlatListView>},
        {"held-edit",
         WC_EDITW,
         {ES_MULTILINE | kRolls | kScrolls, ES_MULTILINE | kRolls | WS_VSCROLL | WS_BORDER},
         WS_VSCROLL,
         kEdit,
         0,
         WS_CLIPSIBLINGS,
         nullptr},
        {"held-box",
         WC_LISTBOXW,
         {LBS_NOTIFY | WS_VSCROLL, LBS_NOTIFY | kScrolls | WS_BORDER},
         0,
         kListBox,
         0,
         WS_CLIPSIBLINGS,
         nullptr},
    };
    return all;
}

Stage::Stage(Play play, bool visible, const std::vector<const Kind*>& cast, Dice& dice)
    : play_(play) {
    for (const Kind* const kind : cast) {
        Actor& actor = actors_.emplace_back();
        actor.kind = kind;
        actor.id = kFirstId + static_cast<int>(actors_.size()) - 1;
        actor.style = kind->styles[static_cast<std::size_t>(
            dice.roll(static_cast<int>(kind->styles.size())))];
    }
    const Begin begin = [this](HWND host) {
        host_ = host;
        for (Actor& actor : actors_)
            createWindow(actor);
    };
    static const EmptyTemplate empty;
    LPARAM parameter = reinterpret_cast<LPARAM>(&begin);
    if (play == Play::Converted) {
        dialog_ = std::make_unique<StormDialog>(begin);
        parameter = reinterpret_cast<LPARAM>(dialog_.get());
    }
    CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &empty.header, nullptr,
                               dialog_ ? QkDlg::QkXDlg::GetDialogProc() : &plainDialog, parameter);
    SetWindowPos(host_, nullptr, 20, 20, 420, 420, SWP_NOZORDER);
    SetWindowSubclass(host_, &listen, 1, reinterpret_cast<DWORD_PTR>(this));
    if (visible && dice.oneIn(2))
        ShowWindow(host_, SW_SHOW);
    for (Actor& actor : actors_) {
        if (hasObjects())
            makeFlat(actor);
    }
    if (visible)
        ShowWindow(host_, SW_SHOW);
    heard_.clear();
}

Stage::~Stage() {
    if (host_)
        DestroyWindow(host_);
}

void Stage::createWindow(Actor& actor) {
    const int index = actor.id - kFirstId;
    const bool tall = (actor.kind->family & (kListView | kListBox | kCombo | kScroll)) != 0;
    actor.window = CreateWindowExW(index % 2 == 0 ? 0 : WS_EX_CLIENTEDGE, actor.kind->windowClass,
                                   L"one", WS_CHILD | WS_VISIBLE | WS_TABSTOP | actor.style,
                                   10 + 135 * (index % kColumns), 10 + 100 * (index / kColumns),
                                   120, tall ? 90 : 28, host_,
                                   reinterpret_cast<HMENU>(static_cast<INT_PTR>(actor.id)),
                                   GetModuleHandleW(nullptr), nullptr);
    const HFONT font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    SendMessageW(actor.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    // A flat bar begins with this range.
    if (actor.kind->family & kScroll)
        SetScrollRange(actor.window, SB_CTL, 0, 100, FALSE);
}

void Stage::makeFlat(Actor& actor) {
    if (!actor.kind->make) {
        actor.holder = std::make_unique<QkDlg::ScrollbarHolder>(GetSystemMetrics(SM_CXVSCROLL),
                                                                GetSystemMetrics(SM_CYHSCROLL));
        actor.holder->Attach(actor.window);
        return;
    }
    // An object whose window is gone may be bound again.
    if (!actor.control || actor.control->GetWindow())
        actor.control = actor.kind->make(static_cast<UINT>(actor.id));
    actor.control->Attach(actor.window);
}

void Stage::makePlain(Actor& actor) {
    // Not through the owner, which would still know an object that is at its end.
    const auto control = std::move(actor.control);
    const auto holder = std::move(actor.holder);
}

void Stage::end(Dice& dice) {
    const int order = dice.roll(4);
    for (Actor& actor : actors_) {
        if (order == 0 || dice.oneIn(3))
            makePlain(actor);
        if ((order == 1 || dice.oneIn(3)) && actor.window)
            DestroyWindow(std::exchange(actor.window, nullptr));
    }
    DestroyWindow(std::exchange(host_, nullptr));
}

std::string Stage::state() {
    std::ostringstream out;
    out << "focus " << indexOf(actors_, GetFocus()) << ", order";
    for (HWND child = GetWindow(host_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        for (const Actor& actor : actors_)
            out << (actor.window == child ? " " + std::to_string(actor.id) : "");
    }
    for (Actor& actor : actors_)
        describe(out, actor);
    for (const Heard& heard : std::exchange(heard_, {}))
        out << '\n' << heard;
    return out.str();
}

LRESULT CALLBACK Stage::listen(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR id,
                               DWORD_PTR self) {
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &listen, id);
    reinterpret_cast<Stage*>(self)->hear(message, wp, lp);
    return DefSubclassProc(window, message, wp, lp);
}

void Stage::hear(UINT message, WPARAM wp, LPARAM lp) {
    const int sender = GetDlgCtrlID(reinterpret_cast<HWND>(lp));
    if (message == WM_COMMAND) {
        heard_.push_back(command(LOWORD(wp), HIWORD(wp)));
    } else if (message == WM_HSCROLL || message == WM_VSCROLL) {
        heard_.push_back(scrolled(message, sender, LOWORD(wp), HIWORD(wp)));
    } else if (message == WM_NOTIFY) {
        const auto& header = *reinterpret_cast<const NMHDR*>(lp);
        if (header.code == NM_CUSTOMDRAW)
            return;
        heard_.push_back(notified(static_cast<int>(header.idFrom), header.code));
    } else if (message < WM_CTLCOLORMSGBOX || message > WM_CTLCOLORSTATIC) {
        return;
    }
    if (const auto reaction = std::exchange(reaction_, nullptr))
        reaction();
}

}  // namespace QkDlgTest

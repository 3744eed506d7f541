#include "storm/Stage.h"

#include <array>
#include <map>
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

using namespace QkDlg;
using ControlPtr = std::unique_ptr<QkCustomControl>;
using Begin = std::function<void(HWND)>;

constexpr int kFirstId = 1001;

template <int type>
ControlPtr ofType(UINT id) {
    return makeControl(type, id);
}
template <typename Control, bool... vertical>
ControlPtr ofClass(UINT id) {
    return std::make_unique<Control>(id, vertical...);
}

constexpr DWORD kPlaces = BS_LEFT | BS_RIGHT | BS_TOP | BS_BOTTOM | BS_MULTILINE | BS_NOTIFY;
// Wine's edit cuts a text that it may not scroll, and goes on cutting before its beginning.
constexpr DWORD kLine = ES_AUTOHSCROLL;
constexpr DWORD kLines = ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;
constexpr DWORD kList = WS_VSCROLL | LBS_NOTIFY;
constexpr unsigned kOwn = kMouse | kKeys | kRange;
// Wine's scroll bar switches itself on when it is set to something.
constexpr DWORD kSwitchedOn = WS_DISABLED;
// Rows of flat lists are higher, and so the bars come and go with other items.
constexpr DWORD kBars = WS_CLIPSIBLINGS | WS_VSCROLL | WS_HSCROLL;

/// What is asked of all windows of a family.
struct Query {
    unsigned family;
    std::vector<UINT> messages;
};
const Query kQueries[] = {
    {kButton, {BM_GETCHECK, BM_GETSTATE}},
    {kEdit, {EM_GETSEL, EM_GETMODIFY, EM_CANUNDO, EM_GETLIMITTEXT, EM_GETLINECOUNT}},
    {kEdit, {EM_GETFIRSTVISIBLELINE}},
    {kCombo, {CB_GETCURSEL, CB_GETCOUNT, CB_GETEDITSEL, CB_GETDROPPEDSTATE, CB_GETITEMDATA}},
    {kProgress, {PBM_GETPOS, PBM_GETRANGE, PBM_GETBARCOLOR, PBM_GETSTATE}},
    {kTrackbar, {TBM_GETPOS, TBM_GETRANGEMIN, TBM_GETRANGEMAX}},
    {kListView, {LVM_GETITEMCOUNT, LVM_GETSELECTEDCOUNT, LVM_GETSELECTIONMARK, LVM_GETVIEW}},
    {kListView, {LVM_GETEXTENDEDLISTVIEWSTYLE, LVM_GETIMAGELIST, LVM_GETCOLUMNWIDTH}},
    {kListBox, {LB_GETCOUNT, LB_GETCURSEL, LB_GETTOPINDEX}},
};

void describeItems(std::ostream& out, HWND list) {
    const auto count = static_cast<WPARAM>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (WPARAM i = 0; i < count; ++i) {
        std::array<wchar_t, 32> text{};
        LVITEMW item{};
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        out << " [" << SendMessageW(list, LVM_GETITEMTEXTW, i, reinterpret_cast<LPARAM>(&item))
            << ' ' << int{text[0]} << ' '
            << SendMessageW(list, LVM_GETITEMSTATE, i, LVIS_SELECTED | LVIS_FOCUSED) << ']';
    }
}

void describeScroll(std::ostream& out, HWND window, int bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    if (GetScrollInfo(window, bar, &info))
        out << ' ' << info.nMin << ".." << info.nMax << '/' << info.nPage << " at " << info.nPos;
}

void describe(std::ostream& out, const Actor& actor) {
    const Kind& kind = *actor.kind;
    const LONG_PTR style = GetWindowLongPtrW(actor.window, GWL_STYLE);
    out << '\n' << actor.id << ' ' << kind.name << std::hex << ' ' << (style & ~kind.ownStyle);
    if ((kind.differences & kText) == 0)
        out << testing::PrintToString(textOf(actor.window));
    if ((kind.differences & kPlace) == 0) {
        RECT place{};
        GetWindowRect(actor.window, &place);
        MapWindowPoints(HWND_DESKTOP, GetParent(actor.window), reinterpret_cast<POINT*>(&place), 2);
        out << std::dec << " at " << place.left << ',' << place.top << ' ' << place.right << ','
            << place.bottom;
    }
    for (const Query& query : kQueries) {
        for (const UINT message :
             query.family& kind.family ? query.messages : std::vector<UINT>{}) {
            // The system tells late, and by the clock, that the mouse is no longer there.
            const LRESULT kept = message == BM_GETSTATE ? ~LRESULT{BST_HOT} : -1;
            out << std::hex << ' ' << message << '='
                << (SendMessageW(actor.window, message, 0, 0) & kept);
        }
    }
    out << std::dec;
    if (kind.family & kListView)
        describeItems(out, actor.window);
    if (kind.family & kScroll)
        describeScroll(out, actor.window, SB_CTL);
    if ((kind.family & (kEdit | kListBox)) != 0 && (style & WS_VSCROLL) != 0)
        describeScroll(out, actor.window, SB_VERT);
}

// DPI and timers

std::map<std::pair<HWND, UINT_PTR>, TIMERPROC> timers;
int shownDpi = 0;

template <typename Function>
Function* systemFunction(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}

UINT_PTR WINAPI setTimer(HWND window, UINT_PTR id, UINT, TIMERPROC procedure) {
    timers[{window, id}] = procedure;
    return id;
}

BOOL WINAPI killTimer(HWND window, UINT_PTR id) {
    return timers.erase({window, id}) != 0;
}

int WINAPI deviceCaps(HDC dc, int index) {
    static auto* const real = systemFunction<decltype(GetDeviceCaps)>(L"gdi32", "GetDeviceCaps");
    const bool asksDpi = index == LOGPIXELSX || index == LOGPIXELSY;
    return asksDpi && shownDpi != 0 ? shownDpi : real(dc, index);
}

// The dialog

INT_PTR CALLBACK plainDialog(HWND dialog, UINT message, WPARAM, LPARAM begin) {
    if (message == WM_INITDIALOG)
        (*reinterpret_cast<const Begin*>(begin))(dialog);
    return message == WM_INITDIALOG;
}

/// A dialog that ends when the storm says so.
class StormDialog : public QkXDlg {
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
    static const std::vector<Kind> all{
        {"push", WC_BUTTONW, kButton, ofType<QK_PUSH_BUTTON>, 0, BS_DEFPUSHBUTTON | BS_NOTIFY,
         kPlaces},
        {"blue", WC_BUTTONW, kButton, ofType<QK_BLUE_BUTTON>, BS_DEFPUSHBUTTON, BS_NOTIFY, kPlaces},
        {"settings", WC_BUTTONW, kButton, ofType<QK_SETTINGS_BUTTON>, 0, BS_NOTIFY, BS_NOTIFY,
         kMouse | kPlace},
        {"split", WC_BUTTONW, kButton, ofType<QK_SPLIT_BUTTON>, BS_SPLITBUTTON, BS_DEFSPLITBUTTON,
         kPlaces},
        {"drop", WC_BUTTONW, kButton, ofType<QK_DROP_BUTTON>, BS_SPLITBUTTON, BS_SPLITBUTTON,
         kPlaces},
        {"radio", WC_BUTTONW, kButton, ofType<QK_RADIO_BUTTON>, BS_AUTORADIOBUTTON,
         BS_RADIOBUTTON | BS_LEFTTEXT, kPlaces},
        {"check", WC_BUTTONW, kButton, ofType<QK_CHECK_BOX>, BS_AUTOCHECKBOX,
         BS_AUTO3STATE | BS_LEFTTEXT, kPlaces},
        {"switch", WC_BUTTONW, kButton, ofType<QK_TOGGLE>, BS_AUTOCHECKBOX, BS_CHECKBOX, BS_NOTIFY,
         kMouse | kText | kPlace},
        {"static", WC_STATICW, kStatic, ofType<QK_STATIC_TEXT>, SS_CENTER | SS_NOTIFY,
         SS_ENDELLIPSIS, SS_NOTIFY | SS_NOPREFIX | SS_CENTERIMAGE | SS_RIGHT, kPlace},
        {"edit", WC_EDITW, kEdit, ofType<QK_EDIT>, WS_BORDER | kLine, kLines,
         ES_READONLY | ES_UPPERCASE, kMouse, WS_BORDER},
        {"password", WC_EDITW, kEdit, ofType<QK_PASSWORD>, WS_BORDER | ES_PASSWORD | kLine,
         ES_PASSWORD | kLine, ES_READONLY, kMouse | kMask, WS_BORDER | ES_PASSWORD},
        {"progress", PROGRESS_CLASSW, kProgress, ofType<QK_PROGRESS_BAR>, PBS_SMOOTH,
         PBS_VERTICAL | PBS_MARQUEE, PBS_MARQUEE},
        {"trackbar", TRACKBAR_CLASSW, kTrackbar, ofType<QK_PROGRESS_BAR>, TBS_VERT, TBS_NOTICKS,
         TBS_VERT, kMouse},
        {"combo-list", WC_COMBOBOXW, kCombo, ofType<QK_COMBO_DROPDOWN_LIST>, CBS_DROPDOWNLIST,
         CBS_DROPDOWNLIST | CBS_SORT | WS_VSCROLL},
        {"combo-edit", WC_COMBOBOXW, kCombo, ofClass<QkFlatComboBoxDropdown>,
         CBS_DROPDOWN | CBS_AUTOHSCROLL, CBS_DROPDOWN | CBS_AUTOHSCROLL | CBS_SORT, 0, 0,
         WS_CLIPCHILDREN},
        {"combo-simple", WC_COMBOBOXW, kCombo, ofClass<QkFlatComboBoxSimple>,
         CBS_SIMPLE | CBS_AUTOHSCROLL, CBS_SIMPLE | CBS_AUTOHSCROLL, 0, 0, WS_CLIPCHILDREN},
        {"scroll-v", WC_SCROLLBARW, kScroll, ofClass<QkFlatScrollbar, true>, SBS_VERT, SBS_VERT, 0,
         kOwn, kSwitchedOn},
        {"scroll-h", WC_SCROLLBARW, kScroll, ofClass<QkFlatScrollbar, false>, SBS_HORZ, SBS_HORZ, 0,
         kOwn, kSwitchedOn},
        {"slider-v", WC_SCROLLBARW, kSlider, ofClass<QkFlatSlider, true>, SBS_VERT, SBS_VERT, 0,
         kOwn},
        {"slider-h", WC_STATICW, kSlider, ofClass<QkFlatSlider, false>, SS_LEFT, SS_NOTIFY, 0,
         kOwn},
        {"list", WC_LISTVIEWW, kListView, ofClass<QkFlatListView>, LVS_REPORT,
         LVS_REPORT | LVS_SINGLESEL | LVS_EDITLABELS, LVS_SHOWSELALWAYS | LVS_NOCOLUMNHEADER,
         kMouse | kKeys, kBars},
        {"icons", WC_LISTVIEWW, kListView, ofClass<QkFlatListView>, LVS_ICON, LVS_SMALLICON,
         LVS_SHOWSELALWAYS, kMouse | kKeys, kBars},
        {"held-edit", WC_EDITW, kEdit, nullptr, kLine | kLines | WS_HSCROLL,
         kLine | kLines | WS_BORDER, WS_VSCROLL, kMouse, WS_CLIPSIBLINGS | WS_BORDER},
        {"held-box", WC_LISTBOXW, kListBox, nullptr, kList, kList | WS_HSCROLL | WS_BORDER, 0, 0,
         WS_CLIPSIBLINGS},
    };
    return all;
}

// The library asks the screen anew when the thread's DPI awareness is another.
void setDpi(int dpi) {
    using SetAwareness = void* WINAPI(void*);
    static auto* const set =
        systemFunction<SetAwareness>(L"user32", "SetThreadDpiAwarenessContext");
    static std::intptr_t context = -3;
    shownDpi = dpi;
    context = -7 - context;
    if (set)
        set(reinterpret_cast<void*>(context));
}

void fireTimers() {
    for (const auto& [key, procedure] : std::map(timers)) {
        const auto& [window, id] = key;
        if (!IsWindow(window))
            timers.erase(key);
        else if (timers.contains(key) && procedure)
            procedure(window, WM_TIMER, id, 0);
        else if (timers.contains(key))
            SendMessageW(window, WM_TIMER, id, 0);
    }
}

Stage::Stage(Play play, bool onScreen, const std::vector<const Kind*>& cast, Dice& dice)
    : caps_("GetDeviceCaps", &deviceCaps),
      set_("SetTimer", &setTimer),
      kill_("KillTimer", &killTimer),
      play_(play) {
    contrast.turn(false);
    for (const Kind* const kind : cast)
        actors_.push_back({kind, kFirstId + static_cast<int>(actors_.size()),
                           dice.oneIn(2) ? kind->style : kind->otherStyle});
    const Begin begin = [this](HWND host) {
        host_ = host;
        for (Actor& actor : actors_)
            createWindow(actor);
        // With nobody to give the focus to, a dialog tells its first child, disabled or not, to
        // select its text; and the first child may be one that the library made.
        CreateWindowExW(0, WC_BUTTONW, nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 1, 1,
                        host_, nullptr, nullptr, nullptr);
    };
    static const EmptyTemplate empty;
    LPARAM parameter = reinterpret_cast<LPARAM>(&begin);
    if (play == Play::Converted) {
        dialog_ = std::make_unique<StormDialog>(begin);
        parameter = reinterpret_cast<LPARAM>(dialog_.get());
    }
    CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &empty.header, nullptr,
                               dialog_ ? QkXDlg::GetDialogProc() : &plainDialog, parameter);
    SetWindowPos(host_, nullptr, onScreen ? 20 : -3000, 20, 420, 420, SWP_NOZORDER);
    SetWindowSubclass(host_, &listen, 1, reinterpret_cast<DWORD_PTR>(this));
    if (dice.oneIn(2))
        ShowWindow(host_, SW_SHOW);
    for (Actor& actor : actors_)
        makeFlat(actor);
    ShowWindow(host_, SW_SHOW);
    heard_.str({});
}

Stage::~Stage() {
    setDpi(0);
    timers.clear();
}

void Stage::createWindow(Actor& actor) {
    if (actor.window)
        DestroyWindow(actor.window);
    actor.holder.reset();
    const int index = actor.id - kFirstId;
    const unsigned family = actor.kind->family;
    const bool tall = (family & (kListView | kListBox | kCombo | kScroll)) != 0;
    // A text that wraps has less room inside an edge, which flat edits do not have.
    const bool edge = index % 2 != 0 && (family & kEdit) == 0;
    actor.window =
        CreateWindowExW(edge ? WS_EX_CLIENTEDGE : 0, actor.kind->windowClass, L"one",
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | actor.style, 10 + 135 * (index % 3),
                        10 + 100 * (index / 3), 120, tall ? 90 : 28, host_,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(actor.id)), nullptr, nullptr);
    SendMessageW(actor.window, WM_SETFONT,
                 reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    // A flat bar begins with this range.
    if (family & kScroll)
        SetScrollRange(actor.window, SB_CTL, 0, 100, FALSE);
}

void Stage::renew(Actor& actor) {
    createWindow(actor);
    makeFlat(actor);
}

void Stage::makeFlat(Actor& actor) {
    if (play_ != Play::Flat)
        return;
    if (!actor.kind->make) {
        actor.holder = std::make_unique<ScrollbarHolder>(GetSystemMetrics(SM_CXVSCROLL),
                                                         GetSystemMetrics(SM_CYHSCROLL));
        actor.holder->Attach(actor.window);
        return;
    }
    if (!actor.control || actor.control->GetWindow())
        actor.control = actor.kind->make(static_cast<UINT>(actor.id));
    actor.control->Attach(actor.window);
}

void Stage::makePlain(Actor& actor) {
    // What runs meanwhile finds no owner any more.
    const auto control = std::move(actor.control);
    const auto holder = std::move(actor.holder);
}

std::string Stage::end(Dice& dice) {
    const int order = dice.roll(4);
    for (Actor& actor : actors_) {
        if (order == 0 || dice.oneIn(3))
            makePlain(actor);
    }
    int children = 0;
    for (HWND child = GetWindow(host_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        ++children;
    for (Actor& actor : actors_) {
        if (order == 1 || dice.oneIn(3))
            DestroyWindow(std::exchange(actor.window, nullptr));
    }
    DestroyWindow(std::exchange(host_, nullptr));
    return order == 0 ? "windows without objects: " + std::to_string(children) : "";
}

std::string Stage::state() {
    std::ostringstream out;
    out << "order";
    for (HWND child = GetWindow(host_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        for (const Actor& actor : actors_)
            out << (actor.window == child ? " " + std::to_string(actor.id) : "");
    }
    const HWND focus = GetFocus();
    for (const Actor& actor : actors_) {
        describe(out, actor);
        // Windows inside are theirs. A scroll bar that switched itself off has lost the focus.
        if ((actor.kind->family & kScroll) == 0 &&
            (focus == actor.window || IsChild(actor.window, focus)))
            out << " focus";
    }
    return out.str() + std::exchange(heard_, {}).str();
}

LRESULT CALLBACK Stage::listen(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR id,
                               DWORD_PTR self) {
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &listen, id);
    reinterpret_cast<Stage*>(self)->hear(message, wp, lp);
    return DefSubclassProc(window, message, wp, lp);
}

void Stage::hear(UINT message, WPARAM wp, LPARAM lp) {
    const bool isCommand = message == WM_COMMAND || message == WM_HSCROLL || message == WM_VSCROLL;
    if (isCommand) {
        heard_ << '\n' << message << ' ' << wp << ' ' << GetDlgCtrlID(reinterpret_cast<HWND>(lp));
    } else if (message == WM_NOTIFY) {
        const auto& header = *reinterpret_cast<const NMHDR*>(lp);
        // Both are asked for by painting.
        if (header.code != NM_CUSTOMDRAW && header.code != LVN_GETDISPINFOW)
            heard_ << "\nnotified " << header.idFrom << ' ' << static_cast<int>(header.code);
    } else if (message < WM_CTLCOLORMSGBOX || message > WM_CTLCOLORSTATIC) {
        return;
    }
    if (const auto reaction = std::exchange(reaction_, nullptr))
        reaction();
}

}  // namespace QkDlgTest

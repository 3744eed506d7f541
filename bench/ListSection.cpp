// List views in report view, scrolled through rows by frames.
#include <algorithm>
#include <string>

#include "QkDlg/QkFlatListView.h"
#include "Sections.h"
#include "Stage.h"

namespace QkDlgBench {

namespace {

constexpr int kRounds = 15;
constexpr std::array kRowCounts{100, 1000, 10'000, 100'000};
constexpr std::array kListLooks{Look::Standard, Look::Bare, Look::Flat};
constexpr int kFramesPerRound = 12;
constexpr int kColumns = 3;
constexpr SIZE kListSize{440, 300};
constexpr int kRowHeight = 24;  ///< of the pictures in a flat list
constexpr int kInsertedRows = 1000;

struct Step {
    const char* name;
    int rows;  ///< 0: a page
};
constexpr std::array kSteps{Step{"row", 1}, Step{"five rows", 5}, Step{"page", 0}};

struct ImageListDeleter {
    void operator()(HIMAGELIST images) const { ImageList_Destroy(images); }
};
using UniqueImages = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDeleter>;

/// A list of so many rows in one look, which are as high as in the others.
class List {
public:
    List(HWND host, Look look, int rows)
        : m_images(ImageList_Create(1, scaled(kRowHeight), ILC_COLOR, 1, 0)) {
        m_window.reset(CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, nullptr,
                                       WS_CHILD | LVS_REPORT | LVS_SHAREIMAGELISTS, scaled(10),
                                       scaled(10), scaled(kListSize.cx), scaled(kListSize.cy), host,
                                       nullptr, GetModuleHandleW(nullptr), nullptr));
        if (!m_window)
            giveUp("no window", "list");
        SendMessageW(window(), LVM_SETIMAGELIST, LVSIL_SMALL,
                     reinterpret_cast<LPARAM>(m_images.get()));
        addColumns();
        insert(rows);
        if (look == Look::Bare)
            subclassBare(window());
        if (look == Look::Flat) {
            m_control = std::make_unique<QkDlg::QkFlatListView>(0);
            m_control->Attach(window());
        }
    }
    [[nodiscard]] HWND window() const { return m_window.get(); }

    /// So many rows at the end.
    void insert(int rows) const {
        const auto first = static_cast<int>(SendMessageW(window(), LVM_GETITEMCOUNT, 0, 0));
        SendMessageW(window(), WM_SETREDRAW, FALSE, 0);
        SendMessageW(window(), LVM_SETITEMCOUNT, static_cast<WPARAM>(first + rows), 0);
        for (int row = first; row < first + rows; ++row)
            addRow(row);
        SendMessageW(window(), WM_SETREDRAW, TRUE, 0);
    }

    void show(bool visible) const {
        ShowWindow(window(), visible ? SW_SHOWNA : SW_HIDE);
        settle();
    }
    [[nodiscard]] int rowHeight() const {
        RECT row{};
        row.left = LVIR_BOUNDS;
        SendMessageW(window(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
        return row.bottom - row.top;
    }
    [[nodiscard]] int page() const {
        return static_cast<int>(SendMessageW(window(), LVM_GETCOUNTPERPAGE, 0, 0));
    }
    void scroll(int rows) const {
        SendMessageW(window(), LVM_SCROLL, 0, static_cast<LPARAM>(rows) * rowHeight());
        UpdateWindow(window());
        settle();
    }

private:
    void addColumns() const {
        for (int i = 0; i < kColumns; ++i) {
            LVCOLUMNW column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            std::wstring title = L"Column " + std::to_wstring(i);
            column.pszText = title.data();
            column.cx = scaled(130);
            SendMessageW(window(), LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                         reinterpret_cast<LPARAM>(&column));
        }
    }
    void addRow(int row) const {
        std::wstring text = L"Row " + std::to_wstring(row);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = text.data();
        SendMessageW(window(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        for (item.iSubItem = 1; item.iSubItem < kColumns; ++item.iSubItem)
            SendMessageW(window(), LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }

    UniqueImages m_images;
    // The window goes first.
    std::unique_ptr<QkDlg::QkFlatListView> m_control;
    UniqueWindow m_window;
};

/// Microseconds of a frame. Down and up in turn, so that it works for few rows, too.
double timeOfFrame(const List& list, const Step& step) {
    const int rows = step.rows > 0 ? step.rows : list.page();
    list.scroll(rows);
    list.scroll(-rows);
    const double time = timeOf([&] {
        for (int i = 0; i < kFramesPerRound; ++i)
            list.scroll(i % 2 == 0 ? rows : -rows);
    });
    return time / kFramesPerRound;
}

using Lists = std::array<std::unique_ptr<List>, kListLooks.size()>;

Lists makeLists(const Hosts& hosts, int rowCount) {
    Lists lists;
    for (std::size_t i = 0; i < lists.size(); ++i)
        lists[i] = std::make_unique<List>(hosts.of(kListLooks[i]), kListLooks[i], rowCount);
    if (lists.front()->rowHeight() != lists.back()->rowHeight())
        std::fprintf(stderr, "list: rows of %d and %d pixels are compared\n",
                     lists.front()->rowHeight(), lists.back()->rowHeight());
    return lists;
}

void scrollAll(const Lists& lists, int rowCount, Results* results) {
    for (const Step& step : kSteps) {
        for (std::size_t i = 0; i < lists.size(); ++i) {
            lists[i]->show(true);
            const double time = timeOfFrame(*lists[i], step);
            lists[i]->show(false);
            if (results)
                results->add("list", std::to_string(rowCount) + " by " + step.name,
                             nameOf(kListLooks[i]), time);
        }
    }
}

// For one row each.
void insertIntoAll(const Hosts& hosts, Results& results) {
    const Lists lists = makeLists(hosts, 0);
    for (std::size_t i = 0; i < lists.size(); ++i) {
        const double time = timeOf([&] { lists[i]->insert(kInsertedRows); });
        results.add("list", "inserting", nameOf(kListLooks[i]), time / kInsertedRows);
    }
}

}  // namespace

void runList(const Options& options, Results& results) {
    const Hosts hosts;
    const int rounds = options.roundsOr(kRounds);
    for (const int rowCount : kRowCounts) {
        const Lists lists = makeLists(hosts, rowCount);
        scrollAll(lists, rowCount, nullptr);
        for (int round = 0; round < rounds; ++round)
            scrollAll(lists, rowCount, &results);
    }
    for (int round = 0; round < rounds; ++round)
        insertIntoAll(hosts, results);
}

}  // namespace QkDlgBench

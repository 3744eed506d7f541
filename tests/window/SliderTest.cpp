#include "QkDlg/QkFlatSlider.h"

#include <array>
#include <optional>

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kId = 101;

class SliderTest : public WindowTest {
protected:
    /// A slider of 0 to 100 whose thumb moves 3 pixels from each position to the next.
    void addSlider(bool vertical, const wchar_t* className = L"STATIC", DWORD style = WS_TABSTOP) {
        const int length = 300 + scaled(10);
        slider_ = host_.add(
            className, L"", style,
            vertical ? area(20, 20, scaled(30), length) : area(20, 20, length, scaled(30)), kId);
        object_.emplace(kId, vertical);
        object_->Attach(slider_);
        SendMessageW(slider_, TBM_SETPOS, TRUE, 50);
        UpdateWindow(slider_);
        host_.forget();
    }
    LRESULT position() const { return SendMessageW(slider_, TBM_GETPOS, 0, 0); }
    /// What the parent was told, and where the slider stood by then.
    std::vector<std::array<int, 3>> told() { return std::exchange(told_, {}); }

    HostDialog host_{{.width = 800, .height = 700}};
    std::optional<QkFlatSlider> object_;
    HWND slider_ = nullptr;
    std::vector<std::array<int, 3>> told_;
};

TEST_F(SliderTest, MovesWithinItsRangeBeforeItTellsTheParent) {
    host_.onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_HSCROLL || message == WM_VSCROLL)
            told_.push_back({LOWORD(wp), HIWORD(wp), static_cast<int>(position())});
        return std::nullopt;
    });
    using Told = std::vector<std::array<int, 3>>;
    for (const bool vertical : {false, true}) {
        for (const wchar_t* className : {L"STATIC", L"SCROLLBAR"}) {
            addSlider(vertical, className);
            const auto at = [&](int along) { return vertical ? POINT{1, along} : POINT{along, 1}; };
            // Beside the thin track and the thumb, at the edge of the control, a page is asked for.
            click(slider_, at(299 + scaled(10)).x, at(299 + scaled(10)).y);
            EXPECT_EQ(told(), (Told{{TB_PAGEDOWN, 0, 70}, {TB_ENDTRACK, 0, 70}}));
            const int middle = scaled(15);
            const auto on = [&](int along) {
                return vertical ? POINT{middle, along} : POINT{along, middle};
            };
            drag(slider_, on(212), on(1200));
            EXPECT_EQ(told().back(), (std::array{TB_ENDTRACK, 0, 100})) << "all of the range";
            EXPECT_EQ(host_.timesHeard(
                          scrolled(vertical ? WM_VSCROLL : WM_HSCROLL, kId, TB_THUMBPOSITION, 100)),
                      1);
            const std::array<int, 3> keys[] = {
                {VK_DOWN, TB_LINEDOWN, 100}, {VK_LEFT, TB_LINEUP, 99}, {VK_PRIOR, TB_PAGEUP, 79},
                {VK_HOME, TB_TOP, 0},        {VK_PRIOR, TB_PAGEUP, 0}, {VK_END, TB_BOTTOM, 100}};
            for (const auto& [key, request, expected] : keys) {
                keyTap(key);
                EXPECT_EQ(told(), (Told{{request, 0, expected}, {TB_ENDTRACK, 0, expected}}));
            }
            DestroyWindow(slider_);
        }
    }
}

TEST_F(SliderTest, AnswersATrackbarsMessagesAndShowsAThinTrackWithAThumbInIt) {
    addSlider(false);
    const int thumb = scaled(10);
    Image image = onScreen(slider_);
    EXPECT_EQ(image.boundingBoxOf(RGB(230, 230, 230)),
              Box(151, scaled(30) / 2 - scaled(20) / 2 + 1, 149 + thumb,
                  scaled(30) / 2 - scaled(20) / 2 + scaled(20) - 1));
    EXPECT_EQ(image.part(Box(0, 0, 150, scaled(30))).count(RGB(204, 204, 204)), 150 * scaled(4));
    SendMessageW(slider_, TBM_SETRANGE, TRUE, MAKELPARAM(-100, 300));
    EXPECT_EQ(SendMessageW(slider_, TBM_GETRANGEMIN, 0, 0), -100);
    SendMessageW(slider_, TBM_SETRANGEMIN, TRUE, 0);
    SendMessageW(slider_, TBM_SETRANGEMAX, TRUE, 3'000'000);
    EXPECT_EQ(SendMessageW(slider_, TBM_GETRANGEMAX, 0, 0), 3'000'000);
    SendMessageW(slider_, TBM_SETPAGESIZE, 0, 1'000'000);
    click(slider_, 299, 1);
    EXPECT_EQ(position(), 1'000'050);
    EXPECT_EQ(onScreen(slider_).boundingBoxOf(RGB(230, 230, 230))->left, 101);
    EXPECT_THAT(printed(slider_), looksLike(onScreen(slider_)));
}

}  // namespace

#pragma once

#include <array>
#include <memory>
#include <optional>

#include "QkDlg/QkFlatScrollbar.h"

namespace QkDlg {

/// What a window of a holder covers of its target.
enum class HolderPart { Vertical, Horizontal, Corner };
constexpr int kHolderParts = 3;

/// A target and the windows over its scroll bars, known to those windows and to whom they serve.
struct HolderGroup {
    HWND target = nullptr;
    /// By HolderPart; null where there is none, or none any more.
    std::array<HWND, kHolderParts> windows{};
    /// Bars are scrolling the target just now. What it says meanwhile is between two states.
    int scrolling = 0;

    HWND& window(HolderPart part) { return windows.at(static_cast<std::size_t>(part)); }
};

/// One of the windows over the scroll bars of a target: a holder with a flat bar in it, or the
/// cover of the corner between the two. The window owns its object. It is a sibling of the target
/// that neither takes the focus nor a place in the tab order.
class HolderWindow {
public:
    /// Creates the hidden window and enters it into the group. False when the system refuses.
    static bool create(const std::shared_ptr<HolderGroup>& group, HolderPart part);

    /// The object of a window of the group; null for none.
    [[nodiscard]] static HolderWindow* of(HWND holder);

    HolderWindow(std::shared_ptr<HolderGroup> group, HolderPart part);
    ~HolderWindow() = default;
    HolderWindow(const HolderWindow&) = delete;
    HolderWindow& operator=(const HolderWindow&) = delete;
    HolderWindow(HolderWindow&&) = delete;
    HolderWindow& operator=(HolderWindow&&) = delete;

    [[nodiscard]] HWND bar() const { return m_bar ? m_bar->GetWindow() : nullptr; }

    /// Copies what has changed of the target's own scroll bar to the flat one: all of it, but for
    /// the position while the user drags the thumb.
    void synchronise();
    /// Disabled with its target, the bar alone when there is nothing to scroll; and the beginning
    /// of a group of the dialog where the target is, so that the group before ends here.
    void followStyles();

private:
    static LRESULT CALLBACK windowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK barProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
    static bool registerClass();

    void begin(HWND hwnd);
    bool createBar();
    void onSize() const;
    void onScroll(UINT message, WPARAM wParam);
    [[nodiscard]] bool isVertical() const { return m_part == HolderPart::Vertical; }

    std::shared_ptr<HolderGroup> m_group;
    HolderPart m_part;
    HWND m_hwnd = nullptr;
    std::optional<QkFlatScrollbar> m_bar;
    SCROLLINFO m_copied{};
    UINT m_arrowsOff = ESB_ENABLE_BOTH;
    bool m_dragging = false;
};

}  // namespace QkDlg

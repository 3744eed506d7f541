#pragma once

#include <random>
#include <vector>

#include "Scene.h"
#include "Watcher.h"

namespace ScreenTest {

/// Plays a person, with real mouse and keyboard, and a host that changes its controls meanwhile.
/// The same seed plays the same acts.
class Session {
public:
    Session(DWORD process, HWND main, const Screen& screen, Report& report, unsigned seed);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// One act after another until the time is over. False when the program has ended.
    bool play(int milliseconds);
    /// Until no window of the program has anything left to paint.
    void waitForPaint();

private:
    void actOnce();
    void chooseControl();
    void hover();
    void click();
    void dragOut();
    void dragAlong();
    void turnWheel();
    void tab();
    void type();
    void arrows();
    void disable();
    void hide();
    void changeState();
    void setTextAgain();
    void moveDefault();
    void moveControl();
    void cover();
    void changePage();
    void repaintAll();
    void closeTopDialog();
    void hold();

    [[nodiscard]] bool movesByItself(POINT point, const Frame& earlier, const Frame& later) const;
    [[nodiscard]] RECT difference(const Frame& earlier, const Frame& before,
                                  const Frame& after) const;
    [[nodiscard]] int below(int limit);
    [[nodiscard]] POINT inside();
    LRESULT tell(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    DWORD process_;
    HWND main_;
    const Screen& screen_;
    Report& report_;
    Scene scene_;
    std::mt19937 random_;
    HWND cover_ = nullptr;
    HWND dialog_ = nullptr;  ///< the topmost one
    HWND target_ = nullptr;  ///< the control of the act
    RECT place_{};           ///< its rectangle on the screen
};

/// Where a window and its surroundings are watched.
[[nodiscard]] RECT watchedPlace(HWND window);

/// Lets the messages of this thread pass meanwhile.
void pause(int milliseconds);

}  // namespace ScreenTest

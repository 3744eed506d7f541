#pragma once

#include <string_view>

#include "QkDlg/Win32.h"

// Real mouse and keyboard: the system routes what these functions send as it routes a person's.
// Each returns when the input has been dispatched; a key or button that no window of this thread
// receives fails the test. Positions are client coordinates.
namespace QkDlgTest {

void moveTo(HWND window, int x, int y);
void moveTo(HWND window);  ///< its middle
/// To a corner of the screen, and waits until the window left behind has noticed.
void moveAway();

/// The left button, where the mouse is. A standard scroll bar keeps the loop to itself until the
/// button is up: use click there.
void press();
void release();
/// Never becomes the second half of a double click by accident.
void click();
void click(HWND window, int x, int y);
void click(HWND window);  ///< its middle
void doubleClick(HWND window);
/// Press at one place, move in steps to the other, release.
void drag(HWND window, POINT from, POINT to);
/// One notch is 1 or -1.
void wheel(int notches);

void keyDown(int virtualKey);
void keyUp(int virtualKey);
void keyTap(int virtualKey);
void typeText(std::wstring_view text);

/// Lets go of buttons and keys that a test left pressed.
void releaseEverything();

/// Shortens the system's hover and double-click times for the run of a test program, so that
/// leaving a window is noticed at once and clicks need not wait for one another.
class QuickInput {
public:
    QuickInput();
    ~QuickInput();
    QuickInput(const QuickInput&) = delete;
    QuickInput& operator=(const QuickInput&) = delete;

private:
    UINT hoverTime_ = 0;
    UINT doubleClickTime_ = 0;
};

}  // namespace QkDlgTest

#pragma once

#include "common/Picture.h"
#include "pictures/ControlType.h"

namespace QkPictures {

/// A dialog with a single control, brought into a state by real input: the mouse moves there, its
/// button goes down, the dialog gives the control the focus. What takes time has come to its end
/// when the picture is taken, and what blinks or runs stands still.
class Stage {
public:
    Stage(const ControlType& type, const Specimen& specimen, const Column& column);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    Stage(Stage&&) = delete;
    Stage& operator=(Stage&&) = delete;

    /// Null when it cannot be had.
    [[nodiscard]] QkDlgTools::UniquePicture picture() const;

private:
    void addControl(const ControlType& type, const Specimen& specimen);
    void bringInto(const Column& column);
    void moveMouse(Spot spot) const;
    void focus() const;
    /// Until nothing has come for so many short waits.
    static void settle(int quietWaits);

    HWND dialog_ = nullptr;
    HWND control_ = nullptr;
    HWND list_ = nullptr;  ///< of an open combo box
    bool pressed_ = false;
    std::unique_ptr<QkDlg::QkCustomControl> flat_;
};

/// What dialogs write in, and the labels of the sheets.
[[nodiscard]] HFONT stageFont();

/// How far from the picture's edge the control stands, in pixels of the screen.
[[nodiscard]] int stageMargin();

}  // namespace QkPictures

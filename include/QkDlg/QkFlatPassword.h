#pragma once

#include "QkDlg/QkFlatEdit.h"

namespace QkDlg {

/// A flat edit for a password, masked with "*", with a square eye button at its right. The eye, or
/// Alt+F8, shows the text and masks it again. Deleted before its window, the object leaves a
/// masked standard edit.
class QkFlatPassword : public QkFlatEdit {
public:
    /// Sent to the edit: takes the eye away for good and shows the text plainly.
    static constexpr UINT kTurnEyeOff = WM_USER + 123;

    /// `cueText` is shown in the empty box, while it has the focus as well.
    explicit QkFlatPassword(UINT id, std::wstring_view cueText = {});
    ~QkFlatPassword() override;

    void Attach(HWND hwnd) override;
    void OnMove(int x, int y) override;
    /// A press on the eye: shows the text or masks it.
    void OnLButtonDown(int x, int y) override;
    /// Shows frame and eye only for a `show` of exactly 1.
    void ShowFrame(WPARAM show) override;

    /// Shows the text or masks it, and gives the edit the focus. Nothing once the eye is off.
    void ToggleReveal();
    /// Hides the eye for good and shows the text plainly; what kTurnEyeOff does.
    void TurnEyeOff();

    /// The eye button; null before Attach and after its end.
    [[nodiscard]] HWND GetEyeButton() const { return m_eyeButton; }
    /// The eye's tooltip window, one for all password boxes of a dialog; null before Attach and
    /// after the box's end.
    [[nodiscard]] HWND GetTooltip() const { return m_tooltipWindow; }
    /// Whether the eye or Alt+F8 has shown the text.
    [[nodiscard]] bool IsRevealed() const { return m_revealed; }

protected:
    void FollowEdit() override;
    void PaintFrameInside(HDC hdc) override;

private:
    static LRESULT CALLBACK PasswordProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR id, DWORD_PTR referenceData);
    static LRESULT CALLBACK EyeProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR referenceData);

    /// What the eye shows on the screen.
    enum class EyeLook : std::uint8_t { Unknown, Masked, Revealed, Blank };

    void CreateEye();
    void DestroyHelpers();
    void LeaveWindow();

    void PaintEye(HDC hdc);
    void PaintEyeNow();
    void PrintEye(HDC hdc);
    void RenewEye();
    [[nodiscard]] EyeLook WantedLook() const;
    void DrawEye(HDC hdc);
    void BlankEye(HDC hdc, COLORREF colour);
    void SetEyeAvailable(bool available);
    void Resynchronise();
    void OnKey(WPARAM key, bool repeated);
    void TakeFocusBack();

    HWND m_tooltipWindow = nullptr;
    HWND m_eyeButton = nullptr;
    bool m_revealed = false;        ///< the text is shown plainly
    bool m_refocusPending = false;  ///< the eye's next paint gives the focus back to the edit
    bool m_eyeEnabled = true;       ///< showing and masking is available
    EyeLook m_eyeLook = EyeLook::Unknown;
};

}  // namespace QkDlg

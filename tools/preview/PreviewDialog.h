#pragma once

#include <optional>
#include <string>
#include <vector>

#include "QkDlg/QkXDlg.h"
#include "QkXFlatDlg/FlatConversion.h"
#include "preview/Module.h"
#include "preview/TemplateContents.h"

namespace QkPreview {

enum class Look { Plain, Flat };

/// The dialog object of a previewed template: it converts as any flat dialog does, and remembers
/// what became of each control.
class PreviewDialog final : public QkDlg::QkXDlg {
public:
    PreviewDialog(UINT32 templateId, Look look, bool centred);

    [[nodiscard]] HWND window() const { return m_hWnd; }
    [[nodiscard]] const std::vector<QkDlg::ConvertedChild>& children() const { return children_; }

    bool OnInitDialog() override;
    // The dialog of a running message loop is closed by ending the loop.
    bool OnOK() override;
    bool OnCancel() override;
    bool OnDestroy() override;

private:
    std::vector<QkDlg::ConvertedChild> children_;
};

/// What a preview has to say besides what it shows.
struct Findings {
    std::vector<std::wstring> remarks;
    std::optional<std::wstring> fault;  ///< why there is no dialog
};

/// A dialog made from a template, hidden at first. A template for a child dialog (a property page)
/// gets a window around it. Everything is gone when this is.
class OpenPreview {
public:
    /// `centred`: in the middle of the screen, otherwise in its corner.
    OpenPreview(const Module& module, const TemplateName& name, Look look, bool centred);
    ~OpenPreview();
    OpenPreview(const OpenPreview&) = delete;
    OpenPreview& operator=(const OpenPreview&) = delete;
    OpenPreview(OpenPreview&&) = delete;
    OpenPreview& operator=(OpenPreview&&) = delete;

    [[nodiscard]] const Findings& findings() const { return findings_; }
    /// Null when the dialog could not be created.
    [[nodiscard]] HWND window() const { return dialog_.window(); }
    [[nodiscard]] const std::vector<QkDlg::ConvertedChild>& children() const {
        return dialog_.children();
    }
    /// Without taking the focus from anybody, and out of reach of mouse and keyboard.
    void showForPicture() const;
    /// Shows the dialog until the user closes it.
    void run() const;

private:
    [[nodiscard]] bool open(const Module& module, TemplateCopy copy,
                            const TemplateContents& contents);
    void ensureClasses(const TemplateContents& contents);
    void createFrame(const TemplateContents& contents);
    void fitFrame() const;
    [[nodiscard]] HWND topWindow() const { return frame_ ? frame_ : dialog_.window(); }

    Look look_;
    bool centred_;
    Findings findings_;
    HWND frame_ = nullptr;
    PreviewDialog dialog_;
};

}  // namespace QkPreview

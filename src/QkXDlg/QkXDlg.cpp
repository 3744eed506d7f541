#include "QkDlg/QkXDlg.h"

#include "QkDlg/DialogTemplates.h"
#include "QkDlg/QkXAppGlobals.h"
#include "QkUtil/ObjectCheck.h"
#include "QkUtil/OsVersion.h"
#include "QkUtil/WindowClass.h"
#include "QkUtil/WindowPlacement.h"
#include "QkUtil/WindowText.h"
#include "QkXFlatDlg/FlatConversion.h"
#include "QkXML/DialogDefaults.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kBadObject{"src/QkXDlg", 64};
constexpr QkLib::AssertSite kNoDialog{"src/QkXDlg", 71};
constexpr QkLib::AssertSite kNoItem{"src/QkXDlg", 88};

// Stock object 8 is a pen. Handed out as a brush it fills nothing, so the dialog paints no ground
// behind a label.
constexpr int kFillsNothing = NULL_PEN;

void requireObject(const QkXDlg* dialog) {
    if (!isReadableAndWritable(dialog, sizeof *dialog))
        QkLib::reportAssertFailure(kBadObject);
}

void requireWindow(HWND hwnd) {
    if (!hwnd)
        QkLib::reportAssertFailure(kNoDialog);
}

INT_PTR asResult(HGDIOBJ brush) {
    return reinterpret_cast<INT_PTR>(brush);
}

/// What a dialog is centred over: its owner, or the desktop.
HWND centringReference(HWND dialog) {
    HWND reference = GetParent(dialog);
    if (reference == dialog)
        reference = GetParent(reference);
    return !reference || IsIconic(reference) ? GetDesktopWindow() : reference;
}

}  // namespace

QkXDlg::QkXDlg(UINT32 templateId) : m_nTemplateId(templateId) {
    static_cast<void>(osVersion());
}

QkXDlg::QkXDlg(UINT32 templateId, HWND parent, UINT32 callerValue, bool centreOnParent)
    : m_hParent(parent),
      m_nTemplateId(templateId),
      m_nCallerValue(callerValue),
      m_bCentreOnParent(centreOnParent) {
    static_cast<void>(osVersion());
}

QkXDlg::~QkXDlg() {
    // A dialog that is still there goes on without its object.
    if (m_boundWindow)
        SetWindowLongPtrW(m_boundWindow, DWLP_USER, 0);
}

int QkXDlg::DoModal() {
    requireObject(this);
    HWND owner = IsWindowVisible(m_hParent) ? m_hParent : nullptr;
    const int endCode = RunModalDialog(AppGlobals().GetModule(HostModule::Resource),
                                       MAKEINTRESOURCEW(m_nTemplateId), owner, GetDialogProc(),
                                       reinterpret_cast<LPARAM>(this), 0);
    m_hWnd = nullptr;
    return endCode;
}

bool QkXDlg::RouteCommand(WPARAM wParam, LPARAM lParam) {
    requireObject(this);
    return OnCommandUnhandled(wParam, lParam);
}

bool QkXDlg::OnInitDialog() {
    requireObject(this);
    requireWindow(m_hWnd);
    LoadDialogDefaults();
    if (m_bFlat) {
        ConvertToFlat(*this);
        AttachControls();
    }
    if (m_bCentreOnParent)
        centreWindow(m_hWnd, centringReference(m_hWnd));
    return false;
}

void QkXDlg::AttachControls() {
    for (const auto& [id, control] : m_controls) {
        HWND chosen = control->GetWindow();
        const bool stillThere = chosen && GetParent(chosen) == m_hWnd &&
                                static_cast<UINT32>(GetDlgCtrlID(chosen)) == id;
        control->Attach(stillThere ? chosen : GetItem(id, true));
    }
}

bool QkXDlg::OnOK() {
    requireObject(this);
    requireWindow(m_hWnd);
    EndDialog(m_hWnd, IDOK);
    m_hWnd = nullptr;
    return true;
}

bool QkXDlg::OnHelp() {
    requireObject(this);
    requireWindow(m_hWnd);
    return true;
}

bool QkXDlg::OnCancel() {
    requireObject(this);
    requireWindow(m_hWnd);
    EndDialog(m_hWnd, IDCANCEL);
    m_hWnd = nullptr;
    return true;
}

bool QkXDlg::OnContextMenu(WPARAM, LPARAM) {
    return true;
}

bool QkXDlg::OnNotify(UINT, LPARAM, LRESULT* result) {
    requireObject(this);
    if (result)
        *result = 0;
    return false;
}

bool QkXDlg::OnClose() {
    requireObject(this);
    return false;
}

bool QkXDlg::OnSize(UINT, int, int) {
    requireObject(this);
    return false;
}

bool QkXDlg::OnGetMinMaxInfo(LPARAM) {
    requireObject(this);
    return false;
}

bool QkXDlg::OnMeasureItem(UINT id, LPARAM info) {
    requireObject(this);
    QkCustomControl* control = m_bFlat ? FindControl(id) : nullptr;
    return control && control->QueryReserved4(info);
}

bool QkXDlg::OnDrawItem(UINT id, LPARAM info) {
    requireObject(this);
    QkCustomControl* control = m_bFlat ? FindControl(id) : nullptr;
    return control && control->QueryReserved5(info);
}

bool QkXDlg::OnSizing(UINT, LPARAM) {
    requireObject(this);
    return false;
}

void QkXDlg::OnMove(int, int) {
    requireObject(this);
}

void QkXDlg::OnMoving(WPARAM, LPARAM) {
    requireObject(this);
}

bool QkXDlg::OnPaint() {
    requireObject(this);
    return false;
}

bool QkXDlg::OnCommandUnhandled(WPARAM, LPARAM) {
    requireObject(this);
    return false;
}

bool QkXDlg::OnCommand(WPARAM wParam, LPARAM lParam) {
    requireObject(this);
    return OnCommandUnhandled(wParam, lParam);
}

bool QkXDlg::OnTimer(UINT) {
    requireObject(this);
    return false;
}

bool QkXDlg::OnDestroy() {
    requireObject(this);
    return false;
}

bool QkXDlg::OnSysCommand(WPARAM, LPARAM) {
    requireObject(this);
    return false;
}

bool QkXDlg::OnColorsChanged() {
    requireObject(this);
    for (const auto& [id, control] : m_controls)
        control->Refresh();
    return false;
}

INT_PTR QkXDlg::OnCtlColorDlg() {
    requireObject(this);
    return m_bFlat && !IsHighContrast() ? asResult(GetStockObject(WHITE_BRUSH)) : 0;
}

INT_PTR QkXDlg::OnCtlColorStatic(HWND control, HDC dc) {
    requireObject(this);
    if (!m_bFlat)
        return 0;
    if (QkCustomControl* flat = ControlOf(control))
        return asResult(flat->OnCtlColor(dc, control));
    // A read-only or disabled edit asks like a label, but without a ground old text would stay
    // under the new.
    if (windowClassIs(control, WC_EDITW))
        return 0;
    SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    return asResult(GetStockObject(kFillsNothing));
}

INT_PTR QkXDlg::OnCtlColorBtn(HWND control, HDC dc) {
    requireObject(this);
    QkCustomControl* flat = m_bFlat ? ControlOf(control) : nullptr;
    return flat ? asResult(flat->OnCtlColor(dc, control)) : 0;
}

void QkXDlg::OnUpdateUIState(UINT flags, UINT action) {
    requireObject(this);
    if (!m_bFlat)
        return;
    for (const auto& [id, control] : m_controls)
        control->OnReserved7(flags, action);
}

INT_PTR QkXDlg::OnMessage(UINT message, WPARAM, LPARAM) {
    requireObject(this);
    return m_bFlat && message == WM_CTLCOLORDLG ? asResult(GetStockObject(WHITE_BRUSH)) : 0;
}

HWND QkXDlg::GetItem(UINT id, bool mustExist) const {
    requireWindow(m_hWnd);
    HWND item = GetDlgItem(m_hWnd, static_cast<int>(id));
    if (mustExist && !item)
        QkLib::reportAssertFailure(kNoItem);
    return item;
}

void QkXDlg::EnableItem(UINT id, bool enable) const {
    EnableWindow(GetItem(id, true), enable);
}

std::wstring QkXDlg::GetItemText(UINT id) const {
    return windowText(GetItem(id, true));
}

void QkXDlg::SetItemText(UINT id, const wchar_t* text) const {
    requireWindow(m_hWnd);
    SetDlgItemTextW(m_hWnd, static_cast<int>(id), text);
}

QkCustomControl* QkXDlg::FindControl(UINT id) const {
    const auto found = m_controls.find(id);
    return found == m_controls.end() ? nullptr : found->second.get();
}

/// The flat control that is bound to this very window: ids may repeat.
QkCustomControl* QkXDlg::ControlOf(HWND control) const {
    QkCustomControl* found = FindControl(static_cast<UINT>(GetDlgCtrlID(control)));
    return found && found->GetWindow() == control ? found : nullptr;
}

void QkXDlg::SetDefaultDialogFont(const std::wstring& faceName, UINT32 pointSize) {
    dialogDefaults() = {faceName, static_cast<int>(pointSize)};
}

void QkXDlg::LoadDialogDefaults() {
    loadDialogDefaults();
}

void QkXDlg::RegisterControl(QkXDlg& dialog, std::unique_ptr<QkCustomControl> control) {
    registerControl(dialog.m_controls, std::move(control));
}

void QkXDlg::ConvertToFlat(QkXDlg& dialog) {
    requireWindow(dialog.m_hWnd);
    convertToFlat(dialog.m_hWnd, dialog.m_nTemplateId, dialog.m_controls);
}

}  // namespace QkDlg

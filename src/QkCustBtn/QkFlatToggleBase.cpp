#include "QkDlg/QkFlatToggleBase.h"

#include <algorithm>
#include <vector>

#include "QkUtil/Bitmaps.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"
#include "QkUtil/Resources.h"

namespace QkDlg {

namespace {

/// The check boxes and radio buttons that exist.
std::vector<QkFlatToggleBase*>& registeredToggles() {
    // Never destroyed: a host's static object may end after this module's.
    static auto& toggles = *new std::vector<QkFlatToggleBase*>;
    return toggles;
}

}  // namespace

QkFlatToggleBase::QkFlatToggleBase(UINT id) : QkFlatBtn(id) {
    m_clrBk = kNoColor;
}

QkFlatToggleBase::~QkFlatToggleBase() {
    std::erase(registeredToggles(), this);
}

int QkFlatToggleBase::OnAnimateColor(COLORREF) {
    return 0;
}

int QkFlatToggleBase::GetContentWidth() {
    const FreshPicture picture(m_images.idOf(0, dpiBucket(screenDpi())));
    return bitmapSize(picture.get()).width + captionPadding();
}

int QkFlatToggleBase::GetCaptionRoom(HWND hwnd) {
    const auto& toggles = registeredToggles();
    const auto found = std::find_if(toggles.begin(), toggles.end(), [hwnd](const auto* toggle) {
        return toggle->GetWindow() == hwnd;
    });
    const int width = clientRect(hwnd).right;
    return found == toggles.end() ? width : width - (*found)->GetContentWidth();
}

void QkFlatToggleBase::RegisterToggle() {
    registeredToggles().push_back(this);
}

bool QkFlatToggleBase::IsChecked() const {
    // The window is asked directly: in old dialogs several controls share one id.
    return AskStandard(BM_GETCHECK) == BST_CHECKED;
}

}  // namespace QkDlg

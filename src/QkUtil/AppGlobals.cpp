#include "QkDlg/QkXAppGlobals.h"

namespace QkDlg {

bool QkXAppGlobals::Init(HMODULE hModule1, HMODULE hModule2, const wchar_t* path1,
                         const wchar_t* path2) {
    m_hModule1 = hModule1;
    m_hModule2 = hModule2;
    lstrcpynW(m_szPath1.data(), path1 ? path1 : L"", static_cast<int>(m_szPath1.size()));
    lstrcpynW(m_szPath2.data(), path2 ? path2 : L"", static_cast<int>(m_szPath2.size()));
    return true;
}

bool QkXAppGlobals::Init(HMODULE hModule, const wchar_t* path1, const wchar_t* path2) {
    return Init(hModule, hModule, path1, path2);
}

void QkXAppGlobals::Reset() {
    m_hModule1 = nullptr;
    m_hModule2 = nullptr;
    m_nState = 0;
    m_szPath1.fill(L'\0');
    m_szPath2.fill(L'\0');
}

HMODULE QkXAppGlobals::GetModule(HostModule which) const {
    const HMODULE module = which == HostModule::Instance ? m_hModule1 : m_hModule2;
    return module ? module : GetModuleHandleW(nullptr);
}

QkXAppGlobals& AppGlobals() {
    static QkXAppGlobals globals;
    return globals;
}

}  // namespace QkDlg

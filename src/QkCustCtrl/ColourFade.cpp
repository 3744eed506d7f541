#include "QkDlg/ColourFade.h"

#include <map>

#include "QkCustCtrl/FadeMixing.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kAlreadyRunning{"src/QkCustCtrl", 1270};
constexpr UINT kTickMilliseconds = 10;

/// The animations that run, by timer id, and the id that the next one gets.
struct RunningFades {
    std::map<INT32, ColourFade*> byTimer;
    INT32 nextId = 1;
};

RunningFades& runningFades() {
    // Never destroyed: a host's static object may end after this module's.
    static auto& fades = *new RunningFades;
    return fades;
}

}  // namespace

void ColourFade::Start(HWND hwnd, COLORREF from, COLORREF to) {
    if (m_bRunning)
        QkLib::reportAssertFailure(kAlreadyRunning);
    RunningFades& fades = runningFades();
    m_hWnd = hwnd;
    m_clrFrom = from;
    m_clrTo = to;
    m_nStep = 0;
    m_bRunning = true;
    m_nTimerId = fades.nextId++;
    fades.byTimer.emplace(m_nTimerId, this);
    SetTimer(hwnd, static_cast<UINT_PTR>(m_nTimerId), kTickMilliseconds, OnTick);
}

void ColourFade::Stop() {
    RunningFades& fades = runningFades();
    if (m_bRunning) {
        // The next identifier, not this animation's own: kept as it has always been. The timer's
        // remaining tick is ignored and ends it (OnTick).
        KillTimer(m_hWnd, static_cast<UINT_PTR>(fades.nextId));
        m_bRunning = false;
    }
    const auto entry = fades.byTimer.find(m_nTimerId);
    if (entry != fades.byTimer.end() && entry->second == this)
        fades.byTimer.erase(entry);
}

void CALLBACK ColourFade::OnTick(HWND hwnd, UINT, UINT_PTR timerId, DWORD) {
    const auto& fades = runningFades().byTimer;
    const auto id = static_cast<INT32>(timerId);
    if (const auto entry = fades.find(id); entry != fades.end())
        entry->second->Step();
    // The fade has ended, with this tick or before it: nobody wants the timer any more.
    if (!fades.contains(id))
        KillTimer(hwnd, timerId);
}

void ColourFade::Step() {
    // The window's procedure may destroy the control that owns this fade, so nothing of this is
    // touched after the last message.
    const HWND hwnd = m_hWnd;
    const INT32 timerId = m_nTimerId;
    if (++m_nStep >= kFadeSteps) {
        Stop();
        SendMessageW(hwnd, WM_FADECOLOR, 0, static_cast<LPARAM>(m_clrTo));
        return;
    }
    const COLORREF colour = mixedColour(m_clrFrom, m_clrTo, m_nStep);
    if (SendMessageW(hwnd, WM_FADECOLOR, 0, static_cast<LPARAM>(colour)) != 0)
        return;
    const auto entry = runningFades().byTimer.find(timerId);
    if (entry != runningFades().byTimer.end())
        entry->second->Stop();
}

}  // namespace QkDlg

#pragma once

#include <array>

#include "QkDlg/Win32.h"

namespace QkDlg {

/// Which of the host's modules is meant.
enum class HostModule { Instance, Resource };

/// The per-process record of the host application: its modules and two paths. A host that links
/// the classes initialises it before it opens its first dialog; GUI thread only.
class QkXAppGlobals {
public:
    QkXAppGlobals() = default;
    virtual ~QkXAppGlobals() = default;
    QkXAppGlobals(const QkXAppGlobals&) = delete;
    QkXAppGlobals& operator=(const QkXAppGlobals&) = delete;

    /// Stores all four; paths longer than the record holds are cut. A null path reads as empty.
    /// Always true.
    virtual bool Init(HMODULE hModule1, HMODULE hModule2, const wchar_t* path1,
                      const wchar_t* path2);
    /// The same with one module in both places.
    virtual bool Init(HMODULE hModule, const wchar_t* path1, const wchar_t* path2);
    /// Back to the state after construction.
    virtual void Reset();

    /// The host's instance or resource module; the running program where none was given.
    [[nodiscard]] HMODULE GetModule(HostModule which) const;
    /// The first path; empty where none was given. The record keeps it.
    [[nodiscard]] const wchar_t* GetPath1() const { return m_szPath1.data(); }
    /// The second path; the same.
    [[nodiscard]] const wchar_t* GetPath2() const { return m_szPath2.data(); }

private:
    using Path = std::array<wchar_t, MAX_PATH + 1>;

    HMODULE m_hModule1 = nullptr;  ///< the host's instance module
    HMODULE m_hModule2 = nullptr;  ///< the host's resource module
    UINT32 m_nState = 0;
    Path m_szPath1{};
    Path m_szPath2{};
};

/// The one record of the process.
[[nodiscard]] QkXAppGlobals& AppGlobals();

}  // namespace QkDlg

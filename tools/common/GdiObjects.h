#pragma once

namespace QkDlgTools {

/// GDI objects that the process holds.
struct GdiObjects {
    int all = 0;
    int fonts = 0;  ///< of these; 0 where the system does not tell
};

[[nodiscard]] GdiObjects countGdiObjects();

}  // namespace QkDlgTools

#pragma once

#include <memory>
#include <optional>

#include "QkDlg/QkDlg.h"

namespace Gallery {

/// The functions of the DLL that lies beside the program.
struct FlatLibrary {
    decltype(&::CreateQkCustomControl) createControl;
    decltype(&::DeleteQkCustomControl) deleteControl;
    decltype(&::FlatStyleEnabled) flatStyleEnabled;
    decltype(&::GetUIColor) uiColor;
};

/// Empty when the DLL or one of its functions is missing. The DLL stays loaded until the process
/// ends, since its code answers the messages of the flat windows.
[[nodiscard]] std::optional<FlatLibrary> loadFlatLibrary();

/// The object behind one flat control; to be deleted after its window is gone.
using FlatObject = std::unique_ptr<QkControlObject, decltype(&::DeleteQkCustomControl)>;

}  // namespace Gallery

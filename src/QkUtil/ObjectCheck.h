#pragma once

#include <cstddef>

namespace QkDlg {

/// Whether `size` bytes at `object` can be read and written now. Stands in a source of its own, so
/// that no compiler concludes from a call that the pointer is good.
[[nodiscard]] bool isReadableAndWritable(const void* object, std::size_t size);

}  // namespace QkDlg

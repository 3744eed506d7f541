#pragma once

#include "common/Picture.h"
#include "pictures/ControlType.h"

namespace QkPictures {

/// The sheet of a control type: all its specimens in all their states, with their names. Null when
/// a picture cannot be had.
[[nodiscard]] QkDlgTools::UniquePicture drawStateSheet(const ControlType& type);

}  // namespace QkPictures

#pragma once

#include "Platform/Toolkit/Geometry.h"

namespace zornic {

/** Where a row, or what heads rows, shows its picture. Points. */
inline Rect ZRNRowArtworkFrame() { return {12, 4, 36, 36}; }
/** Between that and the texts. */
inline constexpr double ZRNGapAfterRowArtwork = 9;

}  // namespace zornic

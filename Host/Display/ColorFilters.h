#pragma once

#include <vector>

#include "Host/Display/CairoHandles.h"
#include "Platform/Toolkit/Canvas.h"

namespace helmo {

/** Applies the filters in order to every pixel of `surface`. Between two filters a component may leave 0 to
   1, and is brought back only after the last: a picture darkened far below black keeps its drawing when
   contrast follows. */
void applyFilters(const Surface& surface, const std::vector<zornic::ColorFilter>& filters);

}  // namespace helmo

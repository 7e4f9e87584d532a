#include "Tools/DemoLibrary/StereoBuffer.h"

#include <cmath>
#include <numbers>

namespace helmo::demo {

Pan::Pan(double position)
    : left(static_cast<float>(std::cos((position + 1) * std::numbers::pi / 4))),
      right(static_cast<float>(std::sin((position + 1) * std::numbers::pi / 4))) {}

}  // namespace helmo::demo

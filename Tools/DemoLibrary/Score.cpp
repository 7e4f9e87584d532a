#include "Tools/DemoLibrary/Score.h"

#include <cmath>

namespace helmo::demo {

double frequencyOf(int pitch) { return 440 * std::exp2((pitch - 69) / 12.0); }

}  // namespace helmo::demo

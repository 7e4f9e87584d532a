#pragma once

#include <string>

#include "Host/Display/CairoHandles.h"
#include "Platform/Toolkit/Geometry.h"

namespace helmo {

/** Decodes a picture's bytes, upright and no larger than needed to fill `fitting` pixels in both directions
   (a direction of zero or less asks for nothing; none of both: the full size). Empty when the bytes are no
   picture, or one beyond `CairoImageSource`'s limits. Any thread. */
Surface decodedPicture(const std::string& data, zornic::Size fitting);

}  // namespace helmo

#pragma once

#include <cstdint>

#include "Host/Display/CairoHandles.h"
#include "Platform/Toolkit/Image.h"

namespace helmo {

/** An image that the Cairo canvas can draw. Immutable; any thread. */
class CairoImageSource : public zornic::ImageSource {
public:
    /** A picture or drawing may have this many pixels a side, and together. */
    static constexpr int maxSide = 16384;
    static constexpr double maxPixels = 64e6;
    static bool isWithinLimits(double width, double height) {
        return width > 0 && height > 0 && width <= maxSide && height <= maxSide &&
               width * height <= maxPixels;
    }

    CairoImageSource();
    /** Never used again for another source, as an address would be: what is rendered is kept under it. */
    std::uint64_t identity() const { return _identity; }
    /** The whole image at that many pixels; empty where there is no memory for it. */
    virtual Surface rendered(int width, int height) const = 0;
    /** The pixels that it holds, where they are that many; else empty. */
    virtual Surface held(int /*width*/, int /*height*/) const { return {}; }

private:
    const std::uint64_t _identity;
};

}  // namespace helmo

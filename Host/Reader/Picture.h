#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace helmo {

/** Largest picture, in bytes, that is taken as it lies in a file. */
inline constexpr std::size_t maximumPictureBytes = 16 << 20;

/** Decoded pixels, row by row without gaps: alpha, red, green, blue from the highest byte down,
   premultiplied. Empty: none. */
struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;

    bool empty() const { return pixels.empty(); }
};

/** What came of reading a picture. */
struct PictureReading {
    Picture picture;
    /** Why there is none, in plain words; empty when there is one. */
    std::string problem;
};

/** Pixels that a picture has to fill in both directions and need not exceed; 0 asks for nothing in that
   direction, 0 in both for the full size. */
struct PixelSize {
    int width = 0, height = 0;
};

/** A picture, or a claim of one, with more pixels a side or together is not decoded. */
inline constexpr int maximumPictureSide = 16384;
inline constexpr std::int64_t maximumPicturePixels = 64'000'000;
/** Most pixels that are handed on, after fitting. */
inline constexpr std::int64_t maximumFittedPixels = 16 << 20;

}  // namespace helmo

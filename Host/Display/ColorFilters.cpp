#include "Host/Display/ColorFilters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace helmo {

namespace {

/** Red, green and blue each as a weighted sum of the three and of 1: all filters are of that form, and so is
   any sequence of them. */
using ColorMatrix = std::array<std::array<float, 4>, 3>;

ColorMatrix matrixOf(const zornic::ColorFilter& filter) {
    const auto amount = static_cast<float>(filter.inputAmount);
    ColorMatrix matrix{};
    switch (filter.type) {
        case zornic::ColorFilterType::Saturate: {
            constexpr std::array<float, 3> luminance{0.2126F, 0.7152F, 0.0722F};
            for (std::size_t row = 0; row < 3; ++row)
                for (std::size_t column = 0; column < 3; ++column)
                    matrix[row][column] = luminance[column] * (1 - amount) + (row == column ? amount : 0);
            break;
        }
        case zornic::ColorFilterType::Brightness:
            for (std::size_t row = 0; row < 3; ++row) {
                matrix[row][row] = 1;
                matrix[row][3] = amount;
            }
            break;
        case zornic::ColorFilterType::Contrast:
            for (std::size_t row = 0; row < 3; ++row) {
                matrix[row][row] = amount;
                matrix[row][3] = 0.5F - 0.5F * amount;
            }
            break;
    }
    return matrix;
}

ColorMatrix followedBy(const ColorMatrix& first, const ColorMatrix& second) {
    ColorMatrix both{};
    for (std::size_t row = 0; row < 3; ++row) {
        both[row][3] = second[row][3];
        for (std::size_t inner = 0; inner < 3; ++inner)
            for (std::size_t column = 0; column < 4; ++column)
                both[row][column] += second[row][inner] * first[inner][column];
    }
    return both;
}

/** On premultiplied components, where the constant part weighs as much as the pixel covers. */
std::uint32_t filtered(std::uint32_t pixel, const ColorMatrix& matrix) {
    const auto part = [pixel](int shift) { return static_cast<float>(pixel >> shift & 255U); };
    const float alpha = part(24), red = part(16), green = part(8), blue = part(0);
    std::uint32_t result = pixel & 0xFF000000U;
    int shift = 16;
    for (const auto& row : matrix) {
        const float value = row[0] * red + row[1] * green + row[2] * blue + row[3] * alpha;
        result |= static_cast<std::uint32_t>(std::clamp(value, 0.0F, alpha) + 0.5F) << shift;
        shift -= 8;
    }
    return result;
}

}  // namespace

void applyFilters(const Surface& surface, const std::vector<zornic::ColorFilter>& filters) {
    if (!surface || filters.empty()) return;
    auto matrix = matrixOf(filters.front());
    for (std::size_t i = 1; i < filters.size(); ++i) matrix = followedBy(matrix, matrixOf(filters[i]));

    unsigned char* row = surface.pixels();
    for (int y = 0; y < surface.height(); ++y, row += surface.stride())
        for (int x = 0; x < surface.width(); ++x) {
            std::uint32_t pixel;
            std::memcpy(&pixel, row + x * 4, 4);
            if (pixel >> 24 == 0) continue;
            pixel = filtered(pixel, matrix);
            std::memcpy(row + x * 4, &pixel, 4);
        }
    cairo_surface_mark_dirty(surface.get());
}

}  // namespace helmo

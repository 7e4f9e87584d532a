#pragma once

#include <cstddef>
#include <cstdint>

namespace helmo::demo {

/** A small generator whose sequence depends on the seed alone, unlike the distributions of the standard
 * library. */
class Random {
public:
    explicit Random(std::uint64_t seed) : _state(seed) {}

    std::uint64_t next() {
        _state += 0x9e3779b97f4a7c15U;
        std::uint64_t z = _state;
        z = (z ^ (z >> 30U)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27U)) * 0x94d049bb133111ebU;
        return z ^ (z >> 31U);
    }
    /** In [0, 1). */
    double unit() { return static_cast<double>(next() >> 11U) * 0x1p-53; }
    double between(double low, double high) { return low + (high - low) * unit(); }
    /** In [0, count); count is at least 1. */
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }
    /** White noise in [-1, 1). */
    float noise() { return static_cast<float>(unit() * 2 - 1); }

private:
    std::uint64_t _state;
};

}  // namespace helmo::demo

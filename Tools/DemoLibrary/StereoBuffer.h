#pragma once

#include <cstddef>
#include <vector>

namespace helmo::demo {

/** Frames a second of everything that is rendered and written. */
inline constexpr int sampleRate = 44100;

/** Two channels of equal length, nominally within [-1, 1]. */
struct StereoBuffer {
    explicit StereoBuffer(std::size_t frames) : left(frames), right(frames) {}

    std::size_t frames() const { return left.size(); }

    std::vector<float> left;
    std::vector<float> right;
};

/** How much of a sound goes to each side, at constant power; position -1 is left, 1 is right. */
struct Pan {
    explicit Pan(double position);

    float left;
    float right;
};

}  // namespace helmo::demo

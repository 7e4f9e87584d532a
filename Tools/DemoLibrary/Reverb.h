#pragma once

#include <array>
#include <vector>

#include "Tools/DemoLibrary/StereoBuffer.h"

namespace helmo::demo {

/** A hall: four delays that feed each other and lose treble on every round. */
class Reverb {
public:
    Reverb();

    /** Adds the hall's answer to `dry` in place; `share` is 0 for none and 1 for as loud as the players. */
    void apply(StereoBuffer& dry, double share);

private:
    struct Delay {
        std::vector<float> line;
        std::size_t position = 0;
        float damped = 0;
    };

    std::array<Delay, 4> _delays;
};

}  // namespace helmo::demo

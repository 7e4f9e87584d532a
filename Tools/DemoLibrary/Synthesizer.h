#pragma once

#include <cstdint>
#include <vector>

#include "Tools/DemoLibrary/Score.h"

namespace helmo::demo {

/** Plays a score and masters it: hall, fades at both ends, one loudness for all tracks, no clipping. */
class Synthesizer {
public:
    /** Interleaved left and right, 16 bits, `sampleRate` frames a second. */
    static std::vector<std::int16_t> render(const Score& score);
};

}  // namespace helmo::demo

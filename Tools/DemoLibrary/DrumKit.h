#pragma once

#include "Tools/DemoLibrary/Score.h"
#include "Tools/DemoLibrary/StereoBuffer.h"

namespace helmo::demo {

/** Percussion: a falling tone, a burst of filtered noise, or both. */
class DrumKit {
public:
    /** Adds the beat to `out`; what would sound past its end is dropped. */
    static void play(const Note& note, StereoBuffer& out);
};

}  // namespace helmo::demo

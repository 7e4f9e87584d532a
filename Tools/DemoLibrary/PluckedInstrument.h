#pragma once

#include "Tools/DemoLibrary/Score.h"
#include "Tools/DemoLibrary/StereoBuffer.h"

namespace helmo::demo {

/** Guitar, oud and harp: a burst of noise runs round a string that swallows its treble. */
class PluckedInstrument {
public:
    /** Adds the note to `out`; what would sound past its end is dropped. */
    static void play(const Note& note, StereoBuffer& out);
};

}  // namespace helmo::demo

#pragma once

#include "Tools/DemoLibrary/Score.h"
#include "Tools/DemoLibrary/StereoBuffer.h"

namespace helmo::demo {

/** Pad, strings, flute, bass and sequencer: two detuned waves, one a side, under an envelope and a filter. */
class SustainedInstrument {
public:
    /** Adds the note to `out`; what would sound past its end is dropped. */
    static void play(const Note& note, StereoBuffer& out);
};

}  // namespace helmo::demo

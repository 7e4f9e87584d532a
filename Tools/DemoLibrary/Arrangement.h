#pragma once

#include <string_view>
#include <vector>

#include "Tools/DemoLibrary/Catalogue.h"
#include "Tools/DemoLibrary/Score.h"

namespace helmo::demo {

/**
 * One player's bar, a character a sixteenth note. Harmony players: `C` the chord, `1`-`5` one of its tones
 * from below, `R` root, `T` third, `F` fifth, `O` root an octave up, `A` the step that leads to the next
 * chord; `-` holds what sounds. Drummers: `x` a beat, `o` a soft one. `.` is silence.
 */
struct Part {
    Voice voice;
    std::string_view steps;
    float level;
    int centre = 60;   // pitch around which it plays
    float pan = 0;     // -1 left to 1 right
    int entersAt = 0;  // bars of introduction it waits for
};

/** A band and how it plays; what it plays comes from the harmony and the melody. */
struct Arrangement {
    int slowest;  // quarter notes a minute
    int fastest;
    double swing;   // delay of every second eighth, in quarter notes
    int chordSize;  // tones in a chord
    double reverb;
    std::vector<Part> parts;
    Part melody;           // its steps are not used
    double melodyDensity;  // share of eighths on which a melody note starts, 0 to 1
};

const Arrangement& arrangementOf(Style style);

}  // namespace helmo::demo

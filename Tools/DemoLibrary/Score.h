#pragma once

#include <vector>

namespace helmo::demo {

enum class Voice {
    // struck, ringing by themselves
    Piano,
    ElectricPiano,
    Bell,
    Marimba,
    // plucked strings
    Guitar,
    Oud,
    Harp,
    // sounding for as long as they are held
    Pad,
    Strings,
    Flute,
    Bass,
    Sequence,
    // percussion, whose pitch is ignored
    Kick,
    Snare,
    Hat,
    Shaker,
    Brush,
    FrameDrum,
};

struct Note {
    double start;   // seconds
    double length;  // seconds the key is held
    int pitch;      // semitones, 69 is 440 Hz
    float velocity;
    float pan;  // -1 left to 1 right
    Voice voice;
};

/** A piece, ready to be played. */
struct Score {
    std::vector<Note> notes;
    double seconds = 0;
    double reverb = 0;  // share of the hall in the mix, 0 to 1
};

/** Frequency of a pitch in Hz, in equal temperament. */
double frequencyOf(int pitch);

}  // namespace helmo::demo

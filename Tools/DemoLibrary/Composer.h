#pragma once

#include <cstdint>

#include "Tools/DemoLibrary/Arrangement.h"
#include "Tools/DemoLibrary/Harmony.h"
#include "Tools/DemoLibrary/Melody.h"
#include "Tools/DemoLibrary/Random.h"
#include "Tools/DemoLibrary/Score.h"

namespace helmo::demo {

/** Writes one piece: whole bars, then a last chord that rings out. Equal arguments give equal scores. */
class Composer {
public:
    Composer(Style style, Mood mood, std::uint64_t seed);

    Score compose(double seconds);

private:
    void playPart(const Part& part, int bar);
    void playMelody(int bar);
    void playEnding(int bar);
    void addStep(const Part& part, int bar, int step);
    void add(const Part& part, int pitch, double start, double length, float velocity);
    std::vector<int> pitchesOf(const Part& part, char symbol, int chord, int nextChord) const;
    /** The progression's, but the last bar always leads home, and home is what follows. */
    int chordOfBar(int bar) const;
    /** Seconds from the beginning to a step of a bar, swing included. */
    double timeOf(int bar, int step) const;

    const Arrangement& _arrangement;
    Random _random;
    Harmony _harmony;
    int _stepsPerBar;
    double _stepSeconds;
    Melody _melody;
    int _bars = 0;
    Score _score;
};

}  // namespace helmo::demo

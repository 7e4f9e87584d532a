#pragma once

#include <cstddef>
#include <vector>

#include "Tools/DemoLibrary/Random.h"

namespace helmo::demo {

/** One note of a tune; the degree is relative to the tonic and fits the chord once it is played over one. */
struct MelodyNote {
    int eighth;   // where it starts in its bar
    int eighths;  // how long it is held
    int degree;
};

using MelodyBar = std::vector<MelodyNote>;

/** A tune of eight bars in the form A A' B A', from two motifs of two bars. */
class Melody {
public:
    /** `density` is the share of eighths on which a note starts. */
    Melody(int eighthsPerBar, double density, Random& random);

    /** Bars repeat every eight. */
    const MelodyBar& bar(int index) const { return _bars[static_cast<std::size_t>(index) % _bars.size()]; }

private:
    std::vector<MelodyBar> _bars;
};

}  // namespace helmo::demo

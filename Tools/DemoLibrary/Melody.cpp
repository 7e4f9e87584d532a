#include "Tools/DemoLibrary/Melody.h"

#include <algorithm>
#include <cstddef>

namespace helmo::demo {

namespace {

/** Where notes start: likelier on the beat, never two bars in a row without one. */
MelodyBar rhythm(int eighthsPerBar, double density, Random& random) {
    MelodyBar bar;
    for (int eighth = 0; eighth < eighthsPerBar; ++eighth) {
        const double chance = density * (eighth == 0 ? 1.6 : eighth % 2 == 0 ? 1.2 : 0.7);
        if (random.unit() < chance) bar.push_back({eighth, 1, 0});
    }
    if (bar.empty()) bar.push_back({0, eighthsPerBar, 0});
    for (std::size_t i = 0; i < bar.size(); ++i) {
        const int end = i + 1 < bar.size() ? bar[i + 1].eighth : eighthsPerBar;
        bar[i].eighths = end - bar[i].eighth;
    }
    return bar;
}

/** Mostly steps, a few thirds, and a pull back to the middle of the voice. */
void giveContour(MelodyBar& bar, int& degree, Random& random) {
    static constexpr int moves[] = {-2, -1, -1, 0, 1, 1, 2, 2};
    for (MelodyNote& note : bar) {
        degree += moves[random.below(std::size(moves))];
        if (degree > 6) degree -= 2;
        if (degree < -3) degree += 3;
        note.degree = degree;
    }
}

}  // namespace

Melody::Melody(int eighthsPerBar, double density, Random& random) {
    int degree = 2;
    const auto makeBar = [&] {
        MelodyBar bar = rhythm(eighthsPerBar, density, random);
        giveContour(bar, degree, random);
        return bar;
    };
    const MelodyBar call = makeBar();
    const MelodyBar answer = makeBar();
    MelodyBar close = answer;
    close.back().degree = 0;
    degree = 4;
    const MelodyBar lift = makeBar();
    const MelodyBar fall = makeBar();
    _bars = {call, answer, call, close, lift, fall, call, close};
}

}  // namespace helmo::demo

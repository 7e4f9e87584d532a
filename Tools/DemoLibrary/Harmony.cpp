#include "Tools/DemoLibrary/Harmony.h"

#include <algorithm>
#include <cstdlib>

namespace helmo::demo {

namespace {

struct MoodTheory {
    std::array<int, 7> scale;
    std::array<std::array<int, 4>, 4> progressions;
};

const MoodTheory& theoryOf(Mood mood) {
    static constexpr std::array<int, 7> major{0, 2, 4, 5, 7, 9, 11};
    static constexpr std::array<int, 7> minor{0, 2, 3, 5, 7, 8, 10};
    static constexpr std::array<int, 7> dorian{0, 2, 3, 5, 7, 9, 10};
    static constexpr std::array<int, 7> hijaz{0, 1, 4, 5, 7, 8, 10};
    static const MoodTheory bright{major, {{{0, 4, 5, 3}, {0, 3, 5, 4}, {0, 5, 3, 4}, {0, 3, 1, 4}}}};
    static const MoodTheory warm{major, {{{0, 5, 1, 4}, {3, 4, 2, 5}, {0, 2, 3, 4}, {3, 0, 1, 4}}}};
    static const MoodTheory wistful{minor, {{{0, 5, 2, 6}, {0, 3, 5, 6}, {0, 6, 5, 6}, {5, 6, 0, 2}}}};
    static const MoodTheory nocturnal{dorian, {{{0, 3, 0, 3}, {0, 2, 3, 0}, {0, 6, 3, 0}, {0, 3, 6, 2}}}};
    static const MoodTheory spiced{hijaz, {{{0, 1, 0, 1}, {0, 6, 1, 0}, {0, 3, 1, 0}, {0, 5, 1, 0}}}};
    switch (mood) {
        case Mood::Bright:
            return bright;
        case Mood::Warm:
            return warm;
        case Mood::Wistful:
            return wistful;
        case Mood::Nocturnal:
            return nocturnal;
        case Mood::Spiced:
            return spiced;
    }
    return bright;
}

int floorDivide(int value, int divisor) {
    return value >= 0 ? value / divisor : -((divisor - 1 - value) / divisor);
}

}  // namespace

Harmony::Harmony(Mood mood, Random& random)
    : _scale(theoryOf(mood).scale),
      _chords(theoryOf(mood).progressions[random.below(4)]),
      _tonic(static_cast<int>(random.below(12))) {}

int Harmony::chordOfBar(int bar) const { return _chords[static_cast<std::size_t>(bar) % _chords.size()]; }

int Harmony::pitchOfDegree(int degree, int centre) const {
    const int octave = floorDivide(degree, 7);
    const int lowest = centre - 6;
    const int tonic = lowest + ((_tonic - lowest) % 12 + 12) % 12;
    return tonic + 12 * octave + _scale[static_cast<std::size_t>(degree - 7 * octave)];
}

std::vector<int> Harmony::voicing(int chord, int size, int centre) const {
    std::vector<int> pitches;
    for (int tone = 0; tone < size; ++tone) {
        int pitch = pitchOfDegree(chord + 2 * tone, centre);
        while (pitch >= centre + 8) pitch -= 12;
        while (pitch < centre - 4) pitch += 12;
        pitches.push_back(pitch);
    }
    std::ranges::sort(pitches);
    return pitches;
}

int Harmony::nearestChordDegree(int degree, int chord) {
    for (const int step : {0, -1, 1, -2, 2}) {
        const int above = ((degree + step - chord) % 7 + 7) % 7;
        if (above == 0 || above == 2 || above == 4) return degree + step;
    }
    return degree;
}

}  // namespace helmo::demo

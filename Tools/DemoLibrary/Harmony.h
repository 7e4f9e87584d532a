#pragma once

#include <array>
#include <vector>

#include "Tools/DemoLibrary/Catalogue.h"
#include "Tools/DemoLibrary/Random.h"

namespace helmo::demo {

/**
 * The key of a piece and its chords, one a bar. Notes are scale degrees: 0 is the tonic, 7 the tonic an
 * octave up, and a chord is every second degree from its root.
 */
class Harmony {
public:
    /** Draws a key and a progression of four bars that suit the mood. */
    Harmony(Mood mood, Random& random);

    /** Root of the chord in a bar, as a degree from 0 to 6; progressions repeat every four bars. */
    int chordOfBar(int bar) const;
    /** Pitch of a degree, negative ones included, in the octave from the tonic near `centre`. */
    int pitchOfDegree(int degree, int centre) const;
    /** `size` tones of a chord, rising, each in the octave around `centre`, so that chords follow smoothly.
     */
    std::vector<int> voicing(int chord, int size, int centre) const;
    /** The degree of the chord's triad that is nearest to `degree`. */
    static int nearestChordDegree(int degree, int chord);

private:
    std::array<int, 7> _scale;
    std::array<int, 4> _chords;
    int _tonic;  // 0 to 11, 0 is C
};

}  // namespace helmo::demo

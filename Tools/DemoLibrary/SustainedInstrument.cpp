#include "Tools/DemoLibrary/SustainedInstrument.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Tools/DemoLibrary/Random.h"
#include "Tools/DemoLibrary/Wavetable.h"

namespace helmo::demo {

namespace {

struct Timbre {
    Wavetable wave;
    double attack;   // seconds
    double decay;    // seconds from the peak to the held level
    float held;      // share of the peak
    double release;  // seconds
    double detune;   // between the sides, as a share of the frequency
    double vibrato;  // depth, as a share of the frequency
    double cutoff;   // Hz, where the filter rests
    double sweep;    // Hz that the filter opens further at the peak
    float level;
};

double saw(int harmonic) { return 1.0 / harmonic; }
double softSaw(int harmonic) { return 1.0 / std::pow(harmonic, 1.5); }
double hollow(int harmonic) {
    return harmonic % 2 == 1 ? 1.0 / (harmonic * harmonic) : 0.12 / harmonic / harmonic;
}
double pulse(int harmonic) { return std::sin(std::numbers::pi * harmonic * 0.3) / harmonic; }

const Timbre& timbreOf(Voice voice) {
    static const Timbre pad{Wavetable(softSaw), 0.5, 0.8, 0.8F, 0.9, 0.005, 0.0015, 900, 900, 0.55F};
    static const Timbre strings{Wavetable(saw), 0.28, 0.4, 0.85F, 0.45, 0.003, 0.004, 1800, 600, 0.5F};
    static const Timbre flute{Wavetable(hollow), 0.06, 0.15, 0.8F, 0.14, 0.0008, 0.005, 3500, 800, 0.7F};
    static const Timbre bass{Wavetable(softSaw), 0.008, 0.5, 0.55F, 0.09, 0.0004, 0, 320, 700, 0.6F};
    static const Timbre sequence{Wavetable(pulse), 0.004, 0.22, 0.18F, 0.16, 0.004, 0, 700, 3200, 1.0F};
    switch (voice) {
        case Voice::Strings:
            return strings;
        case Voice::Flute:
            return flute;
        case Voice::Bass:
            return bass;
        case Voice::Sequence:
            return sequence;
        default:
            return pad;
    }
}

/** Loudness of a held note over time: rise, fall to a held level, and release. */
class Envelope {
public:
    Envelope(const Timbre& timbre, double held)
        : _attack(static_cast<float>(timbre.attack)),
          _release(static_cast<float>(timbre.release)),
          _held(timbre.held),
          _length(static_cast<float>(held)),
          _fall(std::exp(-4 / static_cast<float>(timbre.decay * sampleRate))) {}

    /** Level at `seconds` after the start; to be asked frame by frame. */
    float next(float seconds) {
        if (seconds >= _length) return _level * std::max(0.0F, 1 - (seconds - _length) / _release);
        if (seconds < _attack) return _level = seconds / _attack;
        return _level = _held + (_level - _held) * _fall;
    }

private:
    float _attack;
    float _release;
    float _held;
    float _length;
    float _fall;
    float _level = 0;
};

}  // namespace

void SustainedInstrument::play(const Note& note, StereoBuffer& out) {
    const Timbre& timbre = timbreOf(note.voice);
    const double frequency = frequencyOf(note.pitch);
    const auto start = static_cast<std::size_t>(note.start * sampleRate);
    const auto sounding = static_cast<std::size_t>((note.length + timbre.release) * sampleRate);
    const auto end = std::min(out.frames(), start + sounding);

    Random random(static_cast<std::uint64_t>(note.pitch) * 977U + start);
    const float* period = timbre.wave.period(frequency);
    Oscillator left(period, frequency * (1 - timbre.detune / 2), random.unit() * 0.999);
    Oscillator right(period, frequency * (1 + timbre.detune / 2), random.unit() * 0.999);
    Envelope envelope(timbre, note.length);
    const Pan pan(note.pan);
    constexpr float frameSeconds = 1.0F / sampleRate;
    constexpr std::size_t controlFrames = 32;  // how often the slow movements are worked out
    float filteredLeft = 0;
    float filteredRight = 0;
    float bend = 1;
    float opening = 0;
    for (std::size_t frame = start; frame < end; ++frame) {
        const float seconds = static_cast<float>(frame - start) * frameSeconds;
        const float level = envelope.next(seconds);
        if ((frame - start) % controlFrames == 0) {
            const double depth = timbre.vibrato * std::min(1.0F, seconds / 0.6F);
            bend = static_cast<float>(1 + depth * std::sin(2 * std::numbers::pi * 5.2 * seconds));
            const double cutoff = timbre.cutoff + timbre.sweep * level + frequency;
            opening = static_cast<float>(1 - std::exp(-2 * std::numbers::pi * cutoff / sampleRate));
        }
        filteredLeft += opening * (left.next(bend) - filteredLeft);
        filteredRight += opening * (right.next(bend) - filteredRight);
        const float gain = level * timbre.level * note.velocity;
        out.left[frame] += filteredLeft * gain * pan.left;
        out.right[frame] += filteredRight * gain * pan.right;
    }
}

}  // namespace helmo::demo

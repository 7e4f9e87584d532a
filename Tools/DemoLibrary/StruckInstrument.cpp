#include "Tools/DemoLibrary/StruckInstrument.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace helmo::demo {

namespace {

constexpr std::size_t partialCount = 8;

struct Partial {
    double ratio;    // to the fundamental
    double level;    // at the stroke
    double seconds;  // until it has died away, at middle C
};

struct Timbre {
    std::array<Partial, partialCount> partials;
    double damping;  // seconds that a released note takes to end
};

const Timbre& timbreOf(Voice voice) {
    static const Timbre piano{{{{1, 1, 4.5},
                                {2.001, 0.55, 3.6},
                                {3.004, 0.32, 2.8},
                                {4.009, 0.2, 2.2},
                                {5.016, 0.12, 1.6},
                                {6.025, 0.08, 1.2},
                                {7.036, 0.05, 0.9},
                                {9.06, 0.03, 0.5}}},
                              0.25};
    static const Timbre electricPiano{{{{1, 1, 4},
                                        {1.003, 0.3, 3.5},
                                        {2, 0.28, 2.2},
                                        {3, 0.12, 1.2},
                                        {4, 0.05, 0.8},
                                        {7.1, 0.07, 0.25},
                                        {14.2, 0.04, 0.15},
                                        {0.5, 0.05, 2}}},
                                      0.2};
    static const Timbre bell{{{{1, 1, 5},
                               {2.0, 0.4, 4},
                               {2.76, 0.3, 2.4},
                               {4.07, 0.14, 1.6},
                               {5.4, 0.12, 1.2},
                               {6.8, 0.05, 0.7},
                               {8.93, 0.05, 0.4},
                               {1.002, 0.4, 5}}},
                             1.5};
    static const Timbre marimba{{{{1, 1, 1.5},
                                  {3.98, 0.28, 0.4},
                                  {9.9, 0.1, 0.15},
                                  {1.002, 0.2, 1.2},
                                  {2, 0.06, 0.5},
                                  {6.2, 0.04, 0.2},
                                  {0.5, 0.03, 0.8},
                                  {13, 0.02, 0.08}}},
                                0.6};
    switch (voice) {
        case Voice::ElectricPiano:
            return electricPiano;
        case Voice::Bell:
            return bell;
        case Voice::Marimba:
            return marimba;
        default:
            return piano;
    }
}

/** Eight damped oscillators side by side, each y[n] = a y[n-1] + b y[n-2]. */
class Resonators {
public:
    Resonators(const Timbre& timbre, double fundamental, double brightness) : _fundamental(fundamental) {
        const double pace = std::sqrt(261.6 / fundamental);
        for (std::size_t i = 0; i < partialCount; ++i) {
            const Partial& partial = timbre.partials[i];
            _ratios[i] = partial.ratio;
            _seconds[i] = partial.seconds * pace;
            const double frequency = fundamental * partial.ratio;
            if (frequency > 0.4 * sampleRate) continue;
            const double level = partial.level * std::pow(brightness, partial.ratio - 1);
            _before[i] = 0;
            _last[i] = static_cast<float>(level * std::sin(angle(i)));
        }
        setLongest(1e9);
    }

    /** Lets no partial ring for longer than this many seconds from now. */
    void setLongest(double seconds) {
        for (std::size_t i = 0; i < partialCount; ++i) {
            const double radius = std::pow(0.001, 1 / (std::min(_seconds[i], seconds) * sampleRate));
            _a[i] = static_cast<float>(2 * radius * std::cos(angle(i)));
            _b[i] = static_cast<float>(-radius * radius);
        }
    }

    float next() {
        std::array<float, partialCount> now;
        for (std::size_t i = 0; i < partialCount; ++i) now[i] = _a[i] * _last[i] + _b[i] * _before[i];
        _before = _last;
        _last = now;
        return ((now[0] + now[1]) + (now[2] + now[3])) + ((now[4] + now[5]) + (now[6] + now[7]));
    }

private:
    double angle(std::size_t i) const {
        return 2 * std::numbers::pi * _fundamental * _ratios[i] / sampleRate;
    }

    double _fundamental;
    std::array<double, partialCount> _ratios{};
    std::array<double, partialCount> _seconds{};
    std::array<float, partialCount> _a{};
    std::array<float, partialCount> _b{};
    std::array<float, partialCount> _last{};
    std::array<float, partialCount> _before{};
};

}  // namespace

void StruckInstrument::play(const Note& note, StereoBuffer& out) {
    const Timbre& timbre = timbreOf(note.voice);
    const double fundamental = frequencyOf(note.pitch);
    const double ring = timbre.partials[0].seconds * std::sqrt(261.6 / fundamental);
    const auto start = static_cast<std::size_t>(note.start * sampleRate);
    const double held = std::min(note.length, ring);
    const auto release = start + static_cast<std::size_t>(held * sampleRate);
    const auto end = std::min(out.frames(), release + static_cast<std::size_t>(timbre.damping * sampleRate));
    constexpr std::size_t attack = 60;  // frames; takes the click off the stroke

    Resonators resonators(timbre, fundamental, 0.95);
    const Pan pan(note.pan);
    for (std::size_t frame = start; frame < end; ++frame) {
        if (frame == release) resonators.setLongest(timbre.damping);
        float value = resonators.next() * note.velocity * 0.6F;
        if (frame - start < attack) value *= static_cast<float>(frame - start) / attack;
        out.left[frame] += value * pan.left;
        out.right[frame] += value * pan.right;
    }
}

}  // namespace helmo::demo

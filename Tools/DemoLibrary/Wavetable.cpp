#include "Tools/DemoLibrary/Wavetable.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Tools/DemoLibrary/StereoBuffer.h"

namespace helmo::demo {

Wavetable::Wavetable(const std::function<double(int)>& level) {
    constexpr int mostHarmonics = 64;
    std::vector<double> sine(size);
    for (std::size_t i = 0; i < size; ++i) {
        sine[i] = std::sin(2 * std::numbers::pi * static_cast<double>(i) / size);
    }
    for (int octave = 0; octave < octaves; ++octave) {
        const double highest = lowest * std::exp2(octave + 1);
        const int harmonics = std::clamp(static_cast<int>(0.45 * sampleRate / highest), 1, mostHarmonics);
        std::vector<float>& period = _periods[static_cast<std::size_t>(octave)];
        period.resize(size + 1);
        for (int harmonic = 1; harmonic <= harmonics; ++harmonic) {
            const double strength = level(harmonic);
            for (std::size_t i = 0; i < size; ++i) {
                period[i] +=
                    static_cast<float>(strength * sine[i * static_cast<std::size_t>(harmonic) % size]);
            }
        }
        period[size] = period[0];
    }
}

const float* Wavetable::period(double frequency) const {
    const int octave = std::clamp(static_cast<int>(std::log2(frequency / lowest)), 0, octaves - 1);
    return _periods[static_cast<std::size_t>(octave)].data();
}

Oscillator::Oscillator(const float* period, double frequency, double phase)
    : _period(period),
      _position(static_cast<float>(phase * Wavetable::size)),
      _step(static_cast<float>(frequency * Wavetable::size / sampleRate)) {}

}  // namespace helmo::demo

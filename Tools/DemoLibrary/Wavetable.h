#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

namespace helmo::demo {

/** One period of a wave for every octave, each with only the harmonics that fit below half the sample rate.
 */
class Wavetable {
public:
    static constexpr std::size_t size = 2048;

    /** `level` tells the strength of a harmonic, 1 being the fundamental. */
    explicit Wavetable(const std::function<double(int)>& level);

    /** The period for a frequency in Hz: `size` values and the first one again, to interpolate without a
     * test. */
    const float* period(double frequency) const;

private:
    static constexpr int octaves = 9;
    static constexpr double lowest = 32;  // Hz, upper end of the first octave's table is twice this

    std::array<std::vector<float>, octaves> _periods;
};

/** A running position in a wavetable's period. */
class Oscillator {
public:
    Oscillator(const float* period, double frequency, double phase);

    /** `bend` multiplies the frequency. */
    float next(float bend) {
        const auto index = static_cast<std::size_t>(_position);
        const float fraction = _position - static_cast<float>(index);
        const float value = _period[index] + fraction * (_period[index + 1] - _period[index]);
        _position += _step * bend;
        if (_position >= static_cast<float>(Wavetable::size))
            _position -= static_cast<float>(Wavetable::size);
        return value;
    }

private:
    const float* _period;
    float _position;
    float _step;
};

}  // namespace helmo::demo

#include "Tools/DemoLibrary/PluckedInstrument.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Tools/DemoLibrary/Random.h"

namespace helmo::demo {

namespace {

struct StringTimbre {
    float softness;  // of the finger, 0 a plectrum to 1 a thumb
    double seconds;  // until the string is still, at middle C
    double pluckAt;  // share of the string's length
    int courses;     // strings tuned together
    float level;
};

StringTimbre timbreOf(Voice voice) {
    switch (voice) {
        case Voice::Oud:
            return {0.45F, 1.8, 0.14, 2, 2.6F};
        case Voice::Harp:
            return {0.75F, 4.0, 0.4, 1, 1.7F};
        default:
            return {0.6F, 3.0, 0.22, 1, 1.7F};
    }
}

class PluckedString {
public:
    PluckedString(double frequency, const StringTimbre& timbre, std::uint64_t seed) {
        // The average of two neighbours delays by half a frame, and interpolation makes up the fraction.
        const double period = sampleRate / frequency - 0.5;
        _line.resize(static_cast<std::size_t>(period));
        _fraction = static_cast<float>(period - std::floor(period));
        const double pace = std::sqrt(261.6 / frequency);
        _loss = static_cast<float>(std::pow(0.001, 1 / (frequency * timbre.seconds * pace)));
        excite(timbre, seed);
    }

    float next() {
        const float current = _line[_position];
        const float interpolated = current + _fraction * (_previous - current);
        const float damped = _loss * 0.5F * (interpolated + _filtered);
        _previous = current;
        _filtered = interpolated;
        _line[_position] = damped;
        if (++_position == _line.size()) _position = 0;
        return damped;
    }

private:
    void excite(const StringTimbre& timbre, std::uint64_t seed) {
        Random random(seed);
        float smooth = 0;
        for (float& value : _line) value = smooth += (1 - timbre.softness) * (random.noise() - smooth);
        // A string has no partial with a node where it is plucked.
        const auto offset = static_cast<std::size_t>(timbre.pluckAt * static_cast<double>(_line.size()));
        const std::vector<float> burst = _line;
        float peak = 0.001F;
        for (std::size_t i = 0; i < burst.size(); ++i) {
            _line[i] = burst[i] - burst[(i + offset) % burst.size()];
            peak = std::max(peak, std::abs(_line[i]));
        }
        for (float& value : _line) value /= peak;
    }

    std::vector<float> _line;
    std::size_t _position = 0;
    float _fraction;
    float _loss;
    float _previous = 0;
    float _filtered = 0;
};

}  // namespace

void PluckedInstrument::play(const Note& note, StereoBuffer& out) {
    const StringTimbre timbre = timbreOf(note.voice);
    const double frequency = frequencyOf(note.pitch);
    const auto start = static_cast<std::size_t>(note.start * sampleRate);
    constexpr double damping = 0.5;
    const auto sounding =
        static_cast<std::size_t>((std::min(note.length, timbre.seconds) + damping) * sampleRate);
    const auto end = std::min(out.frames(), start + sounding);
    const auto release = static_cast<double>(sounding) - damping * sampleRate;

    for (int course = 0; course < timbre.courses; ++course) {
        PluckedString string(frequency * (1 + 0.0012 * course), timbre,
                             static_cast<std::uint64_t>(note.pitch * 31 + course));
        const Pan pan(std::clamp(note.pan + 0.15F * static_cast<float>(course), -1.0F, 1.0F));
        const float level = note.velocity * timbre.level / static_cast<float>(timbre.courses);
        for (std::size_t frame = start; frame < end; ++frame) {
            const double past = static_cast<double>(frame - start) - release;
            const float hand = past > 0 ? 1 - static_cast<float>(past / (damping * sampleRate)) : 1.0F;
            const float value = string.next() * level * hand;
            out.left[frame] += value * pan.left;
            out.right[frame] += value * pan.right;
        }
    }
}

}  // namespace helmo::demo

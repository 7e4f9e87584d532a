#include "Tools/DemoLibrary/Reverb.h"

#include <cmath>

namespace helmo::demo {

Reverb::Reverb() {
    // Lengths without a common factor, so that echoes do not fall together.
    static constexpr std::array<std::size_t, 4> lengths{1559, 1973, 2371, 2833};
    for (std::size_t i = 0; i < lengths.size(); ++i) _delays[i].line.resize(lengths[i]);
}

void Reverb::apply(StereoBuffer& dry, double share) {
    constexpr float feedback = 0.86F;
    constexpr float treble = 0.45F;
    const auto wet = static_cast<float>(share);
    for (std::size_t frame = 0; frame < dry.frames(); ++frame) {
        std::array<float, 4> out;
        for (std::size_t i = 0; i < out.size(); ++i) {
            Delay& delay = _delays[i];
            delay.damped += treble * (delay.line[delay.position] - delay.damped);
            out[i] = delay.damped;
        }
        const float a = out[0] + out[1];
        const float b = out[0] - out[1];
        const float c = out[2] + out[3];
        const float d = out[2] - out[3];
        const std::array<float, 4> mixed{a + c, b + d, a - c, b - d};
        for (std::size_t i = 0; i < mixed.size(); ++i) {
            Delay& delay = _delays[i];
            const float in = i % 2 == 0 ? dry.left[frame] : dry.right[frame];
            delay.line[delay.position] = in + feedback * 0.5F * mixed[i];
            if (++delay.position == delay.line.size()) delay.position = 0;
        }
        dry.left[frame] += wet * (out[0] + out[2]);
        dry.right[frame] += wet * (out[1] + out[3]);
    }
}

}  // namespace helmo::demo

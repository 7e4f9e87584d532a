#include "Tools/DemoLibrary/DrumKit.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Tools/DemoLibrary/Random.h"

namespace helmo::demo {

namespace {

struct Drum {
    float tone;          // level of the skin
    double pitch;        // Hz that the skin settles at
    double drop;         // Hz above that at the stroke
    double toneSeconds;  // until the skin is still
    float noise;         // level of the noise
    double low;          // Hz, the noise lies above this
    double high;         // Hz, and below this
    double rise;         // seconds until the noise is loudest
    double noiseSeconds;
};

Drum drumOf(Voice voice) {
    switch (voice) {
        case Voice::Kick:
            return {1.6F, 48, 130, 0.38, 0.08F, 800, 4000, 0.001, 0.02};
        case Voice::Snare:
            return {1.0F, 185, 60, 0.16, 2.4F, 900, 9000, 0.001, 0.22};
        case Voice::Hat:
            return {0, 0, 0, 0, 3.6F, 7000, 16000, 0.001, 0.09};
        case Voice::Shaker:
            return {0, 0, 0, 0, 3.0F, 4500, 12000, 0.03, 0.11};
        case Voice::Brush:
            return {0.1F, 190, 20, 0.1, 2.2F, 1500, 7000, 0.04, 0.28};
        default:
            return {1.4F, 92, 50, 0.35, 0.6F, 1200, 6000, 0.002, 0.06};
    }
}

float opening(double frequency) {
    return static_cast<float>(1 - std::exp(-2 * std::numbers::pi * frequency / sampleRate));
}

}  // namespace

void DrumKit::play(const Note& note, StereoBuffer& out) {
    const Drum drum = drumOf(note.voice);
    const auto start = static_cast<std::size_t>(note.start * sampleRate);
    const double sounding = std::max(drum.toneSeconds, drum.rise + drum.noiseSeconds);
    const auto end = std::min(out.frames(), start + static_cast<std::size_t>(sounding * sampleRate));

    Random random(start + 1);
    const Pan pan(note.pan);
    const float lowOpening = opening(drum.low);
    const float highOpening = opening(drum.high);
    float rumble = 0;
    float hiss = 0;
    double phase = 0;
    for (std::size_t frame = start; frame < end; ++frame) {
        const double seconds = static_cast<double>(frame - start) / sampleRate;
        float value = 0;
        if (seconds < drum.toneSeconds) {
            phase += (drum.pitch + drum.drop * std::exp(-seconds * 38)) / sampleRate;
            const double fade = std::exp(-seconds / drum.toneSeconds * 5) * (1 - seconds / drum.toneSeconds);
            value = drum.tone * static_cast<float>(std::sin(2 * std::numbers::pi * phase) * fade);
        }
        hiss += highOpening * (random.noise() - hiss);
        rumble += lowOpening * (hiss - rumble);
        const double past = seconds - drum.rise;
        const double fade = past < 0 ? seconds / drum.rise : std::exp(-past / drum.noiseSeconds * 5);
        value += drum.noise * (hiss - rumble) * static_cast<float>(fade);
        value *= note.velocity;
        out.left[frame] += value * pan.left;
        out.right[frame] += value * pan.right;
    }
}

}  // namespace helmo::demo

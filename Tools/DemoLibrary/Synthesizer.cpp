#include "Tools/DemoLibrary/Synthesizer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Tools/DemoLibrary/DrumKit.h"
#include "Tools/DemoLibrary/PluckedInstrument.h"
#include "Tools/DemoLibrary/Reverb.h"
#include "Tools/DemoLibrary/StruckInstrument.h"
#include "Tools/DemoLibrary/SustainedInstrument.h"

namespace helmo::demo {

namespace {

constexpr double fadeInSeconds = 0.02;
constexpr double fadeOutSeconds = 2.5;
/** Effective level of every track, -17 dB below full scale. */
constexpr double loudness = 0.141;

void play(const Note& note, StereoBuffer& out) {
    if (note.voice <= Voice::Marimba) return StruckInstrument::play(note, out);
    if (note.voice <= Voice::Harp) return PluckedInstrument::play(note, out);
    if (note.voice <= Voice::Sequence) return SustainedInstrument::play(note, out);
    return DrumKit::play(note, out);
}

/** Low sounds stay out of the hall, which would only blur them. */
bool staysDry(Voice voice) { return voice == Voice::Bass || voice == Voice::Kick; }

double effectiveLevel(const StereoBuffer& mix) {
    double sum = 0;
    for (std::size_t i = 0; i < mix.frames(); ++i) {
        sum += mix.left[i] * mix.left[i] + mix.right[i] * mix.right[i];
    }
    return std::sqrt(sum / static_cast<double>(2 * mix.frames()));
}

float fadeAt(std::size_t frame, std::size_t frames) {
    const double fromStart = static_cast<double>(frame) / sampleRate / fadeInSeconds;
    const double toEnd = static_cast<double>(frames - 1 - frame) / sampleRate / fadeOutSeconds;
    const double share = std::min({1.0, fromStart, toEnd});
    return static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * share));
}

/** Leaves the usual range alone and bends peaks so that they stay just below full scale. */
float limited(float value) {
    constexpr float knee = 0.6F;
    constexpr float room = 0.35F;
    const float size = std::abs(value);
    return size <= knee ? value : std::copysign(knee + room * std::tanh((size - knee) / room), value);
}

}  // namespace

std::vector<std::int16_t> Synthesizer::render(const Score& score) {
    const auto frames = static_cast<std::size_t>(score.seconds * sampleRate);
    StereoBuffer mix(frames);
    StereoBuffer dry(frames);
    for (const Note& note : score.notes) play(note, staysDry(note.voice) ? dry : mix);
    Reverb().apply(mix, score.reverb);
    for (std::size_t i = 0; i < frames; ++i) {
        mix.left[i] += dry.left[i];
        mix.right[i] += dry.right[i];
    }
    const auto gain = static_cast<float>(loudness / std::max(1e-6, effectiveLevel(mix)));
    std::vector<std::int16_t> samples(2 * frames);
    for (std::size_t i = 0; i < frames; ++i) {
        const float level = gain * fadeAt(i, frames);
        samples[2 * i] = static_cast<std::int16_t>(std::lround(limited(mix.left[i] * level) * 32767));
        samples[2 * i + 1] = static_cast<std::int16_t>(std::lround(limited(mix.right[i] * level) * 32767));
    }
    return samples;
}

}  // namespace helmo::demo

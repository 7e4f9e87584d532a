#include "Tools/DemoLibrary/Composer.h"

#include <algorithm>
#include <cmath>

namespace helmo::demo {

namespace {

/** Time for the last chord to ring, seconds. */
constexpr double endingSeconds = 3.5;
/** No hand is as exact as a clock, seconds. */
constexpr double looseness = 0.006;
/** Further down a chord is mud, and the root alone is played. */
constexpr int lowestChordCentre = 50;

bool isDrum(Voice voice) { return voice >= Voice::Kick; }

}  // namespace

Composer::Composer(Style style, Mood mood, std::uint64_t seed)
    : _arrangement(arrangementOf(style)),
      _random(seed),
      _harmony(mood, _random),
      _stepsPerBar(static_cast<int>(_arrangement.parts.front().steps.size())),
      _stepSeconds(15.0 / _random.between(_arrangement.slowest, _arrangement.fastest)),
      _melody(_stepsPerBar / 2, _arrangement.melodyDensity, _random) {}

Score Composer::compose(double seconds) {
    _score = {.notes = {}, .seconds = seconds, .reverb = _arrangement.reverb};
    const double barSeconds = _stepsPerBar * _stepSeconds;
    _bars = std::max(1, static_cast<int>(std::lround((seconds - endingSeconds) / barSeconds)));
    _stepSeconds = (seconds - endingSeconds) / (_bars * _stepsPerBar);  // so that whole bars fill the time
    for (int bar = 0; bar < _bars; ++bar) {
        for (const Part& part : _arrangement.parts) {
            if (bar >= part.entersAt) playPart(part, bar);
        }
        if (bar >= _arrangement.melody.entersAt) playMelody(bar - _arrangement.melody.entersAt);
    }
    playEnding(_bars);
    return std::move(_score);
}

void Composer::playPart(const Part& part, int bar) {
    for (int step = 0; step < _stepsPerBar; ++step) addStep(part, bar, step);
}

void Composer::addStep(const Part& part, int bar, int step) {
    const char symbol = part.steps[static_cast<std::size_t>(step)];
    if (symbol == '.' || symbol == '-') return;
    const auto held = part.steps.find_first_not_of('-', static_cast<std::size_t>(step) + 1);
    const int end = held == std::string_view::npos ? _stepsPerBar : static_cast<int>(held);
    const double start = timeOf(bar, step);
    const double length = timeOf(bar, end) - start;
    const float accent = step == 0 ? 1.0F : step % 4 == 0 ? 0.92F : 0.82F;
    if (isDrum(part.voice)) {
        add(part, part.centre, start, length, symbol == 'o' ? accent * 0.55F : accent);
        return;
    }
    double strum = 0;
    for (const int pitch : pitchesOf(part, symbol, chordOfBar(bar), chordOfBar(bar + 1))) {
        add(part, pitch, start + strum, length, accent);
        strum += part.voice == Voice::Guitar ? 0.014 : 0.004;
    }
}

std::vector<int> Composer::pitchesOf(const Part& part, char symbol, int chord, int nextChord) const {
    const auto near = [&](int degree) {
        int pitch = _harmony.pitchOfDegree(degree, part.centre);
        while (pitch > part.centre + 9) pitch -= 12;
        return pitch;
    };
    switch (symbol) {
        case 'C':
            return _harmony.voicing(chord, _arrangement.chordSize, part.centre);
        case 'R':
            return {near(chord)};
        case 'T':
            return {near(chord + 2)};
        case 'F':
            return {near(chord + 4)};
        case 'O':
            return {near(chord) + 12};
        case 'A':
            return {near(nextChord + 1)};
        default:
            break;
    }
    const auto tones = _harmony.voicing(chord, _arrangement.chordSize, part.centre);
    const auto tone = static_cast<std::size_t>(symbol - '1');
    return {tones[tone % tones.size()] + (tone >= tones.size() ? 12 : 0)};
}

void Composer::playMelody(int bar) {
    const Part& part = _arrangement.melody;
    const int sounding = bar + part.entersAt;
    const int chord = chordOfBar(sounding);
    for (const MelodyNote& note : _melody.bar(bar)) {
        const bool isStrong = note.eighth % 4 == 0 || note.eighths > 2;
        const int degree = isStrong ? Harmony::nearestChordDegree(note.degree, chord) : note.degree;
        const double start = timeOf(sounding, note.eighth * 2);
        const double length = timeOf(sounding, (note.eighth + note.eighths) * 2) - start;
        add(part, _harmony.pitchOfDegree(degree, part.centre), start, length * 0.95, isStrong ? 1.0F : 0.85F);
    }
}

void Composer::playEnding(int bar) {
    const double start = timeOf(bar, 0);
    const double length = _score.seconds - start;
    for (const Part& part : _arrangement.parts) {
        if (part.voice == Voice::Kick || part.voice == Voice::FrameDrum) add(part, 60, start, 1, 0.8F);
        if (isDrum(part.voice)) continue;
        double roll = 0;
        for (const int pitch : pitchesOf(part, part.centre < lowestChordCentre ? 'R' : 'C', 0, 0)) {
            add(part, pitch, start + roll, length, 0.8F);
            roll += 0.03;
        }
    }
    const Part& melody = _arrangement.melody;
    add(melody, _harmony.pitchOfDegree(0, melody.centre), start, length * 0.6, 0.9F);
}

void Composer::add(const Part& part, int pitch, double start, double length, float velocity) {
    const double early = _random.between(-looseness, looseness);
    const auto touch = static_cast<float>(_random.between(0.85, 1.0));
    _score.notes.push_back({.start = std::max(0.0, start + early),
                            .length = length,
                            .pitch = pitch,
                            .velocity = velocity * touch * part.level,
                            .pan = part.pan,
                            .voice = part.voice});
}

int Composer::chordOfBar(int bar) const {
    constexpr int lastOfProgression = 3;
    if (bar >= _bars) return 0;
    return _harmony.chordOfBar(bar + 1 == _bars ? lastOfProgression : bar);
}

double Composer::timeOf(int bar, int step) const {
    const double delay = step % 4 == 2 ? _arrangement.swing * 4 * _stepSeconds : 0;
    return (bar * _stepsPerBar + step) * _stepSeconds + delay;
}

}  // namespace helmo::demo

#pragma once

#include <cstdint>
#include <string>

/** Contents of small sound files. */
namespace helmo::SoundFiles {

inline std::string big(std::uint64_t value, int bytes) {
    std::string text;
    while (bytes-- > 0) text += static_cast<char>(bytes < 8 ? value >> 8 * bytes & 0xff : 0);
    return text;
}

inline std::string little(std::uint64_t value, int bytes) {
    const std::string text = big(value, bytes);
    return {text.rbegin(), text.rend()};
}

/** One channel of samples, so many a second, of so many bytes each. */
inline std::string wave(const std::string& samples, std::uint64_t rate, int bytes = 1) {
    const auto width = static_cast<std::uint64_t>(bytes);
    return "RIFF" + little(samples.size() + 36, 4) + "WAVEfmt " + little(16, 4) + little(1, 2) +
           little(1, 2) + little(rate, 4) + little(rate * width, 4) + little(width, 2) +
           little(width * 8, 2) + "data" + little(samples.size(), 4) + samples;
}

inline std::string silentWave(unsigned seconds, unsigned rate = 8000) {
    return wave(std::string(std::size_t{rate} * seconds, '\x80'), rate);
}

/** So many seconds of 16-bit sound, without any. */
inline std::string flac(unsigned seconds = 1) {
    return "fLaC" + big(0x80000022, 4) + big(4096, 2) + big(4096, 2) + std::string(6, '\0') +
           big(0x0AC440F0, 4) + big(44100 * seconds, 4) + std::string(16, '\0') + "frames";
}

/** `seconds` of silence at 128 kbit/s. */
inline std::string mpeg(int seconds = 1) {
    std::string frames;
    for (int at = 0; at < seconds * 44100 / 1152; ++at) frames += big(0xFFFB9000, 4) + std::string(413, '\0');
    return frames;
}

}  // namespace helmo::SoundFiles

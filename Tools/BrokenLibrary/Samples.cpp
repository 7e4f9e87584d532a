#include "Tools/BrokenLibrary/Samples.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "Tools/DemoLibrary/AudioEncoder.h"
#include "Tools/DemoLibrary/StereoBuffer.h"

namespace helmo::broken {

using demo::AudioEncoder;
using demo::Format;

Samples::Samples(const std::filesystem::path& scratch) {
    std::vector<std::int16_t> tone(2 * std::size_t{demo::sampleRate});
    for (std::size_t i = 0; i < tone.size(); ++i)
        tone[i] = static_cast<std::int16_t>(4000 * std::sin(static_cast<double>(i / 2) * 0.06));
    for (const Format format :
         {Format::Mp3, Format::Flac, Format::Vorbis, Format::Opus, Format::M4a, Format::Wav}) {
        if (AudioEncoder::missingElement(format)) continue;
        const std::string extension(AudioEncoder::extensionOf(format));
        const auto file = scratch / ("sample." + extension);
        AudioEncoder::write(tone, format, file);
        std::ifstream stream(file, std::ios::binary);
        _all.push_back({extension, {std::istreambuf_iterator<char>(stream), {}}});
        std::filesystem::remove(file);
    }
}

const std::string& Samples::of(std::string_view extension) const {
    for (const Sample& sample : _all)
        if (sample.extension == extension) return sample.bytes;
    throw std::runtime_error("no encoder for " + std::string(extension) + " is installed");
}

}  // namespace helmo::broken

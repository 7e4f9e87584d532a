#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Tools/DemoLibrary/Catalogue.h"

namespace helmo::demo {

/** Writes sound files with the encoders that are installed. GStreamer must have been initialised; any thread.
 */
class AudioEncoder {
public:
    /** File name extension without a dot. */
    static std::string_view extensionOf(Format format);
    /** The first element that the format needs and that is not installed, or none if it can be written. */
    static std::optional<std::string> missingElement(Format format);
    /** Writes interleaved stereo samples; throws std::runtime_error with the encoder's reason. */
    static void write(std::span<const std::int16_t> samples, Format format,
                      const std::filesystem::path& file);
};

}  // namespace helmo::demo

#include "Platform/LibraryKit/PlayerStrings.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "Platform/Foundation/PlatformText.h"
#include "Platform/Foundation/StringFormat.h"
#include "Platform/Media/MediaProperty.h"

namespace zornic {
std::string shuffleTypeString(std::int64_t type, int style) {
    return platformText("SHUFFLE_TYPE_" + std::to_string(type) + "_STYLE_" + std::to_string(style));
}

std::string repeatTypeString(std::int64_t type, std::int64_t mediaType, int contextKind, int style) {
    static constexpr const char* contexts[] = {"", "_ALBUM", "_ARTIST", "_PLAYLIST"};
    constexpr std::int64_t songs = MediaType::Music | MediaType::MusicVideo;
    std::string variant;
    if (type == 1 && (mediaType & songs) == 0) variant = "_OTHER";
    if (type == 2 && contextKind >= 1 && contextKind <= 3) variant = contexts[contextKind];
    return platformText("REPEAT_TYPE_" + std::to_string(type) + variant + "_STYLE_" + std::to_string(style));
}

std::string progressString(std::int64_t seconds, ProgressKind kind) {
    const bool isSigned = kind == ProgressKind::Remaining || (kind == ProgressKind::Time && seconds < 0);
    const std::string key = isSigned ? "PROGRESS_REMAINING" : "PROGRESS_ELAPSED";
    const std::int64_t whole = std::abs(std::max(seconds, -std::numeric_limits<std::int64_t>::max()));
    const std::int64_t hours = whole / 3600, minutes = whole / 60 % 60, rest = whole % 60;
    if (hours == 0) return formatted(platformText(key + "_FORMAT"), {minutes, rest});
    return formatted(platformText(key + "_HOURS_FORMAT"), {hours, minutes, rest});
}

}  // namespace zornic

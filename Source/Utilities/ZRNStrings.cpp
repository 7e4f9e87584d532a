#include "Utilities/ZRNStrings.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "Platform/Foundation/StringFormat.h"
#include "Platform/Foundation/TextTools.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {
namespace {

std::int64_t wholeSeconds(double seconds) {
    const float rounded = std::ceil(static_cast<float>(seconds));
    if (std::isnan(rounded)) return 0;
    constexpr double lowest = std::numeric_limits<int>::min(), highest = std::numeric_limits<int>::max();
    return static_cast<std::int64_t>(std::clamp(static_cast<double>(rounded), lowest, highest));
}

}  // namespace

std::string ZRNTimeStringForDuration(double duration) {
    const std::int64_t total = wholeSeconds(duration);
    const std::int64_t absolute = std::abs(total);
    const std::int64_t seconds = absolute % 60, minutes = absolute / 60 % 60, hours = absolute / 3600;
    const std::string sign = total < 0 ? "-" : "";
    if (hours == 0)
        return formatted(ZRNLocalizedString("PROGRESS_TIME_SHORT_WIDTH_NO_HOURS_FORMAT"),
                         {sign, minutes, seconds});
    return formatted(ZRNLocalizedString("PROGRESS_TIME_SHORT_WIDTH_HOURS_FORMAT"),
                     {sign, hours, minutes, seconds});
}

std::string ZRNAlbumDetailFormat(std::uint64_t count, std::int64_t minutes) {
    if (count == 0) return ZRNLocalizedString("ALBUM_DETAIL_FORMAT_0_SONGS");
    const char* key = count == 1 ? "ALBUM_DETAIL_FORMAT_1_SONG" : "ALBUM_DETAIL_FORMAT_X_SONGS";
    const std::string songs = formatted(ZRNLocalizedString(key), {count});
    return minutes >= 1 ? formatted(ZRNLocalizedString("ALBUM_DETAIL_FORMAT_FULL"), {songs, minutes}) : songs;
}

std::string _ZRNStringFromIndexPath(const IndexPath& indexPath) {
    std::vector<std::string> numbers;
    for (const std::uint64_t index : indexPath.indices()) numbers.push_back(std::to_string(index));
    return joined(numbers, ".");
}

std::string ZRNPlainTextOfTemplate(const std::string& labelTemplate) {
    return replacingAll(labelTemplate, "#", "");
}

}  // namespace zornic

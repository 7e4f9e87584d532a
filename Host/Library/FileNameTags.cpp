#include "Host/Library/FileNameTags.h"

#include <algorithm>
#include <string_view>

#include "Host/Library/AlbumFolder.h"
#include "Host/Library/TagText.h"

namespace helmo {

namespace {

/** "24 Hours" is a title more often than it is track 24 of something; "04 Hours" is not. */
constexpr int largestNumberBeforeBlank = 19;

bool isDigit(char character) { return character >= '0' && character <= '9'; }

std::string_view digitsInFront(std::string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

struct NumberedName {
    int disc = 0;
    int track = 0;
    std::string_view title;
};

/** Splits "1-03 Blue" and "03. Blue"; a name without a track number comes back whole. */
NumberedName numberedName(std::string_view name) {
    NumberedName result{0, 0, name};
    auto rest = name;
    auto digits = digitsInFront(rest);
    int disc = 0;
    if (digits.size() == 1 && rest.size() > 3 && (rest[1] == '-' || rest[1] == '.') &&
        digitsInFront(rest.substr(2)).size() == 2) {
        disc = firstNumber(digits);
        rest.remove_prefix(2);
        digits = digitsInFront(rest);
    }
    if (digits.empty() || digits.size() > 3) return result;
    const auto behind = rest.substr(digits.size());
    const auto title = behind.find_first_not_of(" .-_)");
    if (title == 0 || title == std::string_view::npos) return result;
    const bool onlyBlank = behind.substr(0, title) == " ";
    if (onlyBlank && disc == 0 && digits.front() != '0' && firstNumber(digits) > largestNumberBeforeBlank)
        return result;
    if (onlyBlank && digits.size() == 1) return result;
    return {disc, firstNumber(digits), behind.substr(title)};
}

}  // namespace

void completeFromFileName(TrackTags& tags, const std::filesystem::path& file,
                          const std::filesystem::path& root) {
    const bool untagged = tags.title.empty() && tags.artist.empty() && tags.albumTitle.empty();
    if (tags.title.empty()) {
        const std::string name = cleanTagText(file.stem().string());
        const NumberedName parts = numberedName(name);
        tags.title = std::string(parts.title);
        if (tags.trackNumber == 0) tags.trackNumber = parts.track;
        if (tags.discNumber == 0) tags.discNumber = parts.disc;
    }
    if (!untagged) return;
    auto folder = file.parent_path();
    if (folder == root) return;
    const AlbumFolder album = AlbumFolder::of(folder);
    if (tags.discNumber == 0) tags.discNumber = album.disc;
    if (album.path != root) tags.albumTitle = cleanTagText(album.path.filename().string());
}

}  // namespace helmo

#include "Host/Library/SortNames.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "Host/Library/Articles.h"
#include "Host/Library/SortKey.h"

namespace helmo {

namespace {

struct Language {
    std::string_view code;
    /** Three letters as in books of libraries and as in their own language, and its names. */
    std::array<std::string_view, 4> names;
};

/** Those that have articles. */
constexpr Language languages[] = {
    {"en", {"eng", "eng", "english", "english"}},      {"de", {"ger", "deu", "german", "deutsch"}},
    {"fr", {"fre", "fra", "french", "français"}},      {"es", {"spa", "spa", "spanish", "español"}},
    {"it", {"ita", "ita", "italian", "italiano"}},     {"nl", {"dut", "nld", "dutch", "nederlands"}},
    {"pt", {"por", "por", "portuguese", "português"}}, {"sv", {"swe", "swe", "swedish", "svenska"}},
    {"ar", {"ara", "ara", "arabic", "العربية"}}};

/** Two letters; none for a language without articles. */
std::string_view codeOf(const std::string& name) {
    const std::string folded = SortKey::folded(name);
    for (const Language& language : languages)
        if (folded == language.code || folded.starts_with(std::string(language.code) + "-") ||
            std::ranges::find(language.names, folded) != language.names.end())
            return language.code;
    return {};
}

}  // namespace

void completeSortNames(TrackTags& tags) {
    if (tags.language.empty()) return;
    const std::string_view language = codeOf(tags.language);
    if (language.empty()) return;
    const auto complete = [&](const std::string& name, std::string& sortName) {
        // What is no article in this language stays, though it were one in the driver's.
        if (sortName.empty() && mayBeginWithArticle(name)) sortName = withoutArticle(name, language);
    };
    complete(tags.title, tags.sortTitle);
    complete(tags.artist, tags.sortArtist);
    complete(tags.albumTitle, tags.sortAlbumTitle);
    complete(tags.albumArtist, tags.sortAlbumArtist);
}

}  // namespace helmo

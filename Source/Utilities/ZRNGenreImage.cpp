#include "Utilities/ZRNGenreImage.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "Platform/Foundation/TextTools.h"
#include "Utilities/ZRNHelmoScreen.h"

namespace zornic {
namespace {

using Keys = std::map<std::string, std::string>;

/** Pictures by genre. Genres that have one under their own name, then those that share another's. */
const Keys& imageKeys() {
    static const Keys keys = [] {
        Keys made;
        for (const char* own : {"80s-hits",
                                "alternative",
                                "blues",
                                "christian",
                                "classic-alt",
                                "classic-randb",
                                "classic-rock",
                                "classical",
                                "classic-country",
                                "country-hits",
                                "dance",
                                "decades",
                                "electronic",
                                "gospel",
                                "hip-hop",
                                "indie",
                                "jazz",
                                "kids-and-family",
                                "latin-hits",
                                "metal",
                                "modern-rock",
                                "pop-gold",
                                "pop-hits",
                                "randb",
                                "reggae",
                                "regional-mexican",
                                "singer-songwriter",
                                "smooth-jazz",
                                "smooth-pop",
                                "world-hits"})
            made.emplace(own, own);
        made.insert({{"grunge", "alternative"},
                     {"noise", "alternative"},
                     {"country", "country-hits"},
                     {"house", "electronic"},
                     {"techno", "electronic"},
                     {"trance", "electronic"},
                     {"ambient", "electronic"},
                     {"dub", "electronic"},
                     {"rap", "hip-hop"},
                     {"lo-fi", "indie"},
                     {"children", "kids-and-family"},
                     {"latin", "latin-hits"},
                     {"industrial", "metal"},
                     {"rock", "modern-rock"},
                     {"pop", "pop-hits"},
                     {"r&b", "randb"},
                     {"r and b", "randb"},
                     {"soul", "randb"},
                     {"folk", "singer-songwriter"},
                     {"easy-listening", "smooth-pop"},
                     {"new-age", "world-hits"},
                     {"world", "world-hits"},
                     {"international", "world-hits"}});
        return made;
    }();
    return keys;
}

/** The longest first, so that the most specific name wins; then by letter. */
const std::vector<Keys::const_iterator>& mostSpecificFirst() {
    static const std::vector<Keys::const_iterator> order = [] {
        std::vector<Keys::const_iterator> all;
        for (auto key = imageKeys().begin(); key != imageKeys().end(); ++key) all.push_back(key);
        std::ranges::stable_sort(all, std::ranges::greater(), [](auto key) { return key->first.size(); });
        return all;
    }();
    return order;
}

std::string normalized(std::string name) {
    // The names that are looked for have no other letters.
    for (char& letter : name)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return replacingAll(std::move(name), " ", "-");
}

/** Key of the picture; empty without one. */
const std::string& imageKeyForGenre(const std::string& genre) {
    static const std::string none;
    static std::set<std::string> unknown;
    if (const auto exact = imageKeys().find(genre); exact != imageKeys().end()) return exact->second;
    if (unknown.contains(genre)) return none;
    for (const auto& key : mostSpecificFirst())
        if (genre.find(key->first) != std::string::npos) return key->second;
    unknown.insert(genre);
    return none;
}

std::string imageNameForKey(const std::string& key) { return "genre-image-" + key; }

}  // namespace

Image ZRNGenreImageForGenreName(const std::string& name) {
    const std::string& key = imageKeyForGenre(normalized(name));
    if (key.empty()) return {};
    const auto screen = ZRNHelmoScreen();
    return Image::named(imageNameForKey(key), Bundle::bundleWithIdentifier(ZRNHostMusicBundleIdentifier),
                        screen ? screen->traits() : DisplayTraits());
}

std::vector<std::string> ZRNGenreImageNames() {
    std::set<std::string> names;
    for (const auto& [genre, key] : imageKeys()) names.insert(imageNameForKey(key));
    return {names.begin(), names.end()};
}

}  // namespace zornic

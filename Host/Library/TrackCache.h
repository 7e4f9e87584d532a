#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

namespace helmo {

/** What the writer of tracks keeps from one transaction to the next, as long as every one is committed. */
struct TrackCache {
    struct Collection {
        std::int64_t id = 0;
        std::string key;
    };
    /** Enough for the albums that a scan comes by side by side; bounds what it keeps of a million. */
    static constexpr std::size_t maximumEntries = 20'000;

    std::unordered_map<std::string, Collection> collections;
    std::string folder;
    std::int64_t folderId = 0;
    /** Where albums in `folder` lie: the folder, or the one around the discs. */
    std::int64_t place = 0;

    void clear() {
        collections.clear();
        folder.clear();
        folderId = place = 0;
    }
};

}  // namespace helmo

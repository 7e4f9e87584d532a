#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "Host/Library/Database.h"

namespace helmo {

/** Gathers the counts of added tracks, and adds them to the stored ones all at once. */
class TrackCounts {
public:
    /** The keys in the order of `Schema::CountedOrder`. */
    using Keys = std::array<const std::string*, 4>;

    /** Counts a track: in its sections, and in the collections it belongs to (0: in none). */
    void add(std::int64_t mediaType, const Keys& keys, const std::array<std::int64_t, 6>& collections);
    bool isEmpty() const { return _collections.empty(); }
    /** Adds everything to the stored counts and is empty again. Throws. */
    void store(Database& database);

private:
    using Section = std::tuple<std::int64_t, std::int64_t, std::string>;
    using Collection = std::pair<std::int64_t, std::int64_t>;

    std::map<Section, std::int64_t> _sections;
    std::map<Collection, std::int64_t> _collections;
};

}  // namespace helmo

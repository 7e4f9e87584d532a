#pragma once

#include <cstdint>

namespace zornic {

/** What one row of a library list is. */
enum class EntityType : std::int64_t {
    /** One item of the query. */
    Items = 0,
    /** One collection of the query: an album, an artist, a playlist. */
    Collections = 1
};

}  // namespace zornic

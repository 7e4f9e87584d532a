#pragma once

#include <optional>
#include <string>

#include "Host/Library/Database.h"
#include "Host/Library/SortKey.h"
#include "Host/Library/TrackCache.h"
#include "Host/Library/TrackCounts.h"

namespace helmo {

/** The rows of artists, albums and the like, within one transaction. A row is found by its name, whatever
   the case; an album by its artist as well, and one that is nobody's by where it lies. Throws. */
class CollectionRows {
public:
    using Row = TrackCache::Collection;
    /** What tells an album from others. */
    struct Album {
        std::string title, sortTitle;
        Row owner;
        /** The row of the folder that it lies in; 0 where the owner says enough. */
        std::int64_t place = 0;
    };

    /** `counts`: of tracks added in this transaction; stored before the triggers need them. */
    CollectionRows(Database& database, const SortKey& sortKey, TrackCache& cache, TrackCounts& counts)
        : _database(database), _sortKey(sortKey), _cache(cache), _counts(counts) {}

    /** The row of that name, made when it is new. */
    const Row& row(std::int64_t kind, const std::string& name, const std::string& sortName);
    Row album(const Album& album);
    std::optional<Row> knownAlbum(const Album& album);
    /** Makes the row of an album that isn't known. */
    Row addAlbum(const Album& album);
    /** Makes the row of another album this one's: it keeps its persistent ID. */
    Row takeOver(std::int64_t row, const Album& album);

private:
    static const std::string& keyOf(std::string& key, std::int64_t kind, const std::string& name,
                                    const std::string& sortName, std::int64_t owner, std::int64_t place);
    std::optional<Row> find(std::int64_t kind, const std::string& folded, std::int64_t owner,
                            const std::string& name, const std::string& sortName);
    Row insert(std::int64_t kind, const std::string& folded, const Row& owner, const std::string& name,
               const std::string& sortName);
    void sortAgain(std::int64_t kind, std::int64_t id, const std::string& sortName, const std::string& key);

    Database& _database;
    const SortKey& _sortKey;
    TrackCache& _cache;
    TrackCounts& _counts;
    std::string _key;
};

}  // namespace helmo

#include "Host/Library/TrackCounts.h"

#include "Host/Library/Schema.h"

namespace helmo {

void TrackCounts::add(std::int64_t mediaType, const Keys& keys,
                      const std::array<std::int64_t, 6>& collections) {
    std::int64_t ordering = 0;
    for (const std::string* key : keys)
        ++_sections[{ordering++, mediaType, key->substr(0, Schema::countedBytes)}];
    for (const std::int64_t collection : collections)
        if (collection != 0) ++_collections[{collection, mediaType}];
}

void TrackCounts::store(Database& database) {
    auto section = database.prepare(
        {"INSERT INTO section_count (ordering, media_type, section, tracks) VALUES (?, ?, ?, ?) "
         "ON CONFLICT DO UPDATE SET tracks = tracks + excluded.tracks",
         {}});
    for (const auto& [key, tracks] : _sections) {
        const auto& [ordering, mediaType, bytes] = key;
        section.bind(ordering).bind(mediaType).bind(Blob{bytes}).bind(tracks).run();
        section.reset();
    }
    auto collection =
        database.prepare({"INSERT INTO collection_count (collection_id, media_type, tracks) VALUES (?, ?, ?) "
                          "ON CONFLICT DO UPDATE SET tracks = tracks + excluded.tracks",
                          {}});
    for (const auto& [key, tracks] : _collections) {
        collection.bind(key.first).bind(key.second).bind(tracks).run();
        collection.reset();
    }
    _sections.clear();
    _collections.clear();
}

}  // namespace helmo

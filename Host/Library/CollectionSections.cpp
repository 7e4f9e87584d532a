#include "Host/Library/CollectionSections.h"

#include <array>
#include <string>

#include "Host/Library/Schema.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo::CollectionSections {

namespace {

using namespace zornic::MediaType;

struct CountedKey {
    Order order;
    const char* key;
    /** Of which collections. */
    const char* condition;
};

constexpr std::array countedKeys{CountedKey{Order::Name, "sort_key", "1"},
                                 CountedKey{Order::Owner, "owner_key", "kind = 1"}};

/** The beginning of a key; SQLite has none of an empty one. */
std::string first(const std::string& key) {
    return "COALESCE(substr(" + key + ", 1, " + std::to_string(Schema::countedBytes) + "), x'')";
}

/** The bits of all media types of a collection's tracks. */
std::string typesOf(const std::string& collection) {
    std::string bits;
    for (const auto type : {Music, Podcast, Audiobook, Lecture, MusicVideo})
        bits += (bits.empty() ? "MAX(media_type & " : " | MAX(media_type & ") + std::to_string(type) + ")";
    return "COALESCE((SELECT " + bits + " FROM collection_count WHERE collection_id = " + collection +
           " AND tracks > 0), 0)";
}

/** A condition on the row NEW or OLD. */
std::string conditionOn(const std::string& row, const CountedKey& counted) {
    const std::string condition = counted.condition;
    return row + ".media_types <> 0 AND " + (condition == "1" ? condition : row + '.' + condition);
}

std::string countingIn() {
    std::string sql;
    for (const auto& counted : countedKeys)
        sql += "INSERT INTO collection_section SELECT NEW.kind, " +
               std::to_string(static_cast<std::int64_t>(counted.order)) + ", NEW.media_types, " +
               first(std::string("NEW.") + counted.key) + ", 1 WHERE " + conditionOn("NEW", counted) +
               " ON CONFLICT DO UPDATE SET collections = collections + 1;";
    return sql;
}

std::string countingOut() {
    std::string sql;
    for (const auto& counted : countedKeys)
        sql +=
            "UPDATE collection_section SET collections = collections - 1 WHERE kind = OLD.kind AND "
            "ordering = " +
            std::to_string(static_cast<std::int64_t>(counted.order)) +
            " AND section = " + first(std::string("OLD.") + counted.key) +
            " AND media_types = OLD.media_types AND " + conditionOn("OLD", counted) + ";";
    return sql;
}

std::string triggers() {
    return "CREATE TRIGGER collection_counted AFTER INSERT ON collection_count WHEN NEW.tracks > 0 BEGIN "
           "UPDATE collection SET media_types = media_types | NEW.media_type WHERE id = NEW.collection_id; "
           "END;"
           "CREATE TRIGGER collection_recounted AFTER UPDATE OF tracks ON collection_count "
           "WHEN (OLD.tracks > 0) <> (NEW.tracks > 0) BEGIN UPDATE collection SET media_types = " +
           typesOf("NEW.collection_id") +
           " WHERE id = NEW.collection_id; END;"
           "CREATE TRIGGER collection_changed AFTER UPDATE OF media_types, sort_key, owner_key ON collection "
           "WHEN OLD.media_types <> NEW.media_types OR OLD.sort_key <> NEW.sort_key OR "
           "OLD.owner_key <> NEW.owner_key BEGIN " +
           countingOut() + countingIn() +
           " END;"
           "CREATE TRIGGER collection_removed AFTER DELETE ON collection WHEN OLD.media_types <> 0 BEGIN " +
           countingOut() + " END;";
}

}  // namespace

void prepare(Database& database) {
    database.execute(
        "ALTER TABLE collection ADD COLUMN media_types INTEGER NOT NULL DEFAULT 0;"
        "CREATE TABLE collection_section ("
        "kind INTEGER NOT NULL, ordering INTEGER NOT NULL, media_types INTEGER NOT NULL, section BLOB NOT "
        "NULL,"
        "collections INTEGER NOT NULL, PRIMARY KEY (kind, ordering, section, media_types)) WITHOUT ROWID;"
        "UPDATE collection SET media_types = " +
        typesOf("collection.id") + ";");
    for (const auto& counted : countedKeys)
        database.execute("INSERT INTO collection_section SELECT kind, " +
                         std::to_string(static_cast<std::int64_t>(counted.order)) + ", media_types, " +
                         first(counted.key) + ", COUNT(*) FROM collection WHERE media_types <> 0 AND " +
                         counted.condition + " GROUP BY kind, media_types, 4");
    database.execute(
        triggers() +
        "DROP INDEX collection_by_name; DROP INDEX collection_by_owner;"
        // A condition's column stands in its index as well, or every row would be looked up for it.
        "CREATE INDEX collection_by_name ON collection (kind, sort_key, owner_key, id, media_types) "
        "WHERE media_types <> 0;"
        "CREATE INDEX collection_by_owner ON collection (kind, owner_key, sort_key, id, media_types) "
        "WHERE media_types <> 0 AND kind = 1;"
        // Lengths and years are added up and compared without looking up a row.
        "DROP INDEX track_of_album; DROP INDEX track_of_artist; DROP INDEX track_of_album_artist;"
        "CREATE INDEX track_of_album ON track (album_id, disc_number, track_number, id, media_type, "
        "artist_id, "
        "present, duration, year) WHERE present = 1;"
        "CREATE INDEX track_of_artist ON track (artist_id, album_id, disc_number, track_number, id, "
        "media_type, "
        "present, duration) WHERE present = 1;"
        "CREATE INDEX track_of_album_artist ON track (album_artist_id, album_id, disc_number, track_number, "
        "id, "
        "media_type, present, duration) WHERE present = 1;"
        // A playlist is known without its tracks but for those that are gone.
        "CREATE INDEX track_gone ON track (id) WHERE present = 0;");
}

}  // namespace helmo::CollectionSections

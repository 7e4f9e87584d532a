#include "Host/Library/Schema.h"

#include <array>

#include "Host/Library/AlbumsMigration.h"
#include "Host/Library/ChapterTable.h"
#include "Host/Library/CollectionSections.h"

namespace helmo::Schema {

namespace {

constexpr const char* tables = R"sql(
CREATE TABLE meta (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE folder (
    id INTEGER PRIMARY KEY, path TEXT NOT NULL UNIQUE,
    picture TEXT NOT NULL DEFAULT '', picture_stamp INTEGER NOT NULL DEFAULT 0);
-- Artists, albums and the like; kind is the grouping that gathers them. owner is an album's album artist.
CREATE TABLE collection (
    id INTEGER PRIMARY KEY, pid INTEGER NOT NULL UNIQUE, kind INTEGER NOT NULL,
    name TEXT NOT NULL, sort_name TEXT NOT NULL DEFAULT '', folded TEXT NOT NULL,
    owner_id INTEGER NOT NULL DEFAULT 0,
    sort_key BLOB NOT NULL, owner_key BLOB NOT NULL DEFAULT x'',
    UNIQUE (kind, folded, owner_id));
CREATE INDEX collection_by_name ON collection (kind, sort_key, owner_key, id);
CREATE INDEX collection_by_owner ON collection (kind, owner_key, sort_key, id);
CREATE TABLE track (
    id INTEGER PRIMARY KEY, pid INTEGER NOT NULL UNIQUE,
    folder_id INTEGER NOT NULL REFERENCES folder (id), file_name TEXT NOT NULL,
    size INTEGER NOT NULL, mtime INTEGER NOT NULL, present INTEGER NOT NULL DEFAULT 1,
    title TEXT NOT NULL, sort_title TEXT NOT NULL,
    artist_id INTEGER NOT NULL REFERENCES collection (id), album_id INTEGER NOT NULL REFERENCES collection (id),
    album_artist_id INTEGER NOT NULL REFERENCES collection (id), genre_id INTEGER NOT NULL REFERENCES collection (id),
    composer_id INTEGER REFERENCES collection (id), podcast_id INTEGER REFERENCES collection (id),
    title_key BLOB NOT NULL, artist_key BLOB NOT NULL, album_artist_key BLOB NOT NULL, album_key BLOB NOT NULL,
    media_type INTEGER NOT NULL, is_explicit INTEGER NOT NULL, is_compilation INTEGER NOT NULL,
    track_number INTEGER NOT NULL, track_count INTEGER NOT NULL, disc_number INTEGER NOT NULL,
    duration REAL NOT NULL, release_date INTEGER, year INTEGER NOT NULL, picture INTEGER NOT NULL,
    date_added INTEGER NOT NULL, last_played INTEGER, play_count INTEGER NOT NULL DEFAULT 0, bookmark REAL,
    UNIQUE (folder_id, file_name));
-- A condition's column stands in its index as well, or every row would be looked up for it.
CREATE INDEX track_by_title ON track (title_key, id, media_type, present) WHERE present = 1;
CREATE INDEX track_by_artist
    ON track (artist_key, album_key, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_by_album_artist
    ON track (album_artist_key, album_key, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_by_album
    ON track (album_key, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_of_album
    ON track (album_id, disc_number, track_number, id, media_type, artist_id, present) WHERE present = 1;
CREATE INDEX track_of_artist
    ON track (artist_id, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_of_album_artist
    ON track (album_artist_id, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_of_genre ON track (genre_id, artist_id, album_id, id, media_type, present) WHERE present = 1;
CREATE INDEX track_of_composer ON track (composer_id, album_id, id, media_type, present)
    WHERE present = 1 AND composer_id IS NOT NULL;
CREATE INDEX track_of_podcast
    ON track (podcast_id, id, media_type, present) WHERE present = 1 AND podcast_id IS NOT NULL;
CREATE INDEX track_of_compilation ON track (album_id, disc_number, track_number, id, media_type, present)
    WHERE present = 1 AND is_compilation = 1;
CREATE INDEX track_with_picture ON track (picture) WHERE present = 1 AND picture <> 0;
CREATE INDEX track_by_file ON track (file_name, size, mtime);
CREATE TABLE playlist (
    id INTEGER PRIMARY KEY, pid INTEGER NOT NULL UNIQUE, name TEXT NOT NULL, sort_key BLOB NOT NULL,
    parent_id INTEGER REFERENCES playlist (id) ON DELETE CASCADE,
    is_folder INTEGER NOT NULL DEFAULT 0, is_hidden INTEGER NOT NULL DEFAULT 0, is_brivo_mix INTEGER NOT NULL DEFAULT 0,
    is_active_brivo INTEGER NOT NULL DEFAULT 0, is_deletable INTEGER NOT NULL DEFAULT 1,
    path TEXT UNIQUE, size INTEGER NOT NULL DEFAULT 0, mtime INTEGER NOT NULL DEFAULT 0,
    present INTEGER NOT NULL DEFAULT 1);
CREATE INDEX playlist_of_parent ON playlist (parent_id);
CREATE TABLE playlist_item (
    playlist_id INTEGER NOT NULL REFERENCES playlist (id) ON DELETE CASCADE, position INTEGER NOT NULL,
    track_id INTEGER NOT NULL REFERENCES track (id) ON DELETE CASCADE,
    PRIMARY KEY (playlist_id, position)) WITHOUT ROWID;
CREATE INDEX playlist_of_track ON playlist_item (track_id);
CREATE TABLE section_title (section BLOB PRIMARY KEY, script INTEGER NOT NULL, title TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE section_count (
    ordering INTEGER NOT NULL, media_type INTEGER NOT NULL, section BLOB NOT NULL, tracks INTEGER NOT NULL,
    PRIMARY KEY (ordering, section, media_type)) WITHOUT ROWID;
CREATE TABLE collection_count (
    collection_id INTEGER NOT NULL, media_type INTEGER NOT NULL, tracks INTEGER NOT NULL,
    PRIMARY KEY (collection_id, media_type)) WITHOUT ROWID;
)sql";

constexpr std::array countedKeys{"title_key", "artist_key", "album_artist_key", "album_key"};
constexpr std::array countedCollections{"artist_id", "album_id",    "album_artist_id",
                                        "genre_id",  "composer_id", "podcast_id"};

/** The beginning of a key in the row NEW or OLD. */
std::string counted(const std::string& row, const char* key, int bytes) {
    return "substr(" + row + "." + key + ", 1, " + std::to_string(bytes) + ")";
}

/** Adds the row NEW to every count. */
std::string countingIn(int bytes) {
    std::string sql;
    for (std::size_t order = 0; order < countedKeys.size(); ++order)
        sql += "INSERT INTO section_count VALUES (" + std::to_string(order) + ", NEW.media_type, " +
               counted("NEW", countedKeys[order], bytes) +
               ", 1) ON CONFLICT DO UPDATE SET tracks = tracks + 1;";
    for (const char* column : countedCollections)
        sql += std::string("INSERT INTO collection_count SELECT NEW.") + column +
               ", NEW.media_type, 1 WHERE NEW." + column +
               " IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;";
    return sql;
}

/** Takes the row OLD out of every count. */
std::string countingOut(int bytes) {
    std::string sql;
    for (std::size_t order = 0; order < countedKeys.size(); ++order)
        sql += "UPDATE section_count SET tracks = tracks - 1 WHERE ordering = " + std::to_string(order) +
               " AND media_type = OLD.media_type AND section = " + counted("OLD", countedKeys[order], bytes) +
               ";";
    for (const char* column : countedCollections)
        sql += std::string("UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.") +
               column + " AND media_type = OLD.media_type;";
    return sql;
}

std::string trigger(const std::string& name, const std::string& event, const std::string& row,
                    const std::string& body) {
    return "CREATE TRIGGER " + name + " AFTER " + event + " ON track WHEN " + row + ".present = 1 BEGIN " +
           body + " END;";
}

/** Counts what changes and what goes, by that many bytes of the keys. */
std::string changeTriggers(int bytes) {
    std::string watched = "present, media_type";
    for (const char* column : countedKeys) watched += std::string(", ") + column;
    for (const char* column : countedCollections) watched += std::string(", ") + column;
    return trigger("track_removed", "DELETE", "OLD", countingOut(bytes)) +
           trigger("track_changed_from", "UPDATE OF " + watched, "OLD", countingOut(bytes)) +
           trigger("track_changed_to", "UPDATE OF " + watched, "NEW", countingIn(bytes));
}

void makeFirstTables(Database& database) {
    constexpr int bytes = 2;
    database.execute(tables + trigger("track_added", "INSERT", "NEW", countingIn(bytes)) +
                     changeTriggers(bytes));
}

struct Index {
    std::string name, definition;
    std::string sql() const { return "CREATE INDEX IF NOT EXISTS " + name + " ON track " + definition; }
};

const std::array lateIndices{
    Index{"track_by_album_artist",
          "(album_artist_key, album_key, album_id, disc_number, track_number, id, media_type, present) "
          "WHERE present = 1"},
    Index{"track_by_album",
          "(album_key, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1"},
    // The time tells files apart almost by itself.
    Index{"track_by_stamp", "(mtime, size)"}, Index{"track_by_identity", "(identity) WHERE identity <> 0"}};
constexpr std::size_t indicesOfBulk = 3;

/** New tracks are counted many at once, all by more bytes; files that are no tracks are remembered. */
void countInBulk(Database& database) {
    for (const char* name : {"track_added", "track_removed", "track_changed_from", "track_changed_to"})
        database.execute(std::string("DROP TRIGGER ") + name);
    database.execute(
        changeTriggers(countedBytes) +
        "DELETE FROM section_count;"
        "DROP INDEX track_by_file;"
        "CREATE TABLE unreadable ("
        "folder_id INTEGER NOT NULL REFERENCES folder (id), file_name TEXT NOT NULL,"
        "part INTEGER NOT NULL, size INTEGER NOT NULL, mtime INTEGER NOT NULL, reason TEXT NOT NULL,"
        "PRIMARY KEY (folder_id, file_name, part)) WITHOUT ROWID;");
    for (std::size_t order = 0; order < countedKeys.size(); ++order)
        database.execute("INSERT INTO section_count SELECT " + std::to_string(order) + ", media_type, " +
                         counted("track", countedKeys[order], countedBytes) +
                         ", COUNT(*) FROM track WHERE present = 1 GROUP BY 2, 3");
    for (std::size_t at = 0; at < indicesOfBulk; ++at) database.execute(lateIndices[at].sql());
}

/** What a playlist names that is no track yet is kept by its path. Playlists are read again for it: it isn't
   noted yet which music folders they were read with. */
void keepGapsOfPlaylists(Database& database) {
    database.execute(
        "ALTER TABLE playlist ADD COLUMN names_others INTEGER NOT NULL DEFAULT 0;"
        "CREATE TABLE playlist_gap ("
        "playlist_id INTEGER NOT NULL REFERENCES playlist (id) ON DELETE CASCADE, position INTEGER NOT NULL,"
        "path TEXT NOT NULL, PRIMARY KEY (playlist_id, position)) WITHOUT ROWID;"
        "CREATE INDEX playlist_gap_by_path ON playlist_gap (path);");
}

/** Chapters, and kinds that weren't told apart before, are read from the files once more. */
void addChapters(Database& database) {
    ChapterTable::make(database);
    database.execute("UPDATE track SET size = -1");
}

/** Mixes are playlists; what each was made around, and the artists that it stands for. */
void addMixes(Database& database) {
    database.execute(
        "CREATE TABLE mix (playlist_id INTEGER PRIMARY KEY REFERENCES playlist (id) ON DELETE CASCADE,"
        "subject TEXT NOT NULL UNIQUE);"
        "CREATE TABLE mix_artist ("
        "playlist_id INTEGER NOT NULL REFERENCES playlist (id) ON DELETE CASCADE, position INTEGER NOT NULL,"
        "artist_id INTEGER NOT NULL REFERENCES collection (id) ON DELETE CASCADE,"
        "PRIMARY KEY (playlist_id, position)) WITHOUT ROWID;");
}

/** Step n brings version n to n + 1; new steps go to the end, old ones are never changed. */
constexpr std::array migrations{makeFirstTables, countInBulk, tellAlbumsByPlace, keepGapsOfPlaylists,
                                addChapters, addMixes, CollectionSections::prepare};

}  // namespace

void dropLateIndices(Database& database) {
    for (const Index& index : lateIndices) database.execute("DROP INDEX IF EXISTS " + index.name);
}

std::vector<std::string> missingIndices(Database& database) {
    std::vector<std::string> missing;
    for (const Index& index : lateIndices)
        if (!database.integer(
                {"SELECT EXISTS (SELECT 1 FROM sqlite_schema WHERE type = 'index' AND name = ?)",
                 {index.name}}))
            missing.push_back(index.sql());
    return missing;
}

void prepare(Database& database) {
    const auto current = static_cast<std::int64_t>(migrations.size());
    // Others may hold the database for writing, and it may be read-only.
    if (database.integer({"PRAGMA user_version", {}}) == current) return;
    Transaction transaction(database);
    const auto version = database.integer({"PRAGMA user_version", {}});
    if (version < 0 || version > current)
        throw DatabaseError(DatabaseError::damageCode,
                            "made by another version (" + std::to_string(version) + ")");
    try {
        for (auto step = version; step < current; ++step)
            migrations[static_cast<std::size_t>(step)](database);
    } catch (const DatabaseError& error) {
        if (error.kind() != DatabaseError::Kind::Other) throw;
        throw DatabaseError(DatabaseError::damageCode, std::string("not a library: ") + error.what());
    }
    for (const std::string& sql : missingIndices(database)) database.execute(sql);
    if (version != current) database.execute("PRAGMA user_version = " + std::to_string(current));
    transaction.commit();
}

}  // namespace helmo::Schema

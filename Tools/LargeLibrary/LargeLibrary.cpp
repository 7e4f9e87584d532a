#include "Tools/LargeLibrary/LargeLibrary.h"

#include <cstdio>
#include <stdexcept>
#include <vector>

#include "Host/Library/Database.h"
#include "Host/Library/Schema.h"
#include "Host/Library/SortKey.h"
#include "Host/Library/TrackStore.h"
#include "Tools/LargeLibrary/GeneratedMusic.h"
#include "Tools/LargeLibrary/LargePlaylists.h"

namespace helmo::large {

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t tracksPerFolder = 1'000;
/** To be changed with what is generated. */
constexpr const char* generation = "library 1";

struct Made {
    std::string name, sql;
};

/** What a statement of the schema makes, of one kind: "index" ... */
std::vector<Made> madeBy(Database& database, const std::string& kind) {
    std::vector<Made> made;
    auto rows =
        database.prepare({"SELECT name, sql FROM sqlite_master WHERE type = ? AND sql IS NOT NULL", {kind}});
    while (rows.step()) made.push_back({rows.text(0), rows.text(1)});
    return made;
}

/** Tells libraries of one making from others. */
std::string stampOf(Database& database, const LargeLibrarySize& size) {
    std::string text = generation + SortKey().stamp();
    for (const auto number : {size.tracks, size.playlists, size.longestPlaylist})
        text += ' ' + std::to_string(number);
    for (const char* kind : {"table", "index", "trigger"})
        for (const auto& [name, sql] : madeBy(database, kind)) text += sql;
    return std::to_string(std::hash<std::string>()(text));
}

void storeTracks(Database& database, const SortKey& sortKey, std::int64_t count) {
    TrackCache cache;
    Transaction transaction(database);
    TrackStore store(database, sortKey, cache);
    store.renewSortKeys();
    GeneratedMusic music;
    for (std::int64_t at = 0; at < count; ++at) {
        const MusicFile file{"/generated/" + std::to_string(at / tracksPerFolder),
                             std::to_string(at) + ".flac", at, at};
        store.store(file, music.next(), {.track = 0, .mayHaveMoved = false});
        if (at % 100'000 == 0)
            std::fprintf(stderr, "generating songs: %lld of %lld\n", static_cast<long long>(at),
                         static_cast<long long>(count));
    }
    store.commit(transaction);
}

/** What is drawn or told by the clock when a library is scanned comes from the row's number here. */
void makeRepeatable(Database& database) {
    for (const char* table : {"track", "collection"})
        database.execute(std::string("UPDATE ") + table +
                         " SET pid = ((id * 2654435761) % 4294967296) * 2147483648 + id");
    database.execute("UPDATE track SET date_added = 1500000000 + id");
}

/** A scan finds none of the files: it must not hide the tracks, nor look through the whole file for damage.
 */
void keepFromScans(Database& database) {
    database.execute(
        "PRAGMA foreign_keys = OFF;"
        "DELETE FROM folder;"
        "CREATE TRIGGER generated_stay BEFORE UPDATE OF present ON track WHEN NEW.present = 0 "
        "BEGIN SELECT RAISE(IGNORE); END;"
        "INSERT OR REPLACE INTO meta VALUES ('checked', '99999999999')");
}

void generate(Database& database, const LargeLibrarySize& size) {
    const SortKey sortKey;
    database.execute("PRAGMA synchronous = OFF; PRAGMA cache_size = -400000");
    const auto indexes = madeBy(database, "index");
    for (const auto& [name, sql] : indexes) database.execute("DROP INDEX " + name);
    storeTracks(database, sortKey, size.tracks);
    makeRepeatable(database);
    for (const auto& [name, sql] : indexes) database.execute(sql);
    makeLargePlaylists(database, sortKey, size);
    keepFromScans(database);
    database.execute("PRAGMA wal_checkpoint(TRUNCATE)");
}

}  // namespace

void makeLargeLibrary(const fs::path& folder, const LargeLibrarySize& size) {
    const auto file = databaseIn(folder);
    if (fs::exists(file)) throw std::runtime_error(file.string() + " exists already");
    fs::create_directories(folder);
    Database database(file, Database::Access::ReadWrite);
    Schema::prepare(database);
    generate(database, size);
}

fs::path cachedLargeLibrary(const fs::path& cache, const LargeLibrarySize& size) {
    const fs::path fresh = cache / "unfinished";
    fs::remove_all(fresh);
    fs::create_directories(fresh);
    std::string stamp;
    {
        Database database(databaseIn(fresh), Database::Access::ReadWrite);
        Schema::prepare(database);
        stamp = stampOf(database, size);
        if (!fs::exists(cache / stamp)) generate(database, size);
    }
    if (fs::exists(cache / stamp))
        fs::remove_all(fresh);
    else
        fs::rename(fresh, cache / stamp);
    return cache / stamp;
}

}  // namespace helmo::large

#include "Benchmarks/MillionSongsLibrary.h"

#include <cstdio>
#include <vector>

#include "Benchmarks/GeneratedMusic.h"
#include "Host/Library/Database.h"
#include "Host/Library/Schema.h"
#include "Host/Library/SortKey.h"
#include "Host/Library/TrackStore.h"

namespace helmo::benchmarks {

namespace fs = std::filesystem;

namespace {

constexpr int trackCount = 1'000'000;
constexpr int tracksPerFolder = 1'000;
constexpr const char* fileName = "library.sqlite";
/** To be changed with what is generated. */
constexpr const char* generation = "songs 2";

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
std::string stampOf(Database& database) {
    std::string text = generation + SortKey().stamp();
    for (const char* kind : {"table", "index", "trigger"})
        for (const auto& [name, sql] : madeBy(database, kind)) text += sql;
    return std::to_string(std::hash<std::string>()(text));
}

void storeTracks(Database& database) {
    const SortKey sortKey;
    TrackCache cache;
    Transaction transaction(database);
    TrackStore store(database, sortKey, cache);
    store.renewSortKeys();
    GeneratedMusic music;
    for (int at = 0; at < trackCount; ++at) {
        const MusicFile file{"/generated/" + std::to_string(at / tracksPerFolder),
                             std::to_string(at) + ".flac", at, at};
        store.store(file, music.next(), {.track = 0, .mayHaveMoved = false});
        if (at % 100'000 == 0) std::fprintf(stderr, "generating songs: %d of %d\n", at, trackCount);
    }
    store.commit(transaction);
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

void generate(Database& database) {
    database.execute("PRAGMA synchronous = OFF; PRAGMA cache_size = -400000");
    const auto indexes = madeBy(database, "index");
    for (const auto& [name, sql] : indexes) database.execute("DROP INDEX " + name);
    storeTracks(database);
    for (const auto& [name, sql] : indexes) database.execute(sql);
    keepFromScans(database);
    database.execute("PRAGMA wal_checkpoint(TRUNCATE)");
}

}  // namespace

fs::path millionSongsFolder() {
    const fs::path cache = HELMO_BENCHMARK_DATA, fresh = cache / "unfinished";
    fs::remove_all(fresh);
    fs::create_directories(fresh);
    std::string stamp;
    {
        Database database(fresh / fileName, Database::Access::ReadWrite);
        Schema::prepare(database);
        stamp = stampOf(database);
        if (!fs::exists(cache / stamp)) generate(database);
    }
    if (fs::exists(cache / stamp))
        fs::remove_all(fresh);
    else
        fs::rename(fresh, cache / stamp);
    return cache / stamp;
}

fs::path millionSongsDatabase() { return millionSongsFolder() / fileName; }

}  // namespace helmo::benchmarks

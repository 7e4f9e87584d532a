#include "Host/Library/TrackIdentity.h"

#include <filesystem>

#include "Host/Library/MediaFiles.h"

namespace helmo::TrackIdentity {

namespace {

constexpr double longestDifference = 2;
/** Where a medium holds one song a hundred thousand times, each would look for all the others. */
constexpr int mostLookedFor = 1000;

std::int64_t vanished(const SqlQuery& query, Database& database, const Tracks& others) {
    auto rows = database.prepare(query);
    for (int left = mostLookedFor; left > 0 && rows.step();) {
        if (others.contains(rows.integer(0))) continue;
        if (!FileStamp::of(std::filesystem::path(rows.text(1)) / rows.text(2))) return rows.integer(0);
        --left;
    }
    return 0;
}

}  // namespace

std::int64_t of(const TrackTags& tags) {
    if (tags.artist.empty() && tags.albumTitle.empty()) return 0;
    std::uint64_t hash = 0xcbf29ce484222325u;
    const auto add = [&hash](unsigned char byte) { hash = (hash ^ byte) * 0x100000001b3u; };
    for (const std::string* name : {&tags.title, &tags.artist, &tags.albumTitle}) {
        for (const char c : *name)
            add(static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c));
        add('\n');
    }
    for (const int number : {tags.discNumber, tags.trackNumber})
        for (int shift = 0; shift < 32; shift += 8) add(static_cast<unsigned char>(number >> shift & 0xff));
    return static_cast<std::int64_t>(hash >> 1 | 1);
}

std::int64_t movedTrack(Database& database, const std::string& fileName, std::int64_t size,
                        std::int64_t mtime, const Tracks& others) {
    return vanished({"SELECT t.id, f.path, t.file_name FROM track t JOIN folder f ON f.id = t.folder_id "
                     "WHERE t.mtime = ? AND t.size = ? AND t.file_name = ? ORDER BY t.id",
                     {mtime, size, fileName}},
                    database, others);
}

std::int64_t lostTrack(Database& database, std::int64_t identity, double duration, const Tracks& others) {
    if (identity == 0) return 0;
    return vanished({"SELECT t.id, f.path, t.file_name FROM track t JOIN folder f ON f.id = t.folder_id "
                     "WHERE t.identity = ? AND t.identity <> 0 AND ABS(t.duration - ?) <= ? ORDER BY t.id",
                     {identity, duration, longestDifference}},
                    database, others);
}

}  // namespace helmo::TrackIdentity

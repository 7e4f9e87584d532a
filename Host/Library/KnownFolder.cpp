#include "Host/Library/KnownFolder.h"

#include "Host/Library/TrackStore.h"

namespace helmo {

namespace {

KnownFolder readFrom(Database& database, const std::filesystem::path& folder) {
    KnownFolder known;
    auto row =
        database.prepare({"SELECT id, picture, picture_stamp FROM folder WHERE path = ?", {folder.native()}});
    if (!row.step()) return known;
    known.id = row.integer(0);
    known.picture = row.text(1);
    known.pictureStamp = row.integer(2);
    auto tracks = database.prepare(
        {"SELECT file_name, size, mtime, id, present FROM track WHERE folder_id = ? ORDER BY file_name",
         {known.id}});
    while (tracks.step())
        known.tracks.push_back({tracks.text(0), tracks.integer(1), tracks.integer(2), tracks.integer(3),
                                tracks.integer(4) != 0});
    auto unreadable = database.prepare(
        {"SELECT file_name, size, mtime FROM unreadable WHERE folder_id = ? AND part = ? ORDER BY file_name",
         {known.id, static_cast<std::int64_t>(FilePart::Tags)}});
    while (unreadable.step())
        known.unreadable.push_back({unreadable.text(0), unreadable.integer(1), unreadable.integer(2)});
    return known;
}

}  // namespace

std::unique_ptr<const KnownFolder> KnownFolder::read(Readers& readers, const std::filesystem::path& folder) {
    return readers.read(std::unique_ptr<const KnownFolder>(), [&](Database& database) {
        return std::make_unique<const KnownFolder>(readFrom(database, folder));
    });
}

}  // namespace helmo

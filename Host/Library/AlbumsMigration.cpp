#include "Host/Library/AlbumsMigration.h"

#include <filesystem>
#include <utility>
#include <vector>

#include "Host/Library/AlbumFolder.h"

namespace helmo {

namespace {

void linkDiscs(Database& database) {
    std::vector<std::pair<std::int64_t, std::string>> discs;
    auto rows = database.prepare({"SELECT id, path FROM folder", {}});
    while (rows.step()) {
        const AlbumFolder album = AlbumFolder::of(rows.text(1));
        if (album.disc != 0) discs.emplace_back(rows.integer(0), album.path.native());
    }
    for (const auto& [folder, around] : discs) {
        database.run({"INSERT OR IGNORE INTO folder (path) VALUES (?)", {around}});
        database.run({"UPDATE folder SET disc_of = (SELECT id FROM folder WHERE path = ?) WHERE id = ?",
                      {around, folder}});
    }
}

}  // namespace

void tellAlbumsByPlace(Database& database) {
    // album_claim: what a file's own tags say of its album: 1, an album artist; 2, that it is a compilation.
    // album_of_place: the albums that tracks of one title in one place are sorted into.
    database.execute(
        "ALTER TABLE folder ADD COLUMN disc_of INTEGER REFERENCES folder (id);"
        "CREATE INDEX folder_of_disc ON folder (disc_of) WHERE disc_of IS NOT NULL;"
        "ALTER TABLE track ADD COLUMN album_claim INTEGER NOT NULL DEFAULT 0;"
        "ALTER TABLE track ADD COLUMN identity INTEGER NOT NULL DEFAULT 0;"
        "CREATE TABLE album_of_place ("
        "place_id INTEGER NOT NULL REFERENCES folder (id), folded TEXT NOT NULL,"
        "album_id INTEGER NOT NULL REFERENCES collection (id),"
        "PRIMARY KEY (place_id, folded, album_id)) WITHOUT ROWID;"
        "CREATE INDEX place_of_album ON album_of_place (album_id);");
    linkDiscs(database);
    database.execute(
        "INSERT OR IGNORE INTO album_of_place SELECT IFNULL(f.disc_of, f.id), c.folded, c.id FROM track t "
        "JOIN folder f ON f.id = t.folder_id JOIN collection c ON c.id = t.album_id WHERE c.folded <> '';"
        // An album artist who isn't the artist was named.
        "UPDATE track SET size = -1, album_claim = 2 * is_compilation + "
        "((SELECT folded FROM collection WHERE id = album_artist_id) NOT IN "
        "('', (SELECT folded FROM collection WHERE id = artist_id)));");
}

}  // namespace helmo

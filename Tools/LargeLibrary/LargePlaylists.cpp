#include "Tools/LargeLibrary/LargePlaylists.h"

#include <algorithm>

#include "Tools/LargeLibrary/GeneratedMusic.h"

namespace helmo::large {

namespace {

constexpr std::size_t playlistsPerFolder = 10, shortest = 10, commonLength = 190;
/** Apart from the seed of the songs. */
constexpr std::uint32_t seed = 7;

class Playlists {
public:
    Playlists(Database& database, const SortKey& sortKey, std::int64_t tracks)
        : _database(database), _sortKey(sortKey), _tracks(tracks) {}

    std::int64_t add(const std::string& name, std::int64_t parent, bool isFolder) {
        ++_made;
        _database.run(
            {"INSERT INTO playlist (pid, name, sort_key, parent_id, is_folder) VALUES (?, ?, ?, ?, ?)",
             {_made * 1'000'003, name, Blob{_sortKey.make(name)}, parent == 0 ? SqlValue() : SqlValue(parent),
              std::int64_t{isFolder}}});
        return _database.lastInsertedRow();
    }
    void addWithSongs(const std::string& name, std::int64_t parent, std::int64_t songs) {
        const auto playlist = add(name, parent, false);
        for (std::int64_t position = 0; position < songs; ++position)
            _database.run({"INSERT INTO playlist_item (playlist_id, position, track_id) VALUES (?, ?, ?)",
                           {playlist, position, someTrack()}});
    }
    void addSome(std::int64_t count) {
        std::int64_t folder = 0, outerFolder = 0;
        for (std::int64_t left = count; left > 0; --left) {
            if (left % static_cast<std::int64_t>(playlistsPerFolder) == 0) {
                // Two folders and then none, the second one within the first.
                const bool isNested = folder != 0 && outerFolder == 0;
                outerFolder = isNested ? folder : 0;
                const bool isNone = !isNested && folder != 0;
                folder = isNone ? 0 : add(_names.name(), outerFolder, true);
            }
            addWithSongs(_names.name(), folder,
                         static_cast<std::int64_t>(shortest + _names.evenly(commonLength)));
        }
    }

private:
    std::int64_t someTrack() {
        return 1 + static_cast<std::int64_t>(_names.evenly(static_cast<std::size_t>(_tracks)));
    }

    Database& _database;
    const SortKey& _sortKey;
    const std::int64_t _tracks;
    GeneratedMusic _names{seed};
    std::int64_t _made = 0;
};

}  // namespace

void makeLargePlaylists(Database& database, const SortKey& sortKey, const LargeLibrarySize& size) {
    if (size.playlists == 0 || size.tracks == 0) return;
    Transaction transaction(database);
    Playlists playlists(database, sortKey, size.tracks);
    playlists.addWithSongs(longestPlaylistName, 0, std::min(size.longestPlaylist, size.tracks));
    playlists.addSome(size.playlists - 1);
    transaction.commit();
}

}  // namespace helmo::large

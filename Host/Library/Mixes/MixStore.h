#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Host/Library/Database.h"
#include "Host/Library/Mixes/Mix.h"
#include "Host/Library/SortKey.h"

namespace helmo {

/** How much there was in a library when its mixes were made, and the texts they were named by. */
struct MixesMade {
    std::int64_t songs = 0;
    /** Rows above these were added since. */
    std::int64_t lastTrack = 0, lastCollection = 0;
    std::string texts;
};

/** Keeps mixes as playlists. Lives within one transaction of the writing connection; the static operations
   read, on any connection. Throws. */
class MixStore {
public:
    MixStore(Database& database, const SortKey& sortKey) : _database(database), _sortKey(sortKey) {}

    /** Stores a mix, in the playlist that its subject already has. */
    void store(const Mix& mix);
    /** Empties and hides all other mixes. Their playlists stay, for when their subjects make mixes again. */
    void keepOnly(const std::vector<Mix>& mixes);
    /** Shows or hides all mixes. */
    void setShown(bool areShown);
    void noteMade(const MixesMade& made);

    /** None before the first making. */
    static std::optional<MixesMade> made(Database& database);
    /** What there is now. */
    static MixesMade current(Database& database);
    /** Songs and albums that were added since then; at most `enough` are counted. */
    static std::int64_t songsAddedSince(Database& database, const MixesMade& made, std::int64_t enough);
    static std::int64_t albumsAddedSince(Database& database, const MixesMade& made);
    /** Whether a mix has lost so many of its songs that it is none any more. */
    static bool isAnyTooShort(Database& database);
    /** Whether some are not as `setShown` would leave them. */
    static bool needsShown(Database& database, bool areShown);
    /** Names of the artists that a mix stands for; empty for other playlists. */
    static std::vector<std::string> representativeArtists(Database& database, std::int64_t persistentID);
    /** The playlist that is filled from a song that plays; 0 without one. */
    static std::int64_t activePlaylist(Database& database);

private:
    std::int64_t playlistOf(const Mix& mix);

    Database& _database;
    const SortKey& _sortKey;
};

}  // namespace helmo

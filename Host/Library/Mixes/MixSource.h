#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "Host/Library/Mixes/Mix.h"
#include "Host/Library/Readers.h"

namespace helmo {

/** What makes a row `t` of the track table a song for mixes: music that is there, and nothing spoken. */
inline constexpr const char* isMixMusic =
    "t.present = 1 AND (t.media_type & 1) <> 0 AND (t.media_type & 14) = 0";

/** Reads what mixes are made from: some ten thousands of rows at most, however many a library has, in short
   statements on the connection for what takes long, so that nobody waits. Only music that names its
   artist. What was begun ends early once `isStopping`. Not on the main thread. */
class MixSource {
public:
    /** Both outlive it. */
    MixSource(Readers& readers, const std::function<bool()>& isStopping);

    /** Songs of which to make groups: all of a small library, else some from everywhere in it, the same ones
       as long as it doesn't change. */
    std::vector<MixSong> songs() const;
    /** The artists who have the most songs, those first. */
    std::vector<std::int64_t> leadingArtists(std::size_t count) const;
    /** Artists who share compilations with `artist`, those who share the most first. */
    std::vector<std::int64_t> companionsOf(std::int64_t artist) const;
    /** Songs of an artist, at most `limit`. */
    std::vector<MixSong> songsOfArtist(std::int64_t artist, std::int64_t limit) const;
    /** What an artist or a genre is called, and by which ID it is known for good. */
    struct Name {
        std::string text;
        std::int64_t persistentID = 0;
    };
    Name nameOf(std::int64_t collection) const;

private:
    std::vector<MixSong> allSongs() const;
    std::vector<MixSong> sampledSongs(std::int64_t firstRow, std::int64_t lastRow) const;
    /** The collection of a kind for what has no name there; 0 when there is nothing. */
    std::int64_t unnamed(std::int64_t kind) const;
    std::int64_t integer(const SqlQuery& query) const;
    std::vector<std::int64_t> integers(const SqlQuery& query) const;
    MixSong songIn(const Statement& row) const;

    Readers& _readers;
    const std::function<bool()>& _isStopping;
    const std::int64_t _unnamedArtist, _unnamedGenre;
};

}  // namespace helmo

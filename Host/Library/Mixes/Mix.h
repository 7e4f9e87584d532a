#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace helmo {

/** What the making of mixes knows of a song: its row, and the rows of what it belongs to. */
struct MixSong {
    std::int64_t id = 0, artist = 0, album = 0;
    /** 0: it names none. */
    std::int64_t genre = 0;
    int year = 0;
};

/** A mix as it is stored. */
struct Mix {
    /** What it was made around; a mix made again around the same is the same playlist. */
    std::string subject;
    std::string name;
    /** Rows of tracks in the order in which they play. */
    std::vector<std::int64_t> songs;
    /** Rows of the artists that it stands for, the most present first. */
    std::vector<std::int64_t> artists;
};

/** So many songs make a mix, from so many artists; less is no mix. */
inline constexpr std::size_t fewestMixSongs = 10, mostMixSongs = 100, fewestMixArtists = 2;
/** Mixes of one library. */
inline constexpr std::size_t mostMixes = 12;

}  // namespace helmo

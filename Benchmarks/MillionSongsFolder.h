#pragma once

#include "Tools/LargeLibrary/LargeLibrary.h"

namespace helmo::benchmarks {

/** A data folder with a library of a million songs, made when it is first needed. Throws. */
inline std::filesystem::path millionSongsFolder() {
    return large::cachedLargeLibrary(HELMO_BENCHMARK_DATA, large::LargeLibrarySize());
}
inline std::filesystem::path millionSongsDatabase() { return large::databaseIn(millionSongsFolder()); }
/** The same with a hundredth of it. */
inline std::filesystem::path tenThousandSongsFolder() {
    return large::cachedLargeLibrary(HELMO_BENCHMARK_DATA,
                                     {.tracks = 10'000, .playlists = 30, .longestPlaylist = 1'000});
}

}  // namespace helmo::benchmarks

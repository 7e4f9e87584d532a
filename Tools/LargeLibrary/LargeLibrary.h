#pragma once

#include <cstdint>
#include <filesystem>

namespace helmo::large {

/** What is in it. */
struct LargeLibrarySize {
    std::int64_t tracks = 1'000'000;
    std::int64_t playlists = 300;
    /** Songs of the longest playlist, which is called "All of It". */
    std::int64_t longestPlaylist = 10'000;
};
inline constexpr const char* longestPlaylistName = "All of It";

/** Makes `folder` with the library that helmo would have after scanning that much music; the same each time.
   The files don't exist, and no scan hides them for that. Throws when there is something already. */
void makeLargeLibrary(const std::filesystem::path& folder, const LargeLibrarySize& size);

/** The same in a folder of its own within `cache`, made once for each version of the schema and each size. */
std::filesystem::path cachedLargeLibrary(const std::filesystem::path& cache, const LargeLibrarySize& size);

/** The database in such a folder. */
inline std::filesystem::path databaseIn(const std::filesystem::path& folder) {
    return folder / "library.sqlite";
}

}  // namespace helmo::large

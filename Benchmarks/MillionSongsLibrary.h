#pragma once

#include <filesystem>

namespace helmo::benchmarks {

/** Makes, once for each version of the schema, a data folder with the library of a million songs that helmo
   would have after scanning them, and returns it. Their files don't exist, and no scan hides them for that.
   Throws. */
std::filesystem::path millionSongsFolder();
std::filesystem::path millionSongsDatabase();

}  // namespace helmo::benchmarks

#pragma once

#include <cstddef>
#include <filesystem>

namespace helmo::benchmarks {

/** A folder with `count` small, valid music files of five kinds in albums of a dozen or so, tagged as people
   tag theirs, with covers in folders and now and then in files. Made once and kept for later runs. Throws
   when it can't be made. */
std::filesystem::path scanMusic(std::size_t count);

}  // namespace helmo::benchmarks

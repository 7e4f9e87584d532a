#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "Host/Library/Mixes/Mix.h"

namespace helmo {

/** Which songs of a group a mix takes, and in which order. */
namespace MixOrder {

/** At most `mostMixSongs` of them, in an order that is mixed but the same for the same seed. No artist takes
   up more than half of the mix, nor many places where others wait, and none follows himself. */
std::vector<MixSong> mixed(std::vector<MixSong> songs, std::uint64_t seed);

/** The same songs, each as near to its place as it can stand without following one of the same artist; where
   an artist has more than all others together, his last ones follow each other. */
std::vector<MixSong> spread(const std::vector<MixSong>& songs);

/** The same number for the same text, on any machine. */
std::uint64_t seedOf(std::string_view text);

}  // namespace MixOrder

}  // namespace helmo

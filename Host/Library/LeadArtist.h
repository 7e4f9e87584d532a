#pragma once

#include <string>
#include <vector>

namespace helmo {

/** The artist in the first place, without his guests. */
struct LeadArtist {
    std::string name;
    /** Tells artists apart; empty for a file without an artist. */
    std::string folded;

    /** Of each artist of one album: "Ann feat. Bob" is Ann, and "Ann & Bob" is Ann where Ann is among them.
     */
    static std::vector<LeadArtist> of(const std::vector<std::string>& artists);
};

}  // namespace helmo

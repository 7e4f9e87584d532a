#pragma once

#include <string>

namespace helmo {

/** Formats of the names of mixes, in the driver's language. */
struct MixTexts {
    /** Of a genre and the year in which a decade began; of that year; of an artist. */
    std::string genreOfDecade = "%@ of the %@s", decade = "The %@s", artist = "%@ and others";

    /** The platform's texts. Any thread. */
    static MixTexts localized();
    /** Differs when names would. */
    std::string stamp() const { return genreOfDecade + '\n' + decade + '\n' + artist; }
};

}  // namespace helmo

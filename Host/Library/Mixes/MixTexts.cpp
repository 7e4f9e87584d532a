#include "Host/Library/Mixes/MixTexts.h"

#include "Platform/Foundation/PlatformText.h"

namespace helmo {

MixTexts MixTexts::localized() {
    const MixTexts english;
    return {zornic::platformText("MIX_GENRE_OF_DECADE_FORMAT", english.genreOfDecade),
            zornic::platformText("MIX_DECADE_FORMAT", english.decade),
            zornic::platformText("MIX_ARTIST_FORMAT", english.artist)};
}

}  // namespace helmo

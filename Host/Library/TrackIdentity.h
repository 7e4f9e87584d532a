#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "Host/Library/Database.h"
#include "Host/Library/TagReader.h"

namespace helmo {

/** Knows a track again that is elsewhere now. */
namespace TrackIdentity {

/** Names a track by what its tags say: title, artist, album, disc and number, whatever the case of plain
   letters. 0 for one of which that is too little: it has neither artist nor album. */
std::int64_t of(const TrackTags& tags);

/** Tracks that other files are already. */
using Tracks = std::set<std::int64_t>;

/** The track of a file that vanished and had that name, size and time; 0 without one. */
std::int64_t movedTrack(Database& database, const std::string& fileName, std::int64_t size,
                        std::int64_t mtime, const Tracks& others);
/** The track of a file that vanished and had that identity, and lasted as long within two seconds: it was
   tagged or encoded anew, or copied to another medium. 0 without one. */
std::int64_t lostTrack(Database& database, std::int64_t identity, double duration, const Tracks& others);

}  // namespace TrackIdentity

}  // namespace helmo

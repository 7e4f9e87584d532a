#pragma once

#include "Host/Library/Database.h"

namespace helmo {

/** The library's tables. A track's row stays when its file is gone (`present` 0), with everything that is
   known of it; it then takes part in no list and no count. Persistent IDs are random 63-bit numbers, given
   once and kept as long as the row. Lists are ordered by keys that were made when a track was stored and
   stand in the track's row itself, so that every order is one index; the first two bytes of a key are its
   section. How many tracks each section and each collection has is kept up to date by triggers. */
namespace Schema {

/** Makes the tables or brings older ones up to date, in one transaction. Throws; a file made by a newer
   version is a DatabaseError as well. */
void prepare(Database& database);

/** Orders that a plain list of tracks is counted for. */
enum class CountedOrder : std::int64_t { Title = 0, Artist = 1, AlbumArtist = 2, Album = 3 };

}  // namespace Schema

}  // namespace helmo

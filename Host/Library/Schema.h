#pragma once

#include <string>
#include <vector>

#include "Host/Library/Database.h"

namespace helmo {

/** The library's tables. A track's row stays when its file is gone (`present` 0), with everything that is
   known of it; it then takes part in no list and no count. Persistent IDs are random 63-bit numbers, given
   once and kept as long as the row. Lists are ordered by keys that were made when a track was stored and
   stand in the track's row itself, so that every order is one index; the first two bytes of a key are its
   section. How many tracks have keys that start with the same `countedBytes` bytes, and how many each
   collection has, is counted by `TrackCounts` when tracks are added, many at once, and kept up to date by
   triggers when they change or go; collections themselves are counted by `CollectionSections`. */
namespace Schema {

/** Makes the tables or brings older ones up to date, in one transaction. Throws; a file made by a newer
   version is a DatabaseError as well. */
void prepare(Database& database);

/** What speeds up nothing that is needed while a library is filled for the first time: made at its end, all
   rows at once, these indices cost a third. Without them everything is found, only slower. */
void dropLateIndices(Database& database);
/** Statements for the indices that are missing, each to be run by itself: after a first scan, or one that was
   cut off. */
std::vector<std::string> missingIndices(Database& database);

/** Orders that a plain list of tracks is counted for. */
enum class CountedOrder : std::int64_t { Title = 0, Artist = 1, AlbumArtist = 2, Album = 3 };

/** Of a key, by which tracks are counted: some letters more than the section, so that what lies anywhere in a
   section is found without walking through the section. */
inline constexpr int countedBytes = 6;

}  // namespace Schema

}  // namespace helmo

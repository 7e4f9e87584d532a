#pragma once

#include "Host/Library/Database.h"

namespace helmo {

/** Counts of collections by the first bytes of their keys, so that a list of all albums or artists is opened
   as one of all tracks is. Each collection has the bits of all media types that its present tracks are of, 0
   for one without any; both are kept up to date by triggers on what `TrackCounts` and the tracks' own
   triggers count. */
namespace CollectionSections {

/** Orders that the collections of a kind are counted for: by name, and, albums only, by whose they are. */
enum class Order : std::int64_t { Name = 0, Owner = 1 };

/** A step of the schema. Throws. */
void prepare(Database& database);

}  // namespace CollectionSections

}  // namespace helmo

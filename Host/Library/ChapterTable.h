#pragma once

#include <vector>

#include "Host/Library/Database.h"
#include "Host/Library/TagReader.h"
#include "Platform/Media/MediaChapter.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

/** The chapters of tracks, which go with their rows. */
namespace ChapterTable {

/** Makes the table. */
void make(Database& database);
/** Stores what a new track holds, or what an old one holds now. Throws. */
void store(Database& database, std::int64_t track, const std::vector<TrackChapter>& chapters, bool isNew);
/** Those of a track that is present, by their start; they are counted on from the earlier parts of the same
   album that are of the same kind. Throws. */
std::vector<zornic::MediaChapter> ofItem(Database& database, zornic::PersistentID item,
                                         zornic::MediaChapterType type);

}  // namespace ChapterTable

}  // namespace helmo

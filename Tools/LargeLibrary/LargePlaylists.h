#pragma once

#include "Host/Library/Database.h"
#include "Host/Library/SortKey.h"
#include "Tools/LargeLibrary/LargeLibrary.h"

namespace helmo::large {

/** Adds playlists of some dozen songs, two thirds of them in folders, folders in folders among them, and the
   longest one at the top. Throws. */
void makeLargePlaylists(Database& database, const SortKey& sortKey, const LargeLibrarySize& size);

}  // namespace helmo::large

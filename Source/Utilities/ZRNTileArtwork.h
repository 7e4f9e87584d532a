#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Media/ArtworkCatalog.h"

namespace zornic {

/** Loads the catalogues' pictures and puts them together in one, in two columns. `completion` on the main
   thread, later; what could not be loaded is left out. The pictures are kept under the identifier as long as
   the requesting context lives. Main thread. */
void ZRNTileArtworkFromCatalogs(const std::vector<std::shared_ptr<ArtworkCatalog>>& catalogs, Size tileSize,
                                const std::string& cacheIdentifier,
                                const std::shared_ptr<Object>& requestingContext,
                                std::function<void(const Image&)> completion);

/** Draws the pictures, in the order of their keys, row by row in two columns of tiles, sharp at `scale`
   pixels a point. Black where there is none; without any picture the image has no height. */
Image ZRNTileImagesWithDictionary(const std::map<std::size_t, Image>& images, Size tileSize, double scale);

}  // namespace zornic

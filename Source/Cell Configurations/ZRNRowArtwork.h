#pragma once

#include <memory>
#include <string>

#include "Platform/Media/ArtworkCatalog.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

/** Loads a picture at 36 x 36 points, at the scale of the screen that shows `viewController`, and hands it to
   `show`, which runs no more once `destination` is gone or asks for another; the placeholder of
   `placeholderStyle` until it is there, and where there is none. Main thread. */
void ZRNLoadRowArtwork(const std::shared_ptr<ArtworkCatalog>& catalog, std::int64_t placeholderStyle,
                       const std::string& cacheIdentifier, ViewController& viewController,
                       const std::shared_ptr<Object>& destination, std::function<void(const Image&)> show);

/** The same for a view that has an artwork image. */
template <class ArtworkView>
void ZRNLoadRowArtwork(const std::shared_ptr<ArtworkCatalog>& catalog, std::int64_t placeholderStyle,
                       const std::string& cacheIdentifier, ViewController& viewController,
                       const std::shared_ptr<ArtworkView>& view) {
    ZRNLoadRowArtwork(catalog, placeholderStyle, cacheIdentifier, viewController, view,
                      [weakView = std::weak_ptr(view)](const Image& image) {
                          if (const auto living = weakView.lock()) living->setArtworkImage(image);
                      });
}

}  // namespace zornic

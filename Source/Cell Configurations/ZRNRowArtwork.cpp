#include "Cell Configurations/ZRNRowArtwork.h"

#include "Platform/Toolkit/Window.h"
#include "Utilities/ZRNHelmoScreen.h"

namespace zornic {
namespace {

constexpr Size artworkSize{36, 36};

double scaleOfScreenAround(ViewController& viewController) {
    const Window* window = viewController.view()->window();
    const auto screen = window ? window->screen() : nullptr;
    return screen ? screen->scale() : 1;
}

}  // namespace

void ZRNLoadRowArtwork(const std::shared_ptr<ArtworkCatalog>& catalog, std::int64_t placeholderStyle,
                       const std::string& cacheIdentifier, ViewController& viewController,
                       const std::shared_ptr<Object>& destination, std::function<void(const Image&)> show) {
    if (!catalog) {
        // A picture on its way to what was shown before must not arrive here.
        ArtworkCatalog::unbind(destination);
        show(ZRNAlbumPlaceholderImageWithStyle(placeholderStyle));
        return;
    }
    catalog->setFittingSize(artworkSize);
    catalog->setDestinationScale(scaleOfScreenAround(viewController));
    catalog->setCacheIdentifier(cacheIdentifier, strong<Object>(&viewController));
    catalog->setDestination(destination, [show, placeholderStyle](const Image& image) {
        show(image ? image : ZRNAlbumPlaceholderImageWithStyle(placeholderStyle));
    });
    // What is reused shows its former picture until then; the placeholder is no lie.
    if (!catalog->imageAtHand()) show(ZRNAlbumPlaceholderImageWithStyle(placeholderStyle));
}

}  // namespace zornic

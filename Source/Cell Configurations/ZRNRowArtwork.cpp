#include "Cell Configurations/ZRNRowArtwork.h"

#include "Platform/Toolkit/Window.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNRowMetrics.h"

namespace zornic {
namespace {

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
    catalog->setFittingSize(ZRNRowArtworkFrame().size);
    catalog->setDestinationScale(scaleOfScreenAround(viewController));
    catalog->setCacheIdentifier(cacheIdentifier, strong<Object>(&viewController));
    // What is reused still shows its former picture. Until its own is there, another screen's copy will do.
    const Image atHand = catalog->imageAtHand();
    show(atHand ? atHand : ZRNAlbumPlaceholderImageWithStyle(placeholderStyle));
    catalog->setDestination(destination, [show, placeholderStyle](const Image& image) {
        show(image ? image : ZRNAlbumPlaceholderImageWithStyle(placeholderStyle));
    });
}

}  // namespace zornic

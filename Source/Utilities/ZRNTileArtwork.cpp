#include "Utilities/ZRNTileArtwork.h"

#include <cmath>

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Toolkit/Canvas.h"

namespace zornic {
namespace {

constexpr std::size_t columns = 2;

using Images = std::map<std::size_t, Image>;

/** One for all pictures that are put together; it lives as long as the process. */
DispatchQueue& tilingQueue() {
    static auto& queue = *new SerialQueue("org.zornicui.artwork-tiling");
    return queue;
}

}  // namespace

void ZRNTileArtworkFromCatalogs(const std::vector<std::shared_ptr<ArtworkCatalog>>& catalogs, Size tileSize,
                                const std::string& cacheIdentifier,
                                const std::shared_ptr<Object>& requestingContext,
                                std::function<void(const Image&)> completion) {
    const auto images = std::make_shared<Images>();
    const auto group = std::make_shared<DispatchGroup>();
    for (std::size_t index = 0; index < catalogs.size(); ++index) {
        catalogs[index]->setFittingSize(tileSize);
        catalogs[index]->setCacheIdentifier(cacheIdentifier, requestingContext);
        group->enter();
        catalogs[index]->requestImage([images, group, index](const Image& image) {
            tilingQueue().async([images, group, index, image] {
                if (image) images->emplace(index, image);
                group->leave();
            });
        });
    }
    const double scale = catalogs.empty() ? 1 : catalogs.front()->destinationScale();
    group->notify(mainQueue(), [images, tileSize, scale, completion = std::move(completion)] {
        completion(ZRNTileImagesWithDictionary(*images, tileSize, scale));
    });
}

Image ZRNTileImagesWithDictionary(const std::map<std::size_t, Image>& images, Size tileSize, double scale) {
    auto* const loader = ImageLoader::current();
    if (!loader) return {};
    const Size size{columns * tileSize.width,
                    tileSize.height * std::ceil(static_cast<double>(images.size()) * 0.5)};
    return Image(loader->sourceByDrawing(size, true, scale, [&](Canvas& canvas) {
        std::size_t place = 0;
        for (const auto& [index, image] : images) {
            const Point corner{static_cast<double>(place % columns) * tileSize.width,
                               static_cast<double>(place / columns) * tileSize.height};
            canvas.drawImage(image, {corner, tileSize}, Color::whiteColor());
            ++place;
        }
    }));
}

}  // namespace zornic

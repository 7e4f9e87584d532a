#include "Cell Configurations/ZRNGenreCellConfiguration.h"

#include "Platform/Media/MediaItem.h"
#include "Utilities/ZRNGenreImage.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {

const ZRNGenreCellConfiguration& ZRNGenreCellConfiguration::instance() {
    static const ZRNGenreCellConfiguration configuration;
    return configuration;
}

const std::vector<std::string>& ZRNGenreCellConfiguration::collectionPropertiesToFetch() const {
    using namespace MediaCollectionProperty;
    static const std::vector<std::string> properties = {GenreName, RepresentativeItemPersistentID, ItemCount};
    return properties;
}

void ZRNGenreCellConfiguration::configureCellWithViewControllerEntityAtIndexAnimated(
    const std::shared_ptr<TableViewCell>& cell, QueryTableViewController& viewController,
    const std::shared_ptr<MediaEntity>& entity, std::uint64_t, bool) const {
    const Dictionary values = entity->valuesForProperties(collectionPropertiesToFetch());
    const std::string title = ZRNTextOrLocalizedString(
        valueForKey(values, MediaCollectionProperty::GenreName).asText(), "UNKNOWN_GENRE");
    cell->textLabel()->setText(title);
    cell->setAccessoryType(TableViewCellAccessory::DisclosureIndicator);
    if (const Image image = ZRNGenreImageForGenreName(title)) {
        showArtwork(image, cell);
        return;
    }
    const auto item = entity->representativeItem();
    requestArtwork(item ? item->artworkCatalog() : nullptr, 0, cell, viewController);
}

}  // namespace zornic

#include "Cell Configurations/ZRNAlbumCellConfiguration.h"

#include "Platform/Media/MediaItem.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {

const ZRNAlbumCellConfiguration& ZRNAlbumCellConfiguration::instance() {
    static const ZRNAlbumCellConfiguration configuration;
    return configuration;
}

const std::vector<std::string>& ZRNAlbumCellConfiguration::collectionPropertiesToFetch() const {
    using namespace MediaCollectionProperty;
    static const std::vector<std::string> properties = {AlbumTitle, AlbumArtist,
                                                        RepresentativeItemPersistentID, ItemCount};
    return properties;
}

void ZRNAlbumCellConfiguration::configureCellWithViewControllerEntityAtIndexAnimated(
    const std::shared_ptr<TableViewCell>& cell, QueryTableViewController& viewController,
    const std::shared_ptr<MediaEntity>& entity, std::uint64_t, bool) const {
    const Dictionary values = entity->valuesForProperties(collectionPropertiesToFetch());
    cell->textLabel()->setText(ZRNTextOrLocalizedString(
        valueForKey(values, MediaCollectionProperty::AlbumTitle).asText(), "UNKNOWN_ALBUM"));
    cell->detailTextLabel()->setText(ZRNTextOrLocalizedString(
        valueForKey(values, MediaCollectionProperty::AlbumArtist).asText(), "UNKNOWN_ALBUM_ARTIST"));
    const auto item = entity->representativeItem();
    requestArtwork(item ? item->artworkCatalog() : nullptr, 1, cell, viewController);
}

}  // namespace zornic

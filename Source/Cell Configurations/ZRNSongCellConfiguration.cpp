#include "Cell Configurations/ZRNSongCellConfiguration.h"

#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Platform/Media/MediaItem.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {
const ZRNSongCellConfiguration& ZRNSongCellConfiguration::instance() {
    static const ZRNSongCellConfiguration configuration;
    return configuration;
}

const std::vector<std::string>& ZRNSongCellConfiguration::mediaEntityPropertiesToFetch() const {
    static const std::vector<std::string> properties = [this] {
        using namespace MediaItemProperty;
        const auto own = propertiesByAdding({Title, Artist, AlbumTitle, IsExplicit},
                                            ZRNCellConfiguration::mediaEntityPropertiesToFetch());
        return propertiesByAdding(own, MediaItem::artworkCatalogCacheProperties());
    }();
    return properties;
}

void ZRNSongCellConfiguration::configureCellWithViewControllerEntityAtIndexAnimated(
    const std::shared_ptr<TableViewCell>& cell, QueryTableViewController& viewController,
    const std::shared_ptr<MediaEntity>& entity, std::uint64_t, bool) const {
    const Dictionary values = entity->valuesForProperties(mediaEntityPropertiesToFetch());
    cell->textLabel()->setText(
        ZRNTextOrLocalizedString(valueForKey(values, MediaItemProperty::Title).asText(), "UNKNOWN_TITLE"));

    StyledText detail(ZRNTextOrLocalizedString(valueForKey(values, MediaItemProperty::Artist).asText(),
                                               "UNKNOWN_ALBUM_ARTIST"),
                      {.font = {}, .color = labelDefaultColor(), .backgroundColor = {}});
    detail.append(" ");
    detail.append(ZRNTextOrLocalizedString(valueForKey(values, MediaItemProperty::AlbumTitle).asText(),
                                           "UNKNOWN_ALBUM"),
                  {.font = {}, .color = _externalSystemGrayColor(), .backgroundColor = {}});
    cell->detailTextLabel()->setStyledText(std::move(detail));

    const auto item = std::dynamic_pointer_cast<MediaItem>(entity);
    requestArtwork(item ? item->artworkCatalog() : nullptr, 1, cell, viewController);
}

}  // namespace zornic

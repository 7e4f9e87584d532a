#include "Cell Configurations/ZRNSongCellConfiguration.h"

#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Platform/Media/MediaItem.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {
namespace {

std::string orText(const Value& value, const char* key) {
    return value.asText().empty() ? ZRNLocalizedString(key) : value.asText();
}

}  // namespace

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
    cell->textLabel()->setText(orText(valueForKey(values, MediaItemProperty::Title), "UNKNOWN_TITLE"));

    StyledText detail(orText(valueForKey(values, MediaItemProperty::Artist), "UNKNOWN_ALBUM_ARTIST"),
                      {.font = {}, .color = labelDefaultColor(), .backgroundColor = {}});
    detail.append(" ");
    detail.append(orText(valueForKey(values, MediaItemProperty::AlbumTitle), "UNKNOWN_ALBUM"),
                  {.font = {}, .color = _externalSystemGrayColor(), .backgroundColor = {}});
    cell->detailTextLabel()->setStyledText(std::move(detail));

    const auto item = std::dynamic_pointer_cast<MediaItem>(entity);
    requestArtwork(item ? item->artworkCatalog() : nullptr, 1, cell, viewController);
}

}  // namespace zornic

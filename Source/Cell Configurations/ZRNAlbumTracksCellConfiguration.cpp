#include "Cell Configurations/ZRNAlbumTracksCellConfiguration.h"

#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Utilities/ZRNStrings.h"
#include "Views/_ZRNAlbumTracksCell.h"

namespace zornic {

const ZRNAlbumTracksCellConfiguration& ZRNAlbumTracksCellConfiguration::instance() {
    static const ZRNAlbumTracksCellConfiguration configuration;
    return configuration;
}

const std::vector<std::string>& ZRNAlbumTracksCellConfiguration::mediaEntityPropertiesToFetch() const {
    using namespace MediaItemProperty;
    static const std::vector<std::string> properties = propertiesByAdding(
        {AlbumTrackNumber, PlaybackDuration, Title}, ZRNCellConfiguration::mediaEntityPropertiesToFetch());
    return properties;
}

TableView::CellFactory ZRNAlbumTracksCellConfiguration::tableViewCellClass() const {
    return [](const std::string& identifier) {
        return make<_ZRNAlbumTracksCell>(TableViewCellStyle::Subtitle, identifier);
    };
}

void ZRNAlbumTracksCellConfiguration::configureCellWithViewControllerEntityAtIndexAnimated(
    const std::shared_ptr<TableViewCell>& cell, QueryTableViewController& viewController,
    const std::shared_ptr<MediaEntity>& entity, std::uint64_t, bool) const {
    const auto row = std::dynamic_pointer_cast<_ZRNAlbumTracksCell>(cell);
    if (!row) return;
    const Dictionary values = entity->valuesForProperties(mediaEntityPropertiesToFetch());
    row->setTitle(valueForKey(values, MediaItemProperty::Title).asText());
    row->setDurationText(
        ZRNTimeStringForDuration(valueForKey(values, MediaItemProperty::PlaybackDuration).asNumber()));
    if (auto* column = dynamic_cast<ZRNDurationColumn*>(&viewController))
        row->setMaximumDurationWidth(column->maximumDurationWidth());
    const std::int64_t number = valueForKey(values, MediaItemProperty::AlbumTrackNumber).asInteger();
    row->setTrackNumberText(number != 0 ? std::to_string(number) : std::string());
}

Size ZRNAlbumTracksCellConfiguration::sizeForDuration(double duration) const {
    return sizeOfText(ZRNTimeStringForDuration(duration), _ZRNAlbumTracksCell::durationFont());
}

}  // namespace zornic

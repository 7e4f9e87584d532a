#include "Cell Configurations/ZRNPlaylistCellConfiguration.h"

#include "Platform/Media/MediaPlaylist.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {

const ZRNPlaylistCellConfiguration& ZRNPlaylistCellConfiguration::instance() {
    static const ZRNPlaylistCellConfiguration configuration;
    return configuration;
}

void ZRNPlaylistCellConfiguration::configureCellWithViewControllerEntityAtIndexAnimated(
    const std::shared_ptr<TableViewCell>& cell, QueryTableViewController&,
    const std::shared_ptr<MediaEntity>& entity, std::uint64_t, bool) const {
    const auto playlist = std::dynamic_pointer_cast<MediaPlaylist>(entity);
    cell->textLabel()->setText(
        ZRNTextOrLocalizedString(playlist ? playlist->name() : std::string(), "UNKNOWN_TITLE"));
    cell->setAccessoryType(TableViewCellAccessory::DisclosureIndicator);
}

}  // namespace zornic

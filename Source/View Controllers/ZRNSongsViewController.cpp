#include "View Controllers/ZRNSongsViewController.h"

#include "Cell Configurations/ZRNShuffleActionCellConfiguration.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Utilities/ZRNShared.h"

namespace zornic {

std::vector<const BaseActionCellConfiguration*> ZRNSongsViewController::actionCellConfigurationClasses()
    const {
    return {&ZRNShuffleActionCellConfiguration::instance()};
}

bool ZRNSongsViewController::shouldShowActionCellConfiguration(
    const BaseActionCellConfiguration& configuration) {
    if (&configuration == &ZRNShuffleActionCellConfiguration::instance())
        return queryDataSource()->count() > 1;
    return ZRNTableViewController::shouldShowActionCellConfiguration(configuration);
}

void ZRNSongsViewController::tableViewDidSelectRowAtIndexPath(TableView& table, const IndexPath& indexPath) {
    const auto self = strong(this);
    const std::uint64_t index = dataSourceIndexForIndexPath(indexPath);
    const auto context = std::dynamic_pointer_cast<QueryPlaybackContext>(
        index == NotFound ? nullptr : queryDataSource()->playbackContextForIndex(index));
    // A song that has just gone from the library starts nothing; its row is about to go too.
    if (context && context->startIndex() != NotFound) {
        if (const auto player = ZRNSharedAVPlayer()) player->reloadWithPlaybackContext(context);
        if (auto* navigation = navigationController())
            navigation->ZRN_pushNowPlayingViewControllerAnimated(true);
    }
    ZRNTableViewController::tableViewDidSelectRowAtIndexPath(table, indexPath);
}

}  // namespace zornic

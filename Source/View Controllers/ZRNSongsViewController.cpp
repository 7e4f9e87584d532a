#include "View Controllers/ZRNSongsViewController.h"

#include "Cell Configurations/ZRNShuffleActionCellConfiguration.h"

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
    playFromRowAtIndexPath(indexPath);
    ZRNTableViewController::tableViewDidSelectRowAtIndexPath(table, indexPath);
}

}  // namespace zornic

#include "View Controllers/ZRNSonvaleUEpisodesTableViewController.h"

#include "Platform/LibraryKit/PlayerStrings.h"
#include "View Controllers/ZRNItemRows.h"

namespace zornic {

std::shared_ptr<TableViewCell> ZRNSonvaleUEpisodesTableViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    return ZRNCellForItemRow(*this, table, indexPath, [](const MediaItem& item) {
        return ZRNRowTexts{item.title(),
                           progressString(ZRNWholeSeconds(item.playbackDuration()), ProgressKind::Time)};
    });
}

void ZRNSonvaleUEpisodesTableViewController::tableViewDidSelectRowAtIndexPath(TableView&,
                                                                              const IndexPath& indexPath) {
    ZRNPlayItemsOfListFromRow(*this, indexPath);
}

}  // namespace zornic

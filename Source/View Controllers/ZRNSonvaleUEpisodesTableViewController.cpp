#include "View Controllers/ZRNSonvaleUEpisodesTableViewController.h"

#include "Platform/LibraryKit/PlayerStrings.h"
#include "View Controllers/ZRNItemRows.h"

namespace zornic {

std::shared_ptr<TableViewCell> ZRNSonvaleUEpisodesTableViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    const auto cell = dequeueReusableHelmoCellForTableViewIndexPath(table, indexPath);
    const auto item = ZRNItemOfListRow(*this, indexPath);
    cell->textLabel()->setText(item ? item->title() : "");
    cell->detailTextLabel()->setText(
        item ? progressString(ZRNWholeSeconds(item->playbackDuration()), ProgressKind::Time) : "");
    return cell;
}

void ZRNSonvaleUEpisodesTableViewController::tableViewDidSelectRowAtIndexPath(TableView&,
                                                                              const IndexPath& indexPath) {
    ZRNPlayItemsOfListFromRow(*this, indexPath);
}

}  // namespace zornic

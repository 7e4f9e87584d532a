#include "View Controllers/ZRNPodcastEpisodesTableViewController.h"

#include "View Controllers/ZRNItemRows.h"

namespace zornic {

std::shared_ptr<TableViewCell> ZRNPodcastEpisodesTableViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    const auto cell = dequeueReusableHelmoCellForTableViewIndexPath(table, indexPath);
    const auto item = ZRNItemOfListRow(*this, indexPath);
    const Value released = item ? item->valueForProperty(MediaItemProperty::ReleaseDate) : Value();
    const auto date = released ? std::optional(released.asDate()) : std::nullopt;
    cell->textLabel()->setText(item ? item->title() : "");
    cell->detailTextLabel()->setText(_formatter.stringFromDate(date).value_or(""));
    return cell;
}

void ZRNPodcastEpisodesTableViewController::tableViewDidSelectRowAtIndexPath(TableView&,
                                                                             const IndexPath& indexPath) {
    ZRNPlayItemsOfListFromRow(*this, indexPath);
}

}  // namespace zornic

#include "View Controllers/ZRNPodcastEpisodesTableViewController.h"

#include "View Controllers/ZRNItemRows.h"

namespace zornic {

std::shared_ptr<TableViewCell> ZRNPodcastEpisodesTableViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    return ZRNCellForItemRow(*this, table, indexPath, [this](const MediaItem& item) {
        const Value released = item.valueForProperty(MediaItemProperty::ReleaseDate);
        const auto date = released ? std::optional(released.asDate()) : std::nullopt;
        return ZRNRowTexts{item.title(), _formatter.stringFromDate(date).value_or("")};
    });
}

void ZRNPodcastEpisodesTableViewController::tableViewDidSelectRowAtIndexPath(TableView&,
                                                                             const IndexPath& indexPath) {
    ZRNPlayItemsOfListFromRow(*this, indexPath);
}

}  // namespace zornic

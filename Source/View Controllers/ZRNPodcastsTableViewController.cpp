#include "View Controllers/ZRNPodcastsTableViewController.h"

#include "View Controllers/ZRNCollectionRows.h"
#include "View Controllers/ZRNPodcastEpisodesTableViewController.h"

namespace zornic {

std::shared_ptr<TableViewCell> ZRNPodcastsTableViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    const auto item = ZRNItemOfCollectionRow(*this, indexPath);
    return ZRNCellForCollectionRow(*this, table, indexPath, item, item ? item->podcastTitle() : "",
                                   item ? item->artist() : "");
}

std::shared_ptr<ViewController> ZRNPodcastsTableViewController::viewControllerForRowAtIndexPath(
    const IndexPath& indexPath) {
    const auto item = ZRNItemOfCollectionRow(*this, indexPath);
    if (!item) return nullptr;
    const auto narrowed =
        ZRNQueryNarrowedToItem(*query(), *item, MediaItemProperty::PodcastPersistentID, MediaGrouping::Title);
    const auto screen = make<ZRNPodcastEpisodesTableViewController>(narrowed, player(), serviceProvider());
    screen->setTitle(item->podcastTitle());
    return screen;
}

}  // namespace zornic

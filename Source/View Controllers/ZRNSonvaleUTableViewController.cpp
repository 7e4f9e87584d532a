#include "View Controllers/ZRNSonvaleUTableViewController.h"

#include "Utilities/MediaItemHelmo.h"
#include "View Controllers/ZRNCollectionRows.h"
#include "View Controllers/ZRNSonvaleUEpisodesTableViewController.h"

namespace zornic {

std::shared_ptr<TableViewCell> ZRNSonvaleUTableViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    const auto item = ZRNItemOfCollectionRow(*this, indexPath);
    return ZRNCellForCollectionRow(*this, table, indexPath, item, item ? item->albumTitle() : "",
                                   item ? item->artist() : "");
}

std::shared_ptr<ViewController> ZRNSonvaleUTableViewController::viewControllerForRowAtIndexPath(
    const IndexPath& indexPath) {
    const auto item = ZRNItemOfCollectionRow(*this, indexPath);
    if (!item) return nullptr;
    const auto narrowed =
        ZRNQueryNarrowedToItem(*query(), *item, MediaItemProperty::AlbumPersistentID, MediaGrouping::Title);
    const auto screen = make<ZRNSonvaleUEpisodesTableViewController>(narrowed, player(), serviceProvider());
    screen->setTitle(albumTitleWithFallback(*item));
    return screen;
}

}  // namespace zornic

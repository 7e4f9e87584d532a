#include "View Controllers/ZRNCompilationsTableViewController.h"

#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Utilities/MediaItemHelmo.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"
#include "View Controllers/ZRNCollectionRows.h"

namespace zornic {

std::shared_ptr<TableViewCell> ZRNCompilationsTableViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    const auto item = ZRNItemOfCollectionRow(*this, indexPath);
    return ZRNCellForCollectionRow(*this, table, indexPath, item, item ? albumTitleWithFallback(*item) : "",
                                   item ? albumArtistWithFallback(*item) : "");
}

std::shared_ptr<ViewController> ZRNCompilationsTableViewController::viewControllerForRowAtIndexPath(
    const IndexPath& indexPath) {
    const auto item = ZRNItemOfCollectionRow(*this, indexPath);
    if (!item) return nullptr;
    const auto narrowed =
        ZRNQueryNarrowedToItem(*query(), *item, MediaItemProperty::AlbumPersistentID, MediaGrouping::Album);
    const auto screen = ScreenRegistry::shared().viewControllerForIdentifierQuery(
        ZRNAlbumsDetailViewControllerIdentifier, narrowed);
    if (screen) screen->setTitle(albumTitleWithFallback(*item));
    return screen;
}

}  // namespace zornic

#include "View Controllers/ZRNAudiobooksTableViewController.h"

#include "View Controllers/ZRNAudiobookPartsTableViewController.h"
#include "View Controllers/ZRNCollectionRows.h"

namespace zornic {

std::shared_ptr<TableViewCell> ZRNAudiobooksTableViewController::tableViewCellForRowAtIndexPath(
    TableView& table, const IndexPath& indexPath) {
    const auto item = ZRNItemOfCollectionRow(*this, indexPath);
    const auto cell = ZRNCellForCollectionRow(*this, table, indexPath, item, item ? item->albumTitle() : "",
                                              item ? item->artist() : "");
    // Volumes of a series differ at the end of their titles.
    cell->textLabel()->setLineBreakMode(LineBreakMode::TruncatingMiddle);
    return cell;
}

std::shared_ptr<ViewController> ZRNAudiobooksTableViewController::viewControllerForRowAtIndexPath(
    const IndexPath& indexPath) {
    const auto item = ZRNItemOfCollectionRow(*this, indexPath);
    if (!item) return nullptr;
    const auto narrowed =
        ZRNQueryNarrowedToItem(*query(), *item, MediaItemProperty::AlbumPersistentID, MediaGrouping::Album);
    const auto screen = make<ZRNAudiobookPartsTableViewController>(narrowed, player(), serviceProvider());
    screen->setTitle(item->albumTitle());
    return screen;
}

}  // namespace zornic

#include "View Controllers/ZRNCollectionRows.h"

#include "Utilities/MediaQueryZRNAdditions.h"

namespace zornic {

std::shared_ptr<MediaItem> ZRNItemOfCollectionRow(const ZRNSectionedTableViewController& list,
                                                  const IndexPath& indexPath) {
    if (!list.query()) return nullptr;
    const auto collection = list.query()->collections()->entityAtIndex(list.rowAtIndexPath(indexPath));
    auto item = collection ? collection->representativeItem() : nullptr;
    using namespace MediaItemProperty;
    if (item) item->valuesForProperties({AlbumTitle, Artist, AlbumArtist, PodcastTitle, ArtworkToken});
    return item;
}

std::shared_ptr<TableViewCell> ZRNCellForCollectionRow(ZRNSectionedTableViewController& list,
                                                       TableView& tableView, const IndexPath& indexPath,
                                                       const std::shared_ptr<MediaItem>& item,
                                                       const std::string& title, const std::string& detail) {
    const auto cell = list.dequeueReusableHelmoCellForTableViewIndexPath(tableView, indexPath);
    cell->textLabel()->setText(title);
    cell->detailTextLabel()->setText(detail);
    ZRN_OLD_TableViewController::addAlbumArtViewFromItemToCellRowHeight(item, cell, tableView.rowHeight());
    cell->setAccessoryType(list.isSectioning() ? TableViewCellAccessory::None
                                               : TableViewCellAccessory::DisclosureIndicator);
    return cell;
}

std::shared_ptr<MediaQuery> ZRNQueryNarrowedToItem(const MediaQuery& query, const MediaItem& item,
                                                   const char* property, MediaGrouping grouping) {
    const auto narrowed = ZRN_queryWithFilterPredicates(query.filterPredicates());
    narrowed->addFilterPredicate(MediaPredicate::property(property, item.valueForProperty(property)));
    narrowed->setGroupingType(grouping);
    return narrowed;
}

}  // namespace zornic

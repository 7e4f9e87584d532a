#include "View Controllers/ZRNAlbumsViewController.h"

#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Utilities/MediaQueryZRNAdditions.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"

namespace zornic {

void ZRNAlbumsViewController::tableViewDidSelectRowAtIndexPath(TableView& table, const IndexPath& indexPath) {
    const auto self = strong(this);
    const std::uint64_t index = dataSourceIndexForIndexPath(indexPath);
    if (const auto album = index == NotFound ? nullptr : queryDataSource()->entityAtIndex(index)) {
        const auto query = ZRN_queryWithFilterPredicates(
            {MediaPredicate::property(MediaItemProperty::AlbumPersistentID,
                                      album->valueForProperty(MediaCollectionProperty::AlbumPersistentID))});
        query->setGroupingType(MediaGrouping::Album);
        pushKeepingBar(ScreenRegistry::shared().viewControllerForIdentifierQuery(
            ZRNAlbumsDetailViewControllerIdentifier, query));
    }
    ZRNTableViewController::tableViewDidSelectRowAtIndexPath(table, indexPath);
}

}  // namespace zornic

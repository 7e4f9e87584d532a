#include "View Controllers/ZRNArtistsViewController.h"

#include "Cell Configurations/ZRNShuffleActionCellConfiguration.h"
#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Platform/Media/MediaItem.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Utilities/MediaQueryZRNAdditions.h"
#include "Utilities/ZRNShared.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"

namespace zornic {

std::string ZRNArtistsViewController::artistsPersistentIDProperty() {
    return ZRNGroupsByAlbumArtist() ? MediaCollectionProperty::AlbumArtistPersistentID
                                    : MediaCollectionProperty::ArtistPersistentID;
}

std::string ZRNArtistsViewController::artistsItemPersistentIDProperty() {
    return ZRNGroupsByAlbumArtist() ? MediaItemProperty::AlbumArtistPersistentID
                                    : MediaItemProperty::ArtistPersistentID;
}

void ZRNArtistsViewController::setAllowsActions(bool allows) {
    if (allows == _allowsActions) return;
    _allowsActions = allows;
    reloadData();
}

std::vector<const BaseActionCellConfiguration*> ZRNArtistsViewController::actionCellConfigurationClasses()
    const {
    return {&ZRNShuffleActionCellConfiguration::instance()};
}

bool ZRNArtistsViewController::shouldShowActionCellConfiguration(
    const BaseActionCellConfiguration& configuration) {
    if (!_allowsActions) return false;
    if (&configuration == &ZRNShuffleActionCellConfiguration::instance())
        return queryDataSource()->count() > 1;
    return ZRNTableViewController::shouldShowActionCellConfiguration(configuration);
}

void ZRNArtistsViewController::defaultsDidChange() {
    const auto grouping = ZRNGroupsByAlbumArtist() ? MediaGrouping::AlbumArtist : MediaGrouping::Artist;
    const auto& query = queryDataSource()->query();
    if (query->groupingType() == grouping) return;
    query->setGroupingType(grouping);
    if (!query->collectionPropertiesToFetch().empty())
        query->setCollectionPropertiesToFetch(cellConfiguration().collectionPropertiesToFetch());
    queryDataSource()->invalidate();
}

void ZRNArtistsViewController::showAlbumsOfEntity(const MediaEntity& entity) {
    Value persistentID = entity.valueForProperty(persistentIDProperty());
    if (const auto item = persistentID ? nullptr : entity.representativeItem())
        persistentID = item->valueForProperty(itemPersistentIDProperty());
    const auto query =
        ZRN_queryWithFilterPredicates({MediaPredicate::property(itemPersistentIDProperty(), persistentID)});
    query->setUseSections(false);
    query->setGroupingType(static_cast<MediaGrouping>(groupingType()));
    const auto albums = ScreenRegistry::shared().viewControllerForIdentifierQuery(
        ZRNAlbumsDetailViewControllerIdentifier, query);
    if (auto* navigation = navigationController(); navigation && albums)
        navigation->pushViewController(albums, true);
}

void ZRNArtistsViewController::tableViewDidSelectRowAtIndexPath(TableView& table,
                                                                const IndexPath& indexPath) {
    const auto self = strong(this);
    const std::uint64_t index = dataSourceIndexForIndexPath(indexPath);
    if (const auto entity = index == NotFound ? nullptr : queryDataSource()->entityAtIndex(index))
        showAlbumsOfEntity(*entity);
    ZRNTableViewController::tableViewDidSelectRowAtIndexPath(table, indexPath);
}

}  // namespace zornic

#include "View Controllers/ZRNGenresViewController.h"

#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Platform/Media/MediaItemCollection.h"
#include "Utilities/MediaQueryZRNAdditions.h"
#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNShared.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"
#include "View Controllers/ZRNArtistsViewController.h"

namespace zornic {
namespace {

MediaPredicate predicateForGenre(const MediaItemCollection& genre) {
    Value persistentID = genre.valueForProperty(MediaCollectionProperty::GenrePersistentID);
    if (const auto item = persistentID ? nullptr : genre.representativeItem())
        persistentID = item->valueForProperty(MediaItemProperty::GenrePersistentID);
    return MediaPredicate::property(MediaItemProperty::GenrePersistentID, persistentID);
}

MediaPredicate predicateForArtistOf(const std::shared_ptr<MediaEntity>& item) {
    const std::string property = ZRNArtistsViewController::artistsItemPersistentIDProperty();
    Value persistentID;
    if (item) persistentID = item->valueForProperty(ZRNArtistsViewController::artistsPersistentIDProperty());
    if (item && !persistentID) persistentID = item->valueForProperty(property);
    return MediaPredicate::property(property, persistentID);
}

}  // namespace

void ZRNGenresViewController::showOnlyArtistOfGenre(const MediaItemCollection& genre,
                                                    MediaPredicate isOfGenre) {
    const auto items = genre.items();
    const auto last = items->count() > 0 ? items->entityAtIndex(items->count() - 1) : nullptr;
    const auto query = ZRN_queryWithFilterPredicates({predicateForArtistOf(last), std::move(isOfGenre)});
    query->setGroupingType(static_cast<MediaGrouping>(ZRNArtistsViewController::artistsGroupingType()));
    pushKeepingBar(ScreenRegistry::shared().viewControllerForIdentifierQuery(
        ZRNAlbumsDetailViewControllerIdentifier, query));
}

void ZRNGenresViewController::showArtistsOfGenre(const MediaItemCollection& genre, MediaPredicate isOfGenre) {
    const auto query = ZRN_queryWithFilterPredicates({std::move(isOfGenre)});
    query->setGroupingType(ZRNGroupsByAlbumArtist() ? MediaGrouping::AlbumArtist : MediaGrouping::Artist);
    const auto artists = std::dynamic_pointer_cast<ZRNArtistsViewController>(
        ScreenRegistry::shared().viewControllerForIdentifierQuery(ZRNArtistsViewControllerIdentifier, query));
    if (!artists) return;
    artists->setAllowsActions(true);
    artists->navigationItem()->setTitle(ZRNTextOrLocalizedString(
        genre.valueForProperty(MediaCollectionProperty::GenreName).asText(), "UNKNOWN_GENRE"));
    pushKeepingBar(artists);
}

void ZRNGenresViewController::tableViewDidSelectRowAtIndexPath(TableView& table, const IndexPath& indexPath) {
    const auto self = strong(this);
    const std::uint64_t index = dataSourceIndexForIndexPath(indexPath);
    const auto genre = std::dynamic_pointer_cast<MediaItemCollection>(
        index == NotFound ? nullptr : queryDataSource()->entityAtIndex(index));
    if (genre) {
        if (genre->valueForProperty(MediaCollectionProperty::ArtistCount).asInteger() == 1) {
            showOnlyArtistOfGenre(*genre, predicateForGenre(*genre));
            return;  // nothing follows a jump over the list of artists
        }
        showArtistsOfGenre(*genre, predicateForGenre(*genre));
    }
    ZRNTableViewController::tableViewDidSelectRowAtIndexPath(table, indexPath);
}

}  // namespace zornic

#include "Cell Configurations/ZRNAlbumCellConfiguration.h"
#include "Cell Configurations/ZRNAlbumTracksCellConfiguration.h"
#include "Cell Configurations/ZRNArtistCellConfiguration.h"
#include "Cell Configurations/ZRNComposerCellConfiguration.h"
#include "Cell Configurations/ZRNGenreCellConfiguration.h"
#include "Cell Configurations/ZRNPlaylistCellConfiguration.h"
#include "Cell Configurations/ZRNSongCellConfiguration.h"
#include "Data Sources/ZRNArtistAlbumsDataSource.h"
#include "Data Sources/ZRNArtistsDataSource.h"
#include "Data Sources/ZRNPlaylistsDataSource.h"
#include "Data Sources/ZRNQueryDataSource.h"
#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Utilities/ViewControllerZornicAdditions.h"
#include "View Controllers/ZRNAlbumsDetailViewController.h"
#include "View Controllers/ZRNAlbumsViewController.h"
#include "View Controllers/ZRNArtistsViewController.h"
#include "View Controllers/ZRNComposersViewController.h"
#include "View Controllers/ZRNGenresViewController.h"
#include "View Controllers/ZRNPlaylistsViewController.h"
#include "View Controllers/ZRNSongsViewController.h"

namespace zornic {
namespace {

template <class DataSource>
ScreenAttributes::DataSourceFactory dataSourceClass() {
    return [](std::shared_ptr<MediaQuery> query, EntityType entityType) {
        return make<DataSource>(std::move(query), entityType);
    };
}

template <class Screen>
ScreenAttributes::ViewControllerFactory viewControllerClass() {
    return [](std::shared_ptr<CompletionQueryDataSource> dataSource,
              const BaseCellConfiguration& configuration) {
        return make<Screen>(std::move(dataSource), configuration);
    };
}

/** One row: an identifier with its configuration, data source, entities, screen and default query. */
template <class Configuration, class DataSource, class Screen>
void registerScreen(const char* identifier, EntityType entityType,
                    ScreenRegistry::QueryCreationHandler handler) {
    ScreenAttributes attributes;
    attributes.configurationClass = &Configuration::instance();
    attributes.dataSourceClass = dataSourceClass<DataSource>();
    attributes.entityType = entityType;
    attributes.viewControllerClass = viewControllerClass<Screen>();
    ScreenRegistry::shared().registerIdentifierWithAttributesDefaultQueryCreationHandler(
        identifier, std::move(attributes), std::move(handler));
}

std::shared_ptr<MediaQuery> visiblePlaylists() {
    auto query = MediaQuery::playlistsQuery();
    query->addFilterPredicate(MediaPredicate::property(MediaPlaylistProperty::IsHidden, false));
    query->addFilterPredicate(MediaPredicate::property(MediaPlaylistProperty::IsBrivoMix, false));
    return query;
}

/** The query of a host's tab that fetches what the rows show. */
template <class Configuration>
std::shared_ptr<MediaQuery> queryWithRowValues(std::shared_ptr<MediaQuery> query) {
    query->setCollectionPropertiesToFetch(Configuration::instance().collectionPropertiesToFetch());
    return query;
}

}  // namespace

void ZRN_registerViewControllerIdentifiers() {
    registerScreen<ZRNAlbumTracksCellConfiguration, ZRNArtistAlbumsDataSource, ZRNAlbumsDetailViewController>(
        ZRNAlbumsDetailViewControllerIdentifier, EntityType::Items, nullptr);
    registerScreen<ZRNArtistCellConfiguration, ZRNArtistsDataSource, ZRNArtistsViewController>(
        ZRNArtistsViewControllerIdentifier, EntityType::Collections, [] {
            return queryWithRowValues<ZRNArtistCellConfiguration>(
                ZRN_queryForIdentifier(ZRN_MusicLegacyArtistsViewControllerIdentifier));
        });
    registerScreen<ZRNGenreCellConfiguration, ZRNQueryDataSource, ZRNGenresViewController>(
        ZRNGenresViewControllerIdentifier, EntityType::Collections, [] {
            return ZRN_sanitizedQueryForQuery(
                *queryWithRowValues<ZRNGenreCellConfiguration>(MediaQuery::genresQuery()));
        });
    registerScreen<ZRNComposerCellConfiguration, ZRNQueryDataSource, ZRNComposersViewController>(
        ZRNComposersViewControllerIdentifier, EntityType::Collections, [] {
            return queryWithRowValues<ZRNComposerCellConfiguration>(
                ZRN_queryForIdentifier(ZRN_MusicLegacyComposersViewControllerIdentifier));
        });
    registerScreen<ZRNPlaylistCellConfiguration, ZRNPlaylistsDataSource, ZRNPlaylistsViewController>(
        ZRNPlaylistsViewControllerIdentifier, EntityType::Collections, visiblePlaylists);
    registerScreen<ZRNAlbumCellConfiguration, ZRNQueryDataSource, ZRNAlbumsViewController>(
        ZRNAlbumsViewControllerIdentifier, EntityType::Collections, [] {
            return queryWithRowValues<ZRNAlbumCellConfiguration>(
                ZRN_queryForIdentifier(ZRN_MusicLegacyAlbumsViewControllerIdentifier));
        });
    registerScreen<ZRNSongCellConfiguration, ZRNQueryDataSource, ZRNSongsViewController>(
        ZRNSongsViewControllerIdentifier, EntityType::Items,
        [] { return ZRN_queryForIdentifier(ZRN_MusicLegacySongsViewControllerIdentifier); });
}

}  // namespace zornic

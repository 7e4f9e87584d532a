#include "Cell Configurations/ZRNSongCellConfiguration.h"
#include "Data Sources/ZRNQueryDataSource.h"
#include "Platform/LibraryKit/ScreenRegistry.h"
#include "Utilities/ViewControllerZornicAdditions.h"
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

}  // namespace

void ZRN_registerViewControllerIdentifiers() {
    registerScreen<ZRNSongCellConfiguration, ZRNQueryDataSource, ZRNSongsViewController>(
        ZRNSongsViewControllerIdentifier, EntityType::Items,
        [] { return ZRN_queryForIdentifier(ZRN_MusicLegacySongsViewControllerIdentifier); });
}

}  // namespace zornic

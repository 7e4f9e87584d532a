#include "View Controllers/ZRNAlbumsDetailViewController.h"

#include <limits>

#include "Cell Configurations/ZRNRowArtwork.h"
#include "Cell Configurations/ZRNShuffleActionCellConfiguration.h"
#include "Data Sources/ZRNQueryPlaybackContext.h"
#include "Platform/Media/MediaItemCollection.h"
#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNShared.h"
#include "Views/ZRNAlbumsDetailTableHeaderView.h"

namespace zornic {
namespace {

constexpr double headerHeightOutsideWindow = 44;

std::string headerIdentifier() { return classNameOf<ZRNAlbumsDetailTableHeaderView>(); }

/** Writes an album's title, number of songs and duration. */
void fillHeader(ZRNAlbumsDetailTableHeaderView& header, const MediaItemCollection& album) {
    using namespace MediaCollectionProperty;
    static const std::vector<std::string> properties = {AlbumTitle, ItemCount,
                                                        RepresentativeItemPersistentID};
    const Dictionary values = album.valuesForProperties(properties);
    header.setTitle(ZRNTextOrLocalizedString(valueForKey(values, AlbumTitle).asText(), "UNKNOWN_ALBUM"));
    header.setDurationCount(album.itemsQuery()->totalAggregate(MediaItemProperty::PlaybackDuration),
                            valueForKey(values, ItemCount).asUnsigned());
}

}  // namespace

void ZRNAlbumsDetailViewController::didMake() {
    ZRNTableViewController::didMake();
    setEdgesForExtendedLayout(0);
}

void ZRNAlbumsDetailViewController::viewDidLoad() {
    ZRNTableViewController::viewDidLoad();
    if (const auto table = std::dynamic_pointer_cast<ZRNTableView>(tableView()))
        table->setShouldShowHeadersAndFooters(true);
    tableView()->registerHeaderClass(headerIdentifier(), [](const std::string& identifier) {
        return make<ZRNAlbumsDetailTableHeaderView>(identifier);
    });
    // Who pushes it may have named it, where the tags do not.
    if (title().empty()) _updateTitle();
}

void ZRNAlbumsDetailViewController::reloadData() {
    ZRNTableViewController::reloadData();
    _updateTitle();
}

const char* ZRNAlbumsDetailViewController::titleProperty() const {
    const auto& query = *queryDataSource()->query();
    if (query.predicateForProperty(MediaItemProperty::ComposerPersistentID))
        return MediaItemProperty::Composer;
    if (query.predicateForProperty(MediaItemProperty::AlbumPersistentID))
        return MediaItemProperty::AlbumTitle;
    return ZRNGroupsByAlbumArtist() ? MediaItemProperty::AlbumArtist : MediaItemProperty::Artist;
}

void ZRNAlbumsDetailViewController::_updateTitle() {
    const auto entity = queryDataSource()->anyEntity();
    const auto item = entity ? entity->representativeItem() : nullptr;
    setTitle(item ? item->valueForProperty(titleProperty()).asText() : std::string());
}

std::vector<const BaseActionCellConfiguration*>
ZRNAlbumsDetailViewController::actionCellConfigurationClasses() const {
    return {&ZRNShuffleActionCellConfiguration::instance()};
}

bool ZRNAlbumsDetailViewController::shouldShowActionCellConfiguration(
    const BaseActionCellConfiguration& configuration) {
    // One album has the button in its header.
    if (&configuration == &ZRNShuffleActionCellConfiguration::instance())
        return queryDataSource()->numberOfSections() > 1;
    return ZRNTableViewController::shouldShowActionCellConfiguration(configuration);
}

double ZRNAlbumsDetailViewController::maximumDurationWidth() {
    if (_maximumDurationWidth < -std::numeric_limits<float>::epsilon()) {
        const double longest = queryDataSource()->query()->maxAggregate(MediaItemProperty::PlaybackDuration);
        _maximumDurationWidth = ZRNAlbumTracksCellConfiguration::instance().sizeForDuration(longest).width;
    }
    return _maximumDurationWidth;
}

std::optional<double> ZRNAlbumsDetailViewController::tableViewHeightForHeaderInSection(
    TableView& table, std::uint64_t section) {
    if (!dataSourceSectionForTableSection(section)) return 0;
    return table.window() ? table.rowHeight() : headerHeightOutsideWindow;
}

std::shared_ptr<View> ZRNAlbumsDetailViewController::tableViewViewForHeaderInSection(TableView& table,
                                                                                     std::uint64_t section) {
    const auto own = dataSourceSectionForTableSection(section);
    const auto album = std::dynamic_pointer_cast<MediaItemCollection>(
        own ? queryDataSource()->sectionEntityAtIndex(*own) : nullptr);
    const auto header = std::dynamic_pointer_cast<ZRNAlbumsDetailTableHeaderView>(
        album ? table.dequeueReusableHeaderFooterViewWithIdentifier(headerIdentifier()) : nullptr);
    if (!header) return nullptr;
    fillHeader(*header, *album);
    const auto item = album->representativeItem();
    ZRNLoadRowArtwork(item ? item->artworkCatalog() : nullptr, 1, className(), *this, header);
    header->setShuffleActionBlock([weakSelf = weak(this), section = *own](const auto&) {
        if (const auto self = weakSelf.lock()) self->shuffleSection(section);
    });
    return header;
}

void ZRNAlbumsDetailViewController::shuffleSection(std::uint64_t section) {
    const auto album =
        std::dynamic_pointer_cast<MediaItemCollection>(queryDataSource()->sectionEntityAtIndex(section));
    if (!album) return;
    const auto context = make<ZRNQueryPlaybackContext>(album->itemsQuery());
    context->setStartIndex(NotFound);
    context->setShuffleType(1);
    play(context);
}

void ZRNAlbumsDetailViewController::tableViewDidSelectRowAtIndexPath(TableView& table,
                                                                     const IndexPath& indexPath) {
    const auto self = strong(this);
    playFromRowAtIndexPath(indexPath);
    ZRNTableViewController::tableViewDidSelectRowAtIndexPath(table, indexPath);
}

}  // namespace zornic

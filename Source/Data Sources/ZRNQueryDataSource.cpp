#include "Data Sources/ZRNQueryDataSource.h"

#include <algorithm>
#include <array>
#include <optional>

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/MediaItemCollection.h"
#include "Utilities/MediaQueryZRNAdditions.h"
#include "Utilities/ZRNObservation.h"
#include "Utilities/ZRNShared.h"

namespace zornic {
namespace {

using Ordering = std::vector<std::string>;

struct SortSettings {
    bool byArtist = false;
    bool byAlbumArtist = false;

    static SortSettings current() {
        const auto defaults = ZRNSharedDefaults();
        if (!defaults) return {};
        return {defaults->isSortByArtistEnabled(), defaults->isGroupByAlbumArtistEnabled()};
    }
};

bool hasFilter(const MediaQuery& query, const char* property) {
    return query.predicateForProperty(property).has_value();
}

/** Order of a list of items; nullopt for a playlist's, which keeps its own. */
std::optional<Ordering> itemOrdering(const MediaQuery& query, const SortSettings& settings) {
    using namespace MediaItemProperty;
    if (hasFilter(query, MediaPlaylistProperty::PersistentID)) return std::nullopt;
    return settings.byArtist ? Ordering{Artist, AlbumTitle, DiscNumber, AlbumTrackNumber} : Ordering{};
}

/** Order of a list of albums; nullopt for the albums of somebody. */
std::optional<Ordering> albumOrdering(const MediaQuery& query, const SortSettings& settings) {
    using namespace MediaItemProperty;
    static constexpr std::array owners = {AlbumPersistentID, AlbumArtistPersistentID, ArtistPersistentID,
                                          ComposerPersistentID};
    if (std::ranges::any_of(owners, [&](const char* owner) { return hasFilter(query, owner); }))
        return std::nullopt;
    if (!settings.byArtist) return Ordering{};
    return Ordering{settings.byAlbumArtist ? AlbumArtist : Artist, AlbumTitle};
}

/** Order within a genre, which never looks at album artists; nullopt for the list of genres itself. */
std::optional<Ordering> genreOrdering(const MediaQuery& query, const SortSettings& settings) {
    using namespace MediaItemProperty;
    if (!hasFilter(query, GenrePersistentID)) return std::nullopt;
    return settings.byArtist ? Ordering{Artist, AlbumTitle}
                             : Ordering{Title, ArtistPersistentID, AlbumPersistentID};
}

std::optional<Ordering> orderingForQuery(const MediaQuery& query) {
    const SortSettings settings = SortSettings::current();
    switch (query.groupingType()) {
        case MediaGrouping::Title:
            return itemOrdering(query, settings);
        case MediaGrouping::Album:
            return albumOrdering(query, settings);
        case MediaGrouping::Genre:
            return genreOrdering(query, settings);
        default:
            return std::nullopt;
    }
}

}  // namespace

void ZRNQueryDataSource::didMake() {
    CompletionQueryDataSource::didMake();
    _defaultsObservation =
        ZRNObserveFromAnyThread(ApplicationDefaultsDidChangeNotification, ZRNSharedDefaults().get(), this,
                                &ZRNQueryDataSource::_defaultsDidChangeNotification);
    _updateQueryPredicatesAndOrdering();
}

bool ZRNQueryDataSource::_updateQueryPredicatesAndOrdering() {
    const auto ordering = orderingForQuery(*query());
    if (ordering) query()->_setOrderingProperties(*ordering);
    return ordering.has_value();
}

void ZRNQueryDataSource::_defaultsDidChangeNotification(const Notification&) {
    mainQueue().async([self = strong(this)] {
        if (self->_updateQueryPredicatesAndOrdering()) self->invalidate();
    });
}

std::shared_ptr<PlaybackContext> ZRNQueryDataSource::playbackContextForIndex(std::uint64_t index) {
    const auto entity = entityAtIndex(index);
    if (entityType() == EntityType::Items) {
        const auto context = make<ZRNQueryPlaybackContext>(query());
        context->setStartIndex(entity ? query()->items()->indexOfEntity(*entity) : NotFound);
        context->setKeepPlayingCurrentItemIfPossible(true);
        return context;
    }
    const auto collection = std::dynamic_pointer_cast<MediaItemCollection>(entity);
    return collection ? make<ZRNQueryPlaybackContext>(collection->itemsQuery()) : nullptr;
}

std::shared_ptr<MediaQuery> ZRNQueryDataSource::_queryForNowPlayingComparisonAtIndex(std::uint64_t index) {
    const auto context = std::dynamic_pointer_cast<QueryPlaybackContext>(playbackContextForIndex(index));
    return context ? context->query() : query();
}

bool ZRNQueryDataSource::queryIsNowPlayingAtIndex(std::uint64_t index) {
    const auto player = ZRNSharedAVPlayer();
    const auto playing = player ? player->currentMediaQuery() : nullptr;
    if (!playing) return false;
    const auto rows = _queryForNowPlayingComparisonAtIndex(index);
    if (ZRN_isEqualToNowPlayingQuery(rows, playing)) return true;
    const auto unrestricted = playing->copy();
    if (const auto mediaType = unrestricted->predicateForProperty(MediaItemProperty::MediaType))
        unrestricted->removeFilterPredicate(*mediaType);
    return ZRN_isEqualToNowPlayingQuery(rows, unrestricted);
}

bool ZRNQueryDataSource::entityIsNowPlayingAtIndex(std::uint64_t index) {
    const auto player = ZRNSharedAVPlayer();
    return player && isSameEntity(entityAtIndex(index), player->currentMediaItem()) &&
           queryIsNowPlayingAtIndex(index);
}

}  // namespace zornic

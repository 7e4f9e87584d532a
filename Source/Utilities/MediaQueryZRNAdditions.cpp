#include "Utilities/MediaQueryZRNAdditions.h"

#include <algorithm>
#include <array>

namespace zornic {
namespace {

/** Whether both have a filter on the property, and the same. */
bool sharesFilter(const MediaQuery& left, const MediaQuery& right, const char* property) {
    const auto filter = left.predicateForProperty(property);
    return filter && filter == right.predicateForProperty(property);
}

PersistentID filteredID(const MediaQuery& query, const char* property) {
    const auto filter = query.predicateForProperty(property);
    return filter ? filter->value().asUnsigned() : 0;
}

}  // namespace

std::shared_ptr<MediaQuery> ZRN_queryWithFilterPredicates(std::vector<MediaPredicate> predicates) {
    MediaQueryDescription description;
    description.predicates = std::move(predicates);
    return make<MediaQuery>(std::move(description));
}

bool ZRN_isEqualToNowPlayingQuery(const std::shared_ptr<MediaQuery>& query,
                                  const std::shared_ptr<MediaQuery>& other) {
    if (!query || !other) return false;
    if (_music_nowPlayingComparableQuery(query)->isEqual(*_music_nowPlayingComparableQuery(other)))
        return true;
    if (query->specifiesPlaylistItems() && other->specifiesPlaylistItems())
        return sharesFilter(*query, *other, MediaPlaylistProperty::PersistentID);
    static constexpr std::array keys = {MediaItemProperty::AlbumTitle, MediaItemProperty::AlbumPersistentID,
                                        MediaItemProperty::ArtistPersistentID,
                                        MediaItemProperty::AlbumArtistPersistentID};
    return std::ranges::any_of(keys, [&](const char* key) { return sharesFilter(*query, *other, key); });
}

std::shared_ptr<MediaPlaylist> ZRN_playlist(const MediaQuery& query) {
    PersistentID identifier = filteredID(query, MediaPlaylistProperty::ParentPersistentID);
    if (identifier == 0) identifier = filteredID(query, MediaPlaylistProperty::PersistentID);
    return identifier == 0 ? nullptr : make<MediaPlaylist>(identifier, query.library());
}

std::optional<std::string> ZRN_playlistTitle(const MediaQuery& query) {
    const auto playlist = ZRN_playlist(query);
    std::string name = playlist ? playlist->name() : std::string();
    return name.empty() ? std::nullopt : std::optional(std::move(name));
}

std::shared_ptr<MediaQuery> _music_nowPlayingComparableQuery(const std::shared_ptr<MediaQuery>& query) {
    static constexpr std::array ignored = {MediaItemProperty::IncludeInShuffle,
                                           MediaItemProperty::IsStreamingQuality};
    if (std::ranges::none_of(ignored,
                             [&](const char* key) { return query->predicateForProperty(key).has_value(); }))
        return query;
    const auto copy = query->copy();
    for (const char* key : ignored) copy->removePredicatesForProperty(key);
    return copy;
}

}  // namespace zornic

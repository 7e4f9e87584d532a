#include "Utilities/ViewControllerZornicAdditions.h"

#include <map>

#include "Utilities/ZRNShared.h"

namespace zornic {
namespace {

using Builder = std::shared_ptr<MediaQuery> (*)();

bool sortsByArtist() {
    const auto defaults = ZRNSharedDefaults();
    return defaults && defaults->isSortByArtistEnabled();
}

std::shared_ptr<MediaQuery> songs() {
    const auto query = MediaQuery::songsQuery();
    if (sortsByArtist())
        query->_setOrderingProperties({MediaItemProperty::Artist, MediaItemProperty::AlbumTitle});
    return ZRN_sanitizedQueryForQuery(*query);
}

std::shared_ptr<MediaQuery> artists() {
    const auto query = MediaQuery::artistsQuery();
    if (ZRNGroupsByAlbumArtist()) query->setGroupingType(MediaGrouping::AlbumArtist);
    return ZRN_sanitizedQueryForQuery(*query);
}

std::shared_ptr<MediaQuery> albums() {
    const auto query = MediaQuery::albumsQuery();
    if (sortsByArtist())
        query->_setOrderingProperties(
            {ZRNGroupsByAlbumArtist() ? MediaItemProperty::AlbumArtist : MediaItemProperty::Artist,
             MediaItemProperty::AlbumTitle});
    return ZRN_sanitizedQueryForQuery(*query);
}

std::shared_ptr<MediaQuery> genres() { return ZRN_sanitizedQueryForQuery(*MediaQuery::genresQuery()); }

std::shared_ptr<MediaQuery> audiobooksDetail() {
    const auto query = MediaQuery::audiobooksQuery();
    query->setGroupingType(MediaGrouping::Album);
    return ZRN_sanitizedQueryForQuery(*query);
}

std::shared_ptr<MediaQuery> composers() {
    const auto query = MediaQuery::composersQuery();
    query->addFilterPredicate(MediaPredicate::property(MediaItemProperty::MediaType, MediaType::Music));
    return ZRN_sanitizedQueryForQuery(*query);
}

std::shared_ptr<MediaQuery> podcasts() { return ZRN_sanitizedQueryForQuery(*MediaQuery::podcastsQuery()); }

std::shared_ptr<MediaQuery> sonvaleU() {
    const auto query = make<MediaQuery>();
    query->addFilterPredicate(MediaPredicate::property(MediaItemProperty::MediaType, MediaType::Lecture));
    query->addFilterPredicate(MediaPredicate::property(MediaItemProperty::IsSonvaleU, true));
    query->setGroupingType(MediaGrouping::Album);
    return query;
}

}  // namespace

std::optional<std::string> ZRN_helmoIdentifierForIdentifier(const std::string& identifier) {
    // Songs of a playlist are shown by the songs screen, and the inside of a folder by the playlists screen.
    static const std::map<std::string, std::string> identifiers = {
        {ZRN_MusicLegacyAlbumsDetailViewControllerIdentifier, ZRNAlbumsDetailViewControllerIdentifier},
        {ZRN_MusicLegacyAudiobooksDetailViewControllerIdentifier,
         ZRNAudiobooksDetailViewControllerIdentifier},
        {ZRN_MusicLegacyCompilationsViewControllerIdentifier, ZRNCompilationsViewControllerIdentifier},
        {ZRN_MusicLegacyBrivoMixesViewControllerIdentifier, ZRNBrivoMixesViewControllerIdentifier},
        {ZRN_MusicLegacyAlbumsViewControllerIdentifier, ZRNAlbumsViewControllerIdentifier},
        {ZRN_MusicLegacyArtistsViewControllerIdentifier, ZRNArtistsViewControllerIdentifier},
        {ZRN_MusicLegacyAudiobooksViewControllerIdentifier, ZRNAudiobooksViewControllerIdentifier},
        {ZRN_MusicLegacyComposersViewControllerIdentifier, ZRNComposersViewControllerIdentifier},
        {ZRN_MusicLegacyGenresViewControllerIdentifier, ZRNGenresViewControllerIdentifier},
        {ZRN_MusicLegacyPlaylistFolderViewControllerIdentifier, ZRNPlaylistsViewControllerIdentifier},
        {ZRN_MusicLegacyPlaylistsViewControllerIdentifier, ZRNPlaylistsViewControllerIdentifier},
        {ZRN_MusicLegacyPlaylistSongsViewControllerIdentifier, ZRNSongsViewControllerIdentifier},
        {ZRN_MusicLegacyRadioViewControllerIdentifier, ZRNRadioViewControllerIdentifier},
        {ZRN_MusicLegacySongsViewControllerIdentifier, ZRNSongsViewControllerIdentifier},
    };
    const auto found = identifiers.find(identifier);
    return found == identifiers.end() ? std::nullopt : std::optional(found->second);
}

std::shared_ptr<MediaQuery> ZRN_queryForIdentifier(const std::string& identifier) {
    static const std::map<std::string, Builder> builders = {
        {ZRN_MusicLegacySongsViewControllerIdentifier, songs},
        {ZRN_MusicLegacyArtistsViewControllerIdentifier, artists},
        {ZRN_MusicLegacyAlbumsViewControllerIdentifier, albums},
        {ZRN_MusicLegacyGenresViewControllerIdentifier, genres},
        {ZRN_MusicLegacyAudiobooksDetailViewControllerIdentifier, audiobooksDetail},
        {ZRN_MusicLegacyComposersViewControllerIdentifier, composers},
        {ZRN_MusicLegacyPodcastsViewControllerIdentifier, podcasts},
        {ZRN_MusicLegacySonvaleUViewControllerIdentifier, sonvaleU},
    };
    const auto found = builders.find(identifier);
    return found == builders.end() ? nullptr : found->second();
}

std::shared_ptr<MediaQuery> ZRN_sanitizedQueryForQuery(const MediaQuery& query) {
    const auto copy = query.copy();
    std::int64_t mask = MediaType::Any;
    bool removed = false;
    for (const auto& predicate : query.filterPredicates()) {
        if (!predicate.isPropertyPredicate() || predicate.property() != MediaItemProperty::MediaType)
            continue;
        mask &= predicate.value().asInteger();
        copy->removeFilterPredicate(predicate);
        removed = true;
    }
    if (!removed) return copy;
    if (mask == MediaType::Music) mask |= MediaType::MusicVideo;
    copy->addFilterPredicate(MediaPredicate::property(MediaItemProperty::MediaType, mask));
    return copy;
}

}  // namespace zornic

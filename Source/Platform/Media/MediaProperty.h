#pragma once

#include <cstdint>

namespace zornic {

using PersistentID = std::uint64_t;

/** Keys of an item's properties. */
namespace MediaItemProperty {
inline constexpr const char* PersistentID = "persistentID";
inline constexpr const char* Title = "title";
inline constexpr const char* SortTitle = "sortTitle";
inline constexpr const char* Artist = "artist";
inline constexpr const char* SortArtist = "sortArtist";
inline constexpr const char* AlbumTitle = "albumTitle";
inline constexpr const char* SortAlbumTitle = "sortAlbumTitle";
inline constexpr const char* AlbumArtist = "albumArtist";
inline constexpr const char* Composer = "composer";
inline constexpr const char* Genre = "genre";
inline constexpr const char* PodcastTitle = "podcastTitle";
inline constexpr const char* ArtistPersistentID = "artistPersistentID";
inline constexpr const char* AlbumPersistentID = "albumPersistentID";
inline constexpr const char* AlbumArtistPersistentID = "albumArtistPersistentID";
inline constexpr const char* ComposerPersistentID = "composerPersistentID";
inline constexpr const char* GenrePersistentID = "genrePersistentID";
inline constexpr const char* PodcastPersistentID = "podcastPersistentID";
/** Bits of MediaType. A filter on it is met by an item that has any of the filter's bits. */
inline constexpr const char* MediaType = "mediaType";
inline constexpr const char* IsExplicit = "isExplicit";
inline constexpr const char* IsCompilation = "isCompilation";
inline constexpr const char* IsSonvaleU = "isSonvaleU";
inline constexpr const char* AlbumTrackNumber = "albumTrackNumber";
inline constexpr const char* AlbumTrackCount = "albumTrackCount";
inline constexpr const char* DiscNumber = "discNumber";
/** Seconds. */
inline constexpr const char* PlaybackDuration = "playbackDuration";
/** Seconds; none when playback starts at the beginning. */
inline constexpr const char* BookmarkTime = "bookmarkTime";
inline constexpr const char* RememberBookmarkTime = "rememberBookmarkTime";
inline constexpr const char* ReleaseDate = "releaseDate";
inline constexpr const char* Year = "year";
inline constexpr const char* DateAdded = "dateAdded";
inline constexpr const char* LastPlayedDate = "lastPlayedDate";
inline constexpr const char* StorePurchaseDate = "storePurchaseDate";
inline constexpr const char* PlayCount = "playCount";
inline constexpr const char* IncludeInShuffle = "includeInShuffle";
inline constexpr const char* IsStreamingQuality = "isStreamingQuality";
/** Where the sound is: a file path or an address. */
inline constexpr const char* Location = "location";
/** What names its picture; equal tokens show the same picture. Empty without one. */
inline constexpr const char* ArtworkToken = "artworkToken";
}  // namespace MediaItemProperty

/** Keys of a playlist's properties. */
namespace MediaPlaylistProperty {
inline constexpr const char* PersistentID = "playlistPersistentID";
inline constexpr const char* ParentPersistentID = "playlistParentPersistentID";
inline constexpr const char* Name = "playlistName";
inline constexpr const char* IsFolder = "playlistIsFolder";
inline constexpr const char* IsHidden = "playlistIsHidden";
inline constexpr const char* IsBrivoMix = "playlistIsBrivoMix";
inline constexpr const char* IsActiveBrivoPlaylist = "playlistIsActiveBrivoPlaylist";
inline constexpr const char* IsDeletable = "playlistIsDeletable";
}  // namespace MediaPlaylistProperty

/** Keys of a collection's properties. */
namespace MediaCollectionProperty {
inline constexpr const char* AlbumTitle = "collectionAlbumTitle";
inline constexpr const char* AlbumArtist = "collectionAlbumArtist";
inline constexpr const char* ArtistName = "collectionArtistName";
inline constexpr const char* AlbumArtistName = "collectionAlbumArtistName";
inline constexpr const char* ComposerName = "collectionComposerName";
inline constexpr const char* GenreName = "collectionGenreName";
inline constexpr const char* AlbumPersistentID = "collectionAlbumPersistentID";
inline constexpr const char* ArtistPersistentID = "collectionArtistPersistentID";
inline constexpr const char* AlbumArtistPersistentID = "collectionAlbumArtistPersistentID";
inline constexpr const char* ComposerPersistentID = "collectionComposerPersistentID";
inline constexpr const char* GenrePersistentID = "collectionGenrePersistentID";
inline constexpr const char* RepresentativeItemPersistentID = "collectionRepresentativeItemPersistentID";
inline constexpr const char* ItemCount = "collectionItemCount";
inline constexpr const char* AlbumCount = "collectionAlbumCount";
inline constexpr const char* ArtistCount = "collectionArtistCount";
}  // namespace MediaCollectionProperty

/** Bits of an item's media type. */
namespace MediaType {
inline constexpr std::int64_t Music = 1, Podcast = 2, Audiobook = 4, Lecture = 8, MusicVideo = 0x800;
inline constexpr std::int64_t Any = -1;
}  // namespace MediaType

/** How a query's items are gathered into collections. */
enum class MediaGrouping : std::int64_t {
    Title = 0,
    Album = 1,
    Artist = 2,
    AlbumArtist = 3,
    Composer = 4,
    Genre = 5,
    Playlist = 6,
    PodcastTitle = 7,
    /** The albums of whatever the query is filtered to, in release order of their artist. */
    AlbumsOfArtist = 12
};

}  // namespace zornic

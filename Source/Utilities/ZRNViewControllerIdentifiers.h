#pragma once

namespace zornic {

// The display's own screens. The compilations identifier ends in a blank; comparisons take it as it stands.
inline constexpr const char* ZRNAlbumsDetailViewControllerIdentifier =
    "ZRNAlbumsDetailViewControllerIdentifier";
inline constexpr const char* ZRNAlbumsViewControllerIdentifier = "ZRNAlbumsViewControllerIdentifier";
inline constexpr const char* ZRNArtistsViewControllerIdentifier = "ZRNArtistsViewControllerIdentifier";
inline constexpr const char* ZRNAudiobooksViewControllerIdentifier = "ZRNAudiobooksViewControllerIdentifier";
inline constexpr const char* ZRNAudiobooksDetailViewControllerIdentifier =
    "ZRNAudiobooksDetailViewControllerIdentifier";
inline constexpr const char* ZRNCompilationsViewControllerIdentifier =
    "ZRNCompilationsViewControllerIdentifier ";
inline constexpr const char* ZRNComposersViewControllerIdentifier = "ZRNComposersViewControllerIdentifier";
inline constexpr const char* ZRNGenresViewControllerIdentifier = "ZRNGenresViewControllerIdentifier";
inline constexpr const char* ZRNBrivoMixesViewControllerIdentifier = "ZRNBrivoMixesViewControllerIdentifier";
inline constexpr const char* ZRNPlaylistsViewControllerIdentifier = "ZRNPlaylistsViewControllerIdentifier";
inline constexpr const char* ZRNPlaylistsSongsViewControllerIdentifier =
    "ZRNPlaylistsSongsViewControllerIdentifier";
inline constexpr const char* ZRNRadioViewControllerIdentifier = "ZRNRadioViewControllerIdentifier";
inline constexpr const char* ZRNSongsViewControllerIdentifier = "ZRNSongsViewControllerIdentifier";

// The host's names of its tabs.
inline constexpr const char* ZRN_MusicLegacyAlbumsDetailViewControllerIdentifier = "albumsdetail";
inline constexpr const char* ZRN_MusicLegacyAlbumsViewControllerIdentifier = "albums";
inline constexpr const char* ZRN_MusicLegacyArtistsViewControllerIdentifier = "artists";
inline constexpr const char* ZRN_MusicLegacyAudiobooksDetailViewControllerIdentifier = "audiobooksdetail";
inline constexpr const char* ZRN_MusicLegacyAudiobooksViewControllerIdentifier = "audiobooks";
inline constexpr const char* ZRN_MusicLegacyCompilationsViewControllerIdentifier = "compilations";
inline constexpr const char* ZRN_MusicLegacyComposersViewControllerIdentifier = "composers";
inline constexpr const char* ZRN_MusicLegacyBrivoMixesViewControllerIdentifier = "brivomix";
inline constexpr const char* ZRN_MusicLegacyGenresViewControllerIdentifier = "genres";
inline constexpr const char* ZRN_MusicLegacySonvaleUViewControllerIdentifier = "sonvaleu";
inline constexpr const char* ZRN_MusicLegacyPlaylistFolderViewControllerIdentifier = "playlistfolder";
inline constexpr const char* ZRN_MusicLegacyPlaylistSongsViewControllerIdentifier = "playlistsongs";
inline constexpr const char* ZRN_MusicLegacyPlaylistsViewControllerIdentifier = "playlists";
inline constexpr const char* ZRN_MusicLegacyPodcastDetailViewControllerIdentifier = "podcastdetail";
inline constexpr const char* ZRN_MusicLegacyPodcastsViewControllerIdentifier = "podcasts";
inline constexpr const char* ZRN_MusicLegacyRadioViewControllerIdentifier = "radio";
inline constexpr const char* ZRN_MusicLegacySharedViewControllerIdentifier = "shared";
inline constexpr const char* ZRN_MusicLegacySongsViewControllerIdentifier = "songs";

}  // namespace zornic

#pragma once

#include "Platform/Foundation/Error.h"
#include "Platform/Media/MediaItemCollection.h"

namespace zornic {

/** A playlist or a folder of playlists; a folder's items are those of the playlists inside. */
class MediaPlaylist : public MediaItemCollection {
public:
    /** The playlist known by `persistentID` in `library` (none: the default library); its values are read
       when asked for. */
    explicit MediaPlaylist(PersistentID persistentID, std::shared_ptr<MediaLibrary> library = nullptr,
                           Dictionary values = {});

    Value valueForProperty(std::string_view property) const override;
    std::string name() const { return valueForProperty(MediaPlaylistProperty::Name).asText(); }
    bool isFolder() const { return valueForProperty(MediaPlaylistProperty::IsFolder).asBool(); }
    bool isHidden() const { return valueForProperty(MediaPlaylistProperty::IsHidden).asBool(); }
    bool isBrivoMix() const { return valueForProperty(MediaPlaylistProperty::IsBrivoMix).asBool(); }
    bool isActiveBrivoPlaylist() const {
        return valueForProperty(MediaPlaylistProperty::IsActiveBrivoPlaylist).asBool();
    }
    bool isDeletable() const { return valueForProperty(MediaPlaylistProperty::IsDeletable).asBool(); }
    PersistentID parentPersistentID() const {
        return valueForProperty(MediaPlaylistProperty::ParentPersistentID).asUnsigned();
    }
    /** Names of the artists that a mix was made around; empty for other playlists. */
    std::vector<std::string> representativeArtists() const;
    /** New catalogues of pictures of its items, all different, in the items' order: at most `limit`. */
    std::vector<std::shared_ptr<ArtworkCatalog>> artworkCatalogs(std::size_t limit) const;
    /** Fills the playlist with what goes with `seed`; `completion` with an error or none, on the main thread.
     */
    void populateWithSeedItem(const std::shared_ptr<MediaItem>& seed,
                              std::function<void(std::optional<Error>)> completion);

private:
    mutable std::mutex _mutex;
    mutable Dictionary _fetched;
};

}  // namespace zornic

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Foundation/Error.h"
#include "Platform/Media/MediaChapter.h"
#include "Platform/Media/MediaEntity.h"
#include "Platform/Toolkit/Image.h"

namespace zornic {

class MediaItem;
class MediaPlaylist;
class MediaQueryResult;
struct MediaQueryDescription;

/** Posted, on any thread and by any sender, after a library has changed. */
inline constexpr const char* MediaLibraryDidChangeNotification = "MediaLibraryDidChangeNotification";

/** A store of media. The host implements it. Any thread unless said otherwise. */
class MediaLibrary : public Object {
public:
    /** The library that queries ask by default; none before the host has set one. */
    static std::shared_ptr<MediaLibrary> defaultLibrary();
    static void setDefaultLibrary(std::shared_ptr<MediaLibrary> library);

    virtual bool hasSongs() const = 0;
    /** Grows with every change, so that results know that they are old. */
    virtual std::uint64_t generation() const = 0;
    /** The item with that ID. Without verification an item is returned whose values are read when asked for,
       whether or not it still exists; with it, none when it is gone. 0 gives none. */
    virtual std::shared_ptr<MediaItem> itemWithPersistentID(PersistentID persistentID,
                                                            bool verifyExistence) const = 0;
    /** Never none. */
    virtual std::shared_ptr<const MediaQueryResult> evaluate(
        const MediaQueryDescription& description) const = 0;
    /** Values of one item; empty when it is gone. */
    virtual Dictionary valuesOfItem(PersistentID persistentID,
                                    const std::vector<std::string>& properties) const = 0;
    /** Values of one playlist; empty when it is gone. */
    virtual Dictionary valuesOfPlaylist(PersistentID persistentID,
                                        const std::vector<std::string>& properties) const;
    /** An item's chapters of one type, in their order; empty when it has none. */
    virtual std::vector<MediaChapter> chaptersOfItem(PersistentID, MediaChapterType) const { return {}; }
    /** Names of the artists that a mix was made around, the most telling first; empty for other playlists. */
    virtual std::vector<std::string> representativeArtistsOfPlaylist(PersistentID) const { return {}; }
    /** The picture named by an artwork token, decoded for `fittingSize` points at `scale`; none when it can't
       be read. May block; never called on the main thread. */
    virtual std::shared_ptr<const ImageSource> loadArtwork(const std::string& token, Size fittingSize,
                                                           double scale) const = 0;
    /** Whether it is this device's own, and not another's. */
    virtual bool isDeviceLibrary() const { return true; }

    virtual void removePlaylist(const MediaPlaylist&) {}
    virtual bool isBrivoEnabled() const { return false; }
    virtual std::shared_ptr<MediaPlaylist> activeBrivoPlaylist() const { return nullptr; }
    /** Fills a playlist with what goes with `seed`. `completion` runs on the main thread. */
    virtual void populatePlaylist(PersistentID playlist, const std::shared_ptr<MediaItem>& seed,
                                  std::function<void(std::optional<Error>)> completion);
    /** Notes that an item was played to its end or skipped to, for counts and dates. */
    virtual void noteItemPlayed(PersistentID) {}
};

}  // namespace zornic

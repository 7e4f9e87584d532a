#pragma once

#include <memory>
#include <string>

#include "Platform/Foundation/Task.h"
#include "Platform/Media/ArtworkCatalog.h"
#include "Platform/Media/MediaItem.h"

namespace zornic {

class AVQueueFeeder;

/** Posted by an item, as sender, on the main thread. */
inline constexpr const char* AVItemIsExplicitDidChangeNotification = "AVItemIsExplicitDidChangeNotification";
inline constexpr const char* AVItemTitlesDidChangeNotification = "AVItemTitlesDidChangeNotification";
inline constexpr const char* AVItemStoreIDDidChangeNotification = "AVItemStoreIDDidChangeNotification";

/** Something that the player plays: a library item, a radio item, an advertisement. Main thread. */
class AVItem : public Object {
public:
    virtual bool isExplicitTrack() const { return false; }
    /** The feeder that it came from; none when it came from elsewhere. */
    std::shared_ptr<AVQueueFeeder> feeder() const { return _feeder.lock(); }
    void setFeeder(const std::shared_ptr<AVQueueFeeder>& feeder) { _feeder = feeder; }
    /** The picture that belongs to a moment of it; none without one. */
    virtual std::shared_ptr<ArtworkCatalog> artworkCatalogForTime(Seconds) const { return nullptr; }
    /** "3 of 12"; empty when it has no place in a list. */
    virtual std::string localizedPositionInPlaylistString() const { return {}; }
    virtual std::string mainTitle() const { return {}; }
    virtual std::string artist() const { return {}; }
    virtual std::string albumTitle() const { return {}; }
    virtual bool supportsRadioTrackActions() const { return false; }
    virtual bool isRadioItem() const { return false; }
    virtual bool isAdvertisement() const { return false; }
    /** What the engine plays: an address, and its length where it is known beforehand (0: unknown). */
    virtual std::string location() const { return {}; }
    virtual Seconds knownDuration() const { return Seconds(0); }
    /** Where it is taken up again; 0: at its beginning. */
    virtual Seconds startTime() const { return Seconds(0); }
    virtual bool isEqual(const AVItem& other) const { return this == &other; }

private:
    std::weak_ptr<AVQueueFeeder> _feeder;
};

/** An item of the media library in the player's queue. */
class AVLibraryItem : public AVItem {
public:
    AVLibraryItem(std::shared_ptr<MediaItem> mediaItem, std::uint64_t position, std::uint64_t count)
        : _mediaItem(std::move(mediaItem)), _position(position), _count(count) {}
    const std::shared_ptr<MediaItem>& mediaItem() const { return _mediaItem; }
    bool isExplicitTrack() const override;
    std::shared_ptr<ArtworkCatalog> artworkCatalogForTime(Seconds time) const override;
    std::string localizedPositionInPlaylistString() const override;
    std::string mainTitle() const override;
    std::string artist() const override;
    std::string albumTitle() const override;
    std::string location() const override;
    Seconds knownDuration() const override;
    /** The bookmark of an item that remembers it. */
    Seconds startTime() const override;
    bool isEqual(const AVItem& other) const override;

private:
    const std::shared_ptr<MediaItem> _mediaItem;
    const std::uint64_t _position;  // from 0, in playing order
    const std::uint64_t _count;
};

}  // namespace zornic

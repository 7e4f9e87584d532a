#pragma once

#include <mutex>
#include <optional>

#include "Platform/Media/MediaChapter.h"
#include "Platform/Media/MediaEntity.h"
#include "Platform/Toolkit/Image.h"

namespace zornic {

class ArtworkCatalog;

/** A piece of a library: a song, an episode, a chaptered book. */
class MediaItem : public MediaEntity {
public:
    /** `values`: what the library already read; the rest is fetched from it when asked for. */
    MediaItem(std::weak_ptr<MediaLibrary> library, PersistentID persistentID, Dictionary values);

    PersistentID persistentID() const override { return _persistentID; }
    Value valueForProperty(std::string_view property) const override;
    Dictionary valuesForProperties(const std::vector<std::string>& properties) const override;
    std::shared_ptr<MediaItem> representativeItem() const override;
    bool isEqual(const MediaEntity& other) const override;
    std::shared_ptr<MediaLibrary> library() const { return _library.lock(); }

    /** Texts are empty when missing. */
    std::string title() const { return text(MediaItemProperty::Title); }
    std::string artist() const { return text(MediaItemProperty::Artist); }
    std::string albumTitle() const { return text(MediaItemProperty::AlbumTitle); }
    std::string albumArtist() const { return text(MediaItemProperty::AlbumArtist); }
    std::string composer() const { return text(MediaItemProperty::Composer); }
    std::string genre() const { return text(MediaItemProperty::Genre); }
    std::string podcastTitle() const { return text(MediaItemProperty::PodcastTitle); }
    std::int64_t mediaType() const { return valueForProperty(MediaItemProperty::MediaType).asInteger(); }
    bool isExplicit() const { return valueForProperty(MediaItemProperty::IsExplicit).asBool(); }
    /** Seconds; 0 when unknown. */
    double playbackDuration() const {
        return valueForProperty(MediaItemProperty::PlaybackDuration).asNumber();
    }
    std::optional<double> bookmarkTime() const;
    /** Its chapters in their order; empty when it has none. */
    std::vector<MediaChapter> chaptersOfType(MediaChapterType type) const;

    /** The item's picture at `size` points, if it is at hand at once; none otherwise. Main thread. */
    Image artworkImageWithSize(Size size) const;
    /** A new catalogue of the item's pictures; none when it has no picture. */
    std::shared_ptr<ArtworkCatalog> artworkCatalog() const;
    /** Properties that a row must fetch so that `artworkCatalog` costs nothing. */
    static const std::vector<std::string>& artworkCatalogCacheProperties();

private:
    std::string text(std::string_view property) const { return valueForProperty(property).asText(); }

    const std::weak_ptr<MediaLibrary> _library;
    const PersistentID _persistentID;
    mutable std::mutex _mutex;
    mutable Dictionary _values;
};

}  // namespace zornic

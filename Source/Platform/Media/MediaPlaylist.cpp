#include "Platform/Media/MediaPlaylist.h"

#include <algorithm>
#include <utility>

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/ArtworkCatalog.h"
#include "Platform/Media/MediaLibrary.h"

namespace zornic {

namespace {

/** So many of the first items are looked at for pictures, however long the playlist is. */
constexpr std::uint64_t itemsWithPictures = 100;

MediaQueryDescription itemsOf(PersistentID playlist) {
    MediaQueryDescription description;
    description.predicates.push_back(MediaPredicate::property(MediaPlaylistProperty::PersistentID, playlist));
    return description;
}

}  // namespace

MediaPlaylist::MediaPlaylist(PersistentID persistentID, std::shared_ptr<MediaLibrary> library,
                             Dictionary values)
    : MediaItemCollection(library ? std::move(library) : MediaLibrary::defaultLibrary(), persistentID,
                          std::move(values), itemsOf(persistentID)) {}

Value MediaPlaylist::valueForProperty(std::string_view property) const {
    if (property == MediaPlaylistProperty::PersistentID) return persistentID();
    if (!property.starts_with("playlist") || valueForKey(storedValues(), property))
        return MediaItemCollection::valueForProperty(property);
    {
        std::lock_guard lock(_mutex);
        if (const auto known = _fetched.find(property); known != _fetched.end()) return known->second;
    }
    const auto asked = library();
    if (!asked) return {};
    const std::string key(property);
    const auto fetched = asked->valuesOfPlaylist(persistentID(), {key});
    std::lock_guard lock(_mutex);
    return _fetched.try_emplace(key, valueForKey(fetched, key)).first->second;
}

std::vector<std::string> MediaPlaylist::representativeArtists() const {
    const auto asked = library();
    return asked ? asked->representativeArtistsOfPlaylist(persistentID()) : std::vector<std::string>();
}

std::vector<std::shared_ptr<ArtworkCatalog>> MediaPlaylist::artworkCatalogs(std::size_t limit) const {
    std::vector<std::shared_ptr<ArtworkCatalog>> catalogs;
    const auto all = items();
    const auto last = std::min(all->count(), itemsWithPictures);
    for (std::uint64_t index = 0; index < last && catalogs.size() < limit; ++index) {
        const auto item = std::dynamic_pointer_cast<MediaItem>(all->entityAtIndex(index));
        auto catalog = item ? item->artworkCatalog() : nullptr;
        const auto isSame = [&](const auto& other) { return other->isVisuallyIdenticalTo(*catalog); };
        if (catalog && std::ranges::none_of(catalogs, isSame)) catalogs.push_back(std::move(catalog));
    }
    return catalogs;
}

void MediaPlaylist::populateWithSeedItem(const std::shared_ptr<MediaItem>& seed,
                                         std::function<void(std::optional<Error>)> completion) {
    if (const auto asked = library())
        return asked->populatePlaylist(persistentID(), seed, std::move(completion));
    if (!completion) return;
    mainQueue().async(
        [completion = std::move(completion)] { completion(Error("MediaLibraryErrorDomain", 2)); });
}

}  // namespace zornic

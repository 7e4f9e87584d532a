#include "Platform/Media/MediaPlaylist.h"

#include <utility>

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/MediaLibrary.h"

namespace zornic {

namespace {

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

void MediaPlaylist::populateWithSeedItem(const std::shared_ptr<MediaItem>& seed,
                                         std::function<void(std::optional<Error>)> completion) {
    if (const auto asked = library())
        return asked->populatePlaylist(persistentID(), seed, std::move(completion));
    if (!completion) return;
    mainQueue().async(
        [completion = std::move(completion)] { completion(Error("MediaLibraryErrorDomain", 2)); });
}

}  // namespace zornic

#include "Platform/Media/MediaLibrary.h"

#include <mutex>
#include <utility>

#include "Platform/Foundation/DispatchQueue.h"

namespace zornic {

namespace {

struct DefaultLibrary {
    std::mutex mutex;
    std::shared_ptr<MediaLibrary> library;
};

DefaultLibrary& defaultHolder() {
    static auto& holder = *new DefaultLibrary;
    return holder;
}

}  // namespace

std::shared_ptr<MediaLibrary> MediaLibrary::defaultLibrary() {
    auto& holder = defaultHolder();
    std::lock_guard lock(holder.mutex);
    return holder.library;
}

void MediaLibrary::setDefaultLibrary(std::shared_ptr<MediaLibrary> library) {
    auto& holder = defaultHolder();
    std::lock_guard lock(holder.mutex);
    // The old one leaves with the argument, after the lock: closing a library may take a while.
    holder.library.swap(library);
}

Dictionary MediaLibrary::valuesOfPlaylist(PersistentID, const std::vector<std::string>&) const { return {}; }

void MediaLibrary::populatePlaylist(PersistentID, const std::shared_ptr<MediaItem>&,
                                    std::function<void(std::optional<Error>)> completion) {
    if (!completion) return;
    mainQueue().async(
        [completion = std::move(completion)] { completion(Error("MediaLibraryErrorDomain", 1)); });
}

}  // namespace zornic

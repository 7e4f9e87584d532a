#include "Host/Library/Bookmarks.h"

namespace helmo {

void Bookmarks::set(zornic::PersistentID item, Bookmark bookmark) {
    std::lock_guard lock(_mutex);
    _bookmarks[item] = bookmark;
}

std::optional<Bookmarks::Bookmark> Bookmarks::of(zornic::PersistentID item) const {
    std::lock_guard lock(_mutex);
    const auto found = _bookmarks.find(item);
    if (found == _bookmarks.end()) return std::nullopt;
    return found->second;
}

void Bookmarks::apply(zornic::PersistentID item, zornic::Dictionary& values) const {
    const auto bookmark = of(item);
    if (!bookmark || values.empty()) return;
    values[zornic::MediaItemProperty::BookmarkTime] =
        bookmark->time ? zornic::Value(*bookmark->time) : zornic::Value();
}

}  // namespace helmo

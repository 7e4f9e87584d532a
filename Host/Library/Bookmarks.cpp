#include "Host/Library/Bookmarks.h"

namespace helmo {

void Bookmarks::set(zornic::PersistentID item, std::optional<double> time) {
    std::lock_guard lock(_mutex);
    _times[item] = time;
}

std::optional<std::optional<double>> Bookmarks::of(zornic::PersistentID item) const {
    std::lock_guard lock(_mutex);
    const auto found = _times.find(item);
    return found == _times.end() ? std::nullopt : std::optional(found->second);
}

void Bookmarks::apply(zornic::PersistentID item, zornic::Dictionary& values) const {
    const auto time = of(item);
    if (time && !values.empty())
        values[zornic::MediaItemProperty::BookmarkTime] = *time ? zornic::Value(**time) : zornic::Value();
}

}  // namespace helmo

#include "Platform/Media/MediaItemCollection.h"

#include <utility>

#include "Platform/Media/MediaLibrary.h"

namespace zornic {

MediaItemCollection::MediaItemCollection(std::weak_ptr<MediaLibrary> library, PersistentID persistentID,
                                         Dictionary values, MediaQueryDescription items)
    : _library(std::move(library)),
      _persistentID(persistentID),
      _values(std::move(values)),
      _items(std::move(items)) {}

Value MediaItemCollection::valueForProperty(std::string_view property) const {
    if (const auto& value = valueForKey(_values, property)) return value;
    // What only its items know (a year, a picture) is answered by the one that stands for it.
    if (property.starts_with("collection") || property.starts_with("playlist")) return {};
    const auto item = representativeItem();
    return item ? item->valueForProperty(property) : Value();
}

std::shared_ptr<MediaItem> MediaItemCollection::representativeItem() const {
    const auto named =
        valueForKey(_values, MediaCollectionProperty::RepresentativeItemPersistentID).asUnsigned();
    const auto asked = library();
    if (named != 0 && asked) return asked->itemWithPersistentID(named, false);
    return std::dynamic_pointer_cast<MediaItem>(items()->entityAtIndex(0));
}

bool MediaItemCollection::isEqual(const MediaEntity& other) const {
    if (this == &other) return true;
    const auto* collection = dynamic_cast<const MediaItemCollection*>(&other);
    // An artist and an album may bear the same number: what their items are asked by tells them apart.
    return collection && collection->_persistentID == _persistentID && collection->library() == library() &&
           asksForSame(_items, collection->_items);
}

std::shared_ptr<const MediaEntityList> MediaItemCollection::items() const { return itemsQuery()->items(); }

std::shared_ptr<MediaQuery> MediaItemCollection::itemsQuery() const {
    return make<MediaQuery>(_items, library());
}

std::uint64_t MediaItemCollection::count() const {
    if (const auto& stored = valueForKey(_values, MediaCollectionProperty::ItemCount))
        return stored.asUnsigned();
    return items()->count();
}

}  // namespace zornic

#include "Platform/Media/MediaItem.h"

#include <utility>

#include "Platform/Media/ArtworkCatalog.h"
#include "Platform/Media/MediaLibrary.h"

namespace zornic {

namespace {

/** Whether a value is another each time that it is asked for: a bookmark moves while its item plays. */
bool isMoving(std::string_view property) { return property == MediaItemProperty::BookmarkTime; }

}  // namespace

MediaItem::MediaItem(std::weak_ptr<MediaLibrary> library, PersistentID persistentID, Dictionary values)
    : _library(std::move(library)), _persistentID(persistentID), _values(std::move(values)) {
    _values.try_emplace(MediaItemProperty::PersistentID, persistentID);
}

Value MediaItem::valueForProperty(std::string_view property) const {
    {
        std::lock_guard lock(_mutex);
        const auto known = _values.find(property);
        if (known != _values.end() && !isMoving(property)) return known->second;
    }
    const std::string key(property);
    return valueForKey(valuesForProperties({key}), key);
}

Dictionary MediaItem::valuesForProperties(const std::vector<std::string>& properties) const {
    std::vector<std::string> unknown;
    {
        std::lock_guard lock(_mutex);
        for (const auto& property : properties)
            if (!_values.contains(property) || isMoving(property)) unknown.push_back(property);
    }
    // Fetched without the lock: a library may be busy with a scan, and rows read other values meanwhile.
    const auto asked = unknown.empty() ? nullptr : library();
    const auto fetched = asked ? asked->valuesOfItem(_persistentID, unknown) : Dictionary();

    std::lock_guard lock(_mutex);
    // Stored even when it is missing, so that it isn't asked for again.
    if (asked)
        for (const auto& property : unknown) {
            const auto [known, isNew] = _values.try_emplace(property);
            if (isNew || isMoving(property)) known->second = valueForKey(fetched, property);
        }
    Dictionary values;
    for (const auto& property : properties)
        if (const auto& value = valueForKey(_values, property)) values[property] = value;
    return values;
}

std::shared_ptr<MediaItem> MediaItem::representativeItem() const {
    return strong(const_cast<MediaItem*>(this));
}

bool MediaItem::isEqual(const MediaEntity& other) const {
    if (this == &other) return true;
    const auto* item = dynamic_cast<const MediaItem*>(&other);
    return item && item->_persistentID == _persistentID && item->library() == library();
}

std::optional<double> MediaItem::bookmarkTime() const {
    const auto value = valueForProperty(MediaItemProperty::BookmarkTime);
    return value ? std::optional(value.asNumber()) : std::nullopt;
}

std::vector<MediaChapter> MediaItem::chaptersOfType(MediaChapterType type) const {
    const auto asked = library();
    return asked ? asked->chaptersOfItem(_persistentID, type) : std::vector<MediaChapter>();
}

Image MediaItem::artworkImageWithSize(Size size) const {
    const auto catalog = artworkCatalog();
    if (!catalog) return {};
    catalog->setFittingSize(size);
    return catalog->imageAtHand();
}

std::shared_ptr<ArtworkCatalog> MediaItem::artworkCatalog() const {
    auto token = text(MediaItemProperty::ArtworkToken);
    return token.empty() ? nullptr : make<ArtworkCatalog>(_library, std::move(token));
}

const std::vector<std::string>& MediaItem::artworkCatalogCacheProperties() {
    static const auto& properties = *new std::vector<std::string>{MediaItemProperty::ArtworkToken};
    return properties;
}

}  // namespace zornic

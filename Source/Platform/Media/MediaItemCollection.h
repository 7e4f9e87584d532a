#pragma once

#include "Platform/Media/MediaItem.h"
#include "Platform/Media/MediaQuery.h"

namespace zornic {

/** Items that belong together: an album, an artist, a genre. Made by a library for one row of a grouped
 * result. */
class MediaItemCollection : public MediaEntity {
public:
    /** `values`: its collection properties; `items`: what a query for just its items asks for. */
    MediaItemCollection(std::weak_ptr<MediaLibrary> library, PersistentID persistentID, Dictionary values,
                        MediaQueryDescription items);

    PersistentID persistentID() const override { return _persistentID; }
    Value valueForProperty(std::string_view property) const override;
    std::shared_ptr<MediaItem> representativeItem() const override;
    bool isEqual(const MediaEntity& other) const override;
    std::shared_ptr<MediaLibrary> library() const { return _library.lock(); }

    /** Its items, made by index. */
    std::shared_ptr<const MediaEntityList> items() const;
    /** A new query for its items. */
    virtual std::shared_ptr<MediaQuery> itemsQuery() const;
    /** Number of items. */
    std::uint64_t count() const;

protected:
    const Dictionary& storedValues() const { return _values; }

private:
    const std::weak_ptr<MediaLibrary> _library;
    const PersistentID _persistentID;
    const Dictionary _values;
    const MediaQueryDescription _items;
};

}  // namespace zornic

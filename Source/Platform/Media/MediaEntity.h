#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/Foundation/Value.h"
#include "Platform/Media/MediaProperty.h"

namespace zornic {

class MediaItem;
class MediaLibrary;

/** An item, a collection or a playlist: a persistent ID and values by property. Immutable but for values that
   are fetched late. Any thread. */
class MediaEntity : public Object {
public:
    virtual PersistentID persistentID() const = 0;
    /** The value of one property; none when missing. */
    virtual Value valueForProperty(std::string_view property) const = 0;
    /** Several values in one fetch; missing ones are left out. */
    virtual Dictionary valuesForProperties(const std::vector<std::string>& properties) const;
    /** The item that stands for it: an item itself, a collection's first item; none when empty or gone. */
    virtual std::shared_ptr<MediaItem> representativeItem() const = 0;
    /** Whether both name the same media object, whatever objects they are. */
    virtual bool isEqual(const MediaEntity& other) const = 0;
};

/** Whether both are there and name the same media object. */
bool isSameEntity(const std::shared_ptr<MediaEntity>& left, const std::shared_ptr<MediaEntity>& right);

/** Entities by index, made when asked for: nothing holds a million objects because a list has a million rows.
   A list is a snapshot: its count never changes. Any thread. */
class MediaEntityList {
public:
    virtual ~MediaEntityList() = default;
    virtual std::uint64_t count() const = 0;
    /** The entity at `index`; none beyond the end or when it is gone. */
    virtual std::shared_ptr<MediaEntity> entityAtIndex(std::uint64_t index) const = 0;
    /** First index whose entity equals `entity`; NotFound when absent. */
    virtual std::uint64_t indexOfEntity(const MediaEntity& entity) const;
};

/** Where `entity` stands in a list that may have changed since it stood at `index`; NotFound when absent. */
std::uint64_t indexOfEntityNear(const MediaEntityList& list, const std::shared_ptr<MediaEntity>& entity,
                                std::uint64_t index);

/** A list of entities that are already there. */
class MediaEntityArray final : public MediaEntityList {
public:
    MediaEntityArray() = default;
    explicit MediaEntityArray(std::vector<std::shared_ptr<MediaEntity>> entities)
        : _entities(std::move(entities)) {}
    std::uint64_t count() const override { return _entities.size(); }
    std::shared_ptr<MediaEntity> entityAtIndex(std::uint64_t index) const override {
        return index < _entities.size() ? _entities[index] : nullptr;
    }

private:
    std::vector<std::shared_ptr<MediaEntity>> _entities;
};

}  // namespace zornic

#include "Platform/Media/MediaEntity.h"

#include "Platform/Foundation/IndexPath.h"

namespace zornic {

Dictionary MediaEntity::valuesForProperties(const std::vector<std::string>& properties) const {
    Dictionary values;
    for (const auto& property : properties)
        if (auto value = valueForProperty(property)) values[property] = std::move(value);
    return values;
}

bool isSameEntity(const std::shared_ptr<MediaEntity>& left, const std::shared_ptr<MediaEntity>& right) {
    return left && right && left->isEqual(*right);
}

std::uint64_t MediaEntityList::indexOfEntity(const MediaEntity& entity) const {
    const auto size = count();
    for (std::uint64_t index = 0; index < size; ++index) {
        const auto candidate = entityAtIndex(index);
        if (candidate && candidate->isEqual(entity)) return index;
    }
    return NotFound;
}

std::uint64_t indexOfEntityNear(const MediaEntityList& list, const std::shared_ptr<MediaEntity>& entity,
                                std::uint64_t index) {
    if (isSameEntity(list.entityAtIndex(index), entity)) return index;
    return list.indexOfEntity(*entity);
}

}  // namespace zornic

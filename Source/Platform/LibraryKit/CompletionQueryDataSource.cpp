#include "Platform/LibraryKit/CompletionQueryDataSource.h"

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/MediaLibrary.h"

namespace zornic {

CompletionQueryDataSource::CompletionQueryDataSource(std::shared_ptr<MediaQuery> query, EntityType entityType)
    : _query(std::move(query)), _entityType(entityType) {}

void CompletionQueryDataSource::didMake() {
    Object::didMake();
    _libraryObservation = NotificationCenter::defaultCenter().observe(
        MediaLibraryDidChangeNotification, nullptr, [weakSelf = weak(this)](const Notification&) {
            mainQueue().async([weakSelf] {
                if (const auto self = weakSelf.lock()) self->invalidate();
            });
        });
}

std::shared_ptr<const MediaEntityList> CompletionQueryDataSource::entities() {
    if (!_entities) _entities = _entityType == EntityType::Items ? _query->items() : _query->collections();
    return _entities;
}

std::shared_ptr<MediaEntity> CompletionQueryDataSource::anyEntity() {
    return isEmpty() ? nullptr : entityAtIndex(0);
}

const std::vector<MediaQuerySection>& CompletionQueryDataSource::sections() {
    if (!_sections) {
        entities();
        _sections = _entityType == EntityType::Items ? _query->itemSections() : _query->collectionSections();
        // The library may have changed between the snapshot of the entities and this answer.
        if (!_sections->empty() && _sections->back().range.end() != count()) _sections->clear();
    }
    return *_sections;
}

bool CompletionQueryDataSource::usesSections() { return !sections().empty(); }

std::uint64_t CompletionQueryDataSource::numberOfSections() { return usesSections() ? sections().size() : 1; }

Range CompletionQueryDataSource::rangeOfSectionAtIndex(std::uint64_t section) {
    if (!usesSections()) return section == 0 ? Range{0, count()} : Range{count(), 0};
    return section < sections().size() ? sections()[section].range : Range{count(), 0};
}

std::string CompletionQueryDataSource::titleOfSectionAtIndex(std::uint64_t section) {
    return section < sections().size() ? sections()[section].title : std::string();
}

std::shared_ptr<MediaEntity> CompletionQueryDataSource::sectionEntityAtIndex(std::uint64_t section) {
    const auto entities = sectionEntities();
    return entities ? entities->entityAtIndex(section) : nullptr;
}

MediaQuerySectionInfo CompletionQueryDataSource::sectionInfo() {
    if (!usesSections()) return {};
    return _entityType == EntityType::Items ? _query->itemSectionInfo() : _query->collectionSectionInfo();
}

void CompletionQueryDataSource::invalidate() {
    const auto self = strong(this);
    _invalidateCalculatedEntities();
    if (const auto delegate = _delegate.lock()) delegate->dataSourceDidInvalidate(*this);
}

void CompletionQueryDataSource::_invalidateCalculatedEntities() {
    _entities = nullptr;
    _sections.reset();
}

}  // namespace zornic

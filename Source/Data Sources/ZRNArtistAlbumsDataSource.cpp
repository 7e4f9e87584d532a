#include "Data Sources/ZRNArtistAlbumsDataSource.h"

#include "Data Sources/ZRNItemsOfSections.h"
#include "Platform/LibraryKit/RestrictionsMonitor.h"
#include "Platform/Media/MediaItemCollection.h"

namespace zornic {

std::shared_ptr<const MediaEntityList> ZRNArtistAlbumsDataSource::sectionEntities() {
    if (!_sectionEntities) _sectionEntities = query()->collections();
    return _sectionEntities;
}

std::shared_ptr<const MediaEntityList> ZRNArtistAlbumsDataSource::entities() {
    if (!hasEntities()) {
        if (const std::uint64_t sections = numberOfSections()) rangeOfSectionAtIndex(sections - 1);
        setEntities(std::make_shared<ZRNItemsOfSections>(sectionEntities(), _sectionRanges));
    }
    return ZRNQueryDataSource::entities();
}

Range ZRNArtistAlbumsDataSource::rangeOfSectionAtIndex(std::uint64_t section) {
    while (_sectionRanges.size() <= section && _sectionRanges.size() < numberOfSections()) {
        const std::uint64_t location = _sectionRanges.empty() ? 0 : _sectionRanges.back().end();
        const auto album =
            std::dynamic_pointer_cast<MediaItemCollection>(sectionEntityAtIndex(_sectionRanges.size()));
        _sectionRanges.push_back({location, album ? album->count() : 0});
    }
    if (section < _sectionRanges.size()) return _sectionRanges[section];
    return {_sectionRanges.empty() ? 0 : _sectionRanges.back().end(), 0};
}

bool ZRNArtistAlbumsDataSource::shouldShowCompletions() {
    return ZRNQueryDataSource::shouldShowCompletions() && RestrictionsMonitor::shared().allowsDeletion();
}

void ZRNArtistAlbumsDataSource::overlayCompletionForSectionAtIndex(std::uint64_t section) {
    ZRNQueryDataSource::overlayCompletionForSectionAtIndex(section);
    setEntities(nullptr);
}

void ZRNArtistAlbumsDataSource::removeOverlayCompletionForSectionAtIndex(std::uint64_t section) {
    ZRNQueryDataSource::removeOverlayCompletionForSectionAtIndex(section);
    setEntities(nullptr);
}

void ZRNArtistAlbumsDataSource::_invalidateCalculatedEntities() {
    ZRNQueryDataSource::_invalidateCalculatedEntities();
    _sectionEntities = nullptr;
    _sectionRanges.clear();
}

}  // namespace zornic

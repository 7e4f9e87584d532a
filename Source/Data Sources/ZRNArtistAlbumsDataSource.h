#pragma once

#include "Data Sources/ZRNQueryDataSource.h"

namespace zornic {

/** The albums of a query as sections, their items as rows. Main thread. */
class ZRNArtistAlbumsDataSource : public ZRNQueryDataSource {
public:
    using ZRNQueryDataSource::ZRNQueryDataSource;

    /** The albums. */
    std::shared_ptr<const MediaEntityList> sectionEntities() override;
    /** The items of all albums, in the order of the sections. */
    std::shared_ptr<const MediaEntityList> entities() override;
    std::uint64_t numberOfSections() override { return sectionEntities()->count(); }
    Range rangeOfSectionAtIndex(std::uint64_t section) override;
    bool usesSections() override { return true; }
    bool showsIndexBar() override { return false; }

    bool shouldShowCompletions() override;
    void overlayCompletionForSectionAtIndex(std::uint64_t section) override;
    void removeOverlayCompletionForSectionAtIndex(std::uint64_t section) override;
    void _invalidateCalculatedEntities() override;

private:
    std::shared_ptr<const MediaEntityList> _sectionEntities;
    /** Of the first sections, as far as anybody has asked. */
    std::vector<Range> _sectionRanges;
};

}  // namespace zornic

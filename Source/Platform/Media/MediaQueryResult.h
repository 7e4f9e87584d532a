#pragma once

#include <string>
#include <vector>

#include "Platform/Foundation/IndexPath.h"
#include "Platform/Foundation/Range.h"
#include "Platform/Media/MediaEntity.h"

namespace zornic {

/** A run of a result under one title of the index ("A", "#", "あ"). */
struct MediaQuerySection {
    std::string title;
    Range range;
    friend bool operator==(const MediaQuerySection&, const MediaQuerySection&) = default;
};

/** Titles of the index bar and the section to which each leads; a title may have no section of its own. */
class MediaQuerySectionInfo {
public:
    MediaQuerySectionInfo() = default;
    MediaQuerySectionInfo(std::vector<std::string> titles, std::vector<std::uint64_t> sections)
        : _titles(std::move(titles)), _sections(std::move(sections)) {}
    const std::vector<std::string>& sectionIndexTitles() const { return _titles; }
    /** 0 beyond the last title. */
    std::uint64_t indexOfSectionForSectionIndexTitleAtIndex(std::uint64_t index) const {
        return index < _sections.size() ? _sections[index] : 0;
    }

private:
    std::vector<std::string> _titles;
    std::vector<std::uint64_t> _sections;
};

/** A library's answer to a query, a snapshot: counts and sections are known at once, entities are made by
   index. Nothing here blocks for long or walks all rows on the calling thread. Any thread. */
class MediaQueryResult {
public:
    virtual ~MediaQueryResult() = default;
    virtual std::shared_ptr<const MediaEntityList> items() const = 0;
    virtual std::shared_ptr<const MediaEntityList> collections() const = 0;
    /** Empty when the query asked for none. Sections are in order and cover the list without gaps. */
    virtual std::vector<MediaQuerySection> itemSections() const = 0;
    virtual std::vector<MediaQuerySection> collectionSections() const = 0;
    virtual MediaQuerySectionInfo itemSectionInfo() const = 0;
    virtual MediaQuerySectionInfo collectionSectionInfo() const = 0;
    virtual double maxAggregate(const std::string& itemProperty) const = 0;
    virtual double totalAggregate(const std::string& itemProperty) const = 0;
};

}  // namespace zornic

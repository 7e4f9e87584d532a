#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Platform/Foundation/IndexPath.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Range.h"
#include "Platform/LibraryKit/EntityType.h"
#include "Platform/Media/MediaQuery.h"
#include "Platform/Media/QueryPlaybackContext.h"

namespace zornic {

class CompletionQueryDataSource;

/** A list that shows a data source. */
class CompletionQueryDataSourceDelegate {
public:
    virtual ~CompletionQueryDataSourceDelegate() = default;
    /** Its entities were dropped: ask everything again. */
    virtual void dataSourceDidInvalidate(CompletionQueryDataSource& dataSource) = 0;
};

/** The rows of a library list: the entities of a query by index. They are taken from the query on first use
   and kept, as one snapshot, until invalidated; a change of the media library invalidates by itself. Main
   thread. */
class CompletionQueryDataSource : public Object {
public:
    CompletionQueryDataSource(std::shared_ptr<MediaQuery> query, EntityType entityType);
    void didMake() override;

    const std::shared_ptr<MediaQuery>& query() const { return _query; }
    EntityType entityType() const { return _entityType; }
    void setDelegate(std::weak_ptr<CompletionQueryDataSourceDelegate> delegate) {
        _delegate = std::move(delegate);
    }

    /** The entities of all rows, made by index. */
    virtual std::shared_ptr<const MediaEntityList> entities();
    /** None beyond the end or when it is gone. */
    std::shared_ptr<MediaEntity> entityAtIndex(std::uint64_t index) {
        return entities()->entityAtIndex(index);
    }
    std::uint64_t count() { return entities()->count(); }
    /** Any one of them; none when there is none. */
    std::shared_ptr<MediaEntity> anyEntity();
    bool isEmpty() { return count() == 0; }

    /** Whether rows stand in sections. */
    virtual bool usesSections();
    virtual std::uint64_t numberOfSections();
    virtual Range rangeOfSectionAtIndex(std::uint64_t section);
    std::string titleOfSectionAtIndex(std::uint64_t section);
    /** What heads a section, for sources whose sections are entities themselves; none by default. */
    virtual std::shared_ptr<const MediaEntityList> sectionEntities() { return nullptr; }
    std::shared_ptr<MediaEntity> sectionEntityAtIndex(std::uint64_t section);
    virtual bool showsIndexBar() { return false; }
    MediaQuerySectionInfo sectionInfo();

    /** Drops the entities and everything computed from them, then tells the list. */
    void invalidate();
    /** Drops what is computed from the query; overrides call their base. */
    virtual void _invalidateCalculatedEntities();

    /** Whether an offer to get what is missing from elsewhere follows a section; no by default. */
    virtual bool shouldShowCompletions() { return false; }
    virtual void overlayCompletionForSectionAtIndex(std::uint64_t) {}
    virtual void removeOverlayCompletionForSectionAtIndex(std::uint64_t) {}
    virtual bool canEditEntityAtIndex(std::uint64_t) { return false; }
    /** 0 none, 1 delete. */
    virtual int editingTypeForEntityAtIndex(std::uint64_t) { return 0; }
    virtual void deleteEntityAtIndex(std::uint64_t) {}

    virtual bool entityIsNowPlayingAtIndex(std::uint64_t) { return false; }
    /** The request that plays from a row; none when it can't be played. */
    virtual std::shared_ptr<PlaybackContext> playbackContextForIndex(std::uint64_t) { return nullptr; }

protected:
    /** Replaces the list of entities until the next invalidation. */
    void setEntities(std::shared_ptr<const MediaEntityList> entities) { _entities = std::move(entities); }
    bool hasEntities() const { return _entities != nullptr; }

private:
    const std::vector<MediaQuerySection>& sections();

    const std::shared_ptr<MediaQuery> _query;
    const EntityType _entityType;
    std::weak_ptr<CompletionQueryDataSourceDelegate> _delegate;
    std::shared_ptr<const MediaEntityList> _entities;
    std::optional<std::vector<MediaQuerySection>> _sections;
    Observation _libraryObservation;
};

}  // namespace zornic

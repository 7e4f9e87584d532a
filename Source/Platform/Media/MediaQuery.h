#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Media/MediaPredicate.h"
#include "Platform/Media/MediaProperty.h"
#include "Platform/Media/MediaQueryResult.h"

namespace zornic {

/** What a query asks for, as handed to a library. A value. */
struct MediaQueryDescription {
    /** All must be met. In order, though the order means nothing to the library. */
    std::vector<MediaPredicate> predicates;
    MediaGrouping grouping = MediaGrouping::Title;
    /** Item properties, most significant first; empty: the grouping's own order. */
    std::vector<std::string> ordering;
    bool useSections = true;
    std::vector<std::string> collectionPropertiesToFetch;
    friend bool operator==(const MediaQueryDescription&, const MediaQueryDescription&) = default;
};

/** Whether both have the same grouping and the same set of predicates. */
bool asksForSame(const MediaQueryDescription& left, const MediaQueryDescription& right);

/** What is wanted of a library: predicates, grouping, ordering. Changed in place; its result is made on first
   use and made again after a change of the query or of the library. Reading results is safe on any thread;
   changing is for the query's owner. */
class MediaQuery : public Object {
public:
    /** An empty query of `library`, or of the default library at the time of evaluation. */
    explicit MediaQuery(std::shared_ptr<MediaLibrary> library = nullptr);
    explicit MediaQuery(MediaQueryDescription description, std::shared_ptr<MediaLibrary> library = nullptr);

    /** The standard lists. All but playlists and Brivo mixes are of one media type; composers are of any, so
       that the caller chooses. Audiobooks are gathered by album (a book is an album of chapters), podcasts by
       their title. */
    static std::shared_ptr<MediaQuery> songsQuery();
    static std::shared_ptr<MediaQuery> artistsQuery();
    static std::shared_ptr<MediaQuery> albumsQuery();
    static std::shared_ptr<MediaQuery> genresQuery();
    static std::shared_ptr<MediaQuery> composersQuery();
    static std::shared_ptr<MediaQuery> playlistsQuery();
    static std::shared_ptr<MediaQuery> audiobooksQuery();
    static std::shared_ptr<MediaQuery> podcastsQuery();
    static std::shared_ptr<MediaQuery> compilationsQuery();
    static std::shared_ptr<MediaQuery> brivoMixesQuery();

    /** A copy with the same predicates, grouping, ordering, sections and properties to fetch. */
    std::shared_ptr<MediaQuery> copy() const;
    /** Same grouping and same set of predicates. Ordering, sections and properties to fetch don't count. */
    bool isEqual(const MediaQuery& other) const;
    MediaQueryDescription description() const;

    std::vector<MediaPredicate> filterPredicates() const;
    void addFilterPredicate(MediaPredicate predicate);
    /** Removes the first predicate equal to it. */
    void removeFilterPredicate(const MediaPredicate& predicate);
    /** The first property predicate on `property`; nullopt without one. */
    std::optional<MediaPredicate> predicateForProperty(std::string_view property) const;
    void removePredicatesForProperty(std::string_view property);
    /** Replaces every predicate on `property` by one: equal to `value`. */
    void setFilterPredicateForProperty(const std::string& property, Value value);

    MediaGrouping groupingType() const;
    void setGroupingType(MediaGrouping grouping);
    std::vector<std::string> orderingProperties() const;
    /** Empty restores the default order. */
    void _setOrderingProperties(std::vector<std::string> properties);
    bool useSections() const;
    void setUseSections(bool useSections);
    std::vector<std::string> collectionPropertiesToFetch() const;
    void setCollectionPropertiesToFetch(std::vector<std::string> properties);

    /** Whether it lists the items of a playlist. */
    bool specifiesPlaylistItems() const;

    /** Never none; empty when there is no library. */
    std::shared_ptr<const MediaEntityList> items() const;
    std::shared_ptr<const MediaEntityList> collections() const;
    std::vector<MediaQuerySection> itemSections() const;
    std::vector<MediaQuerySection> collectionSections() const;
    MediaQuerySectionInfo itemSectionInfo() const;
    MediaQuerySectionInfo collectionSectionInfo() const;
    std::uint64_t _countOfItems() const;
    std::uint64_t _countOfCollections() const;
    /** Largest value and sum of a numeric item property; 0 when there are no items. */
    double maxAggregate(const std::string& itemProperty) const;
    double totalAggregate(const std::string& itemProperty) const;

    /** The library asked; none when there is none. */
    std::shared_ptr<MediaLibrary> library() const;

private:
    std::shared_ptr<const MediaQueryResult> result() const;
    template <class Change>
    void change(Change&& change);

    const std::shared_ptr<MediaLibrary> _library;
    mutable std::mutex _mutex;
    MediaQueryDescription _description;
    mutable std::shared_ptr<const MediaQueryResult> _result;
    mutable std::weak_ptr<MediaLibrary> _resultLibrary;
    mutable std::uint64_t _resultGeneration = 0;
};

}  // namespace zornic

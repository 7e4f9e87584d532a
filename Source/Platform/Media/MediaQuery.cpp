#include "Platform/Media/MediaQuery.h"

#include <algorithm>
#include <utility>

#include "Platform/Media/MediaLibrary.h"

namespace zornic {

namespace {

class EmptyResult final : public MediaQueryResult {
public:
    std::shared_ptr<const MediaEntityList> items() const override { return _none; }
    std::shared_ptr<const MediaEntityList> collections() const override { return _none; }
    std::vector<MediaQuerySection> itemSections() const override { return {}; }
    std::vector<MediaQuerySection> collectionSections() const override { return {}; }
    MediaQuerySectionInfo itemSectionInfo() const override { return {}; }
    MediaQuerySectionInfo collectionSectionInfo() const override { return {}; }
    double maxAggregate(const std::string&) const override { return 0; }
    double totalAggregate(const std::string&) const override { return 0; }

private:
    const std::shared_ptr<const MediaEntityList> _none = std::make_shared<MediaEntityArray>();
};

std::shared_ptr<MediaQuery> standardQuery(MediaGrouping grouping, std::vector<MediaPredicate> predicates) {
    MediaQueryDescription description;
    description.predicates = std::move(predicates);
    description.grouping = grouping;
    return make<MediaQuery>(std::move(description));
}

MediaPredicate ofType(std::int64_t type) {
    return MediaPredicate::property(MediaItemProperty::MediaType, type);
}

bool isOn(const MediaPredicate& predicate, std::string_view property) {
    return predicate.isPropertyPredicate() && predicate.property() == property;
}

bool isWithin(const std::vector<MediaPredicate>& some, const std::vector<MediaPredicate>& all) {
    return std::ranges::all_of(some,
                               [&](const auto& one) { return std::ranges::find(all, one) != all.end(); });
}

}  // namespace

bool asksForSame(const MediaQueryDescription& left, const MediaQueryDescription& right) {
    return left.grouping == right.grouping && isWithin(left.predicates, right.predicates) &&
           isWithin(right.predicates, left.predicates);
}

MediaQuery::MediaQuery(std::shared_ptr<MediaLibrary> library) : _library(std::move(library)) {}

MediaQuery::MediaQuery(MediaQueryDescription description, std::shared_ptr<MediaLibrary> library)
    : _library(std::move(library)), _description(std::move(description)) {}

std::shared_ptr<MediaQuery> MediaQuery::songsQuery() {
    return standardQuery(MediaGrouping::Title, {ofType(MediaType::Music)});
}

std::shared_ptr<MediaQuery> MediaQuery::artistsQuery() {
    return standardQuery(MediaGrouping::Artist, {ofType(MediaType::Music)});
}

std::shared_ptr<MediaQuery> MediaQuery::albumsQuery() {
    return standardQuery(MediaGrouping::Album, {ofType(MediaType::Music)});
}

std::shared_ptr<MediaQuery> MediaQuery::genresQuery() {
    return standardQuery(MediaGrouping::Genre, {ofType(MediaType::Music)});
}

std::shared_ptr<MediaQuery> MediaQuery::composersQuery() {
    return standardQuery(MediaGrouping::Composer, {});
}

std::shared_ptr<MediaQuery> MediaQuery::playlistsQuery() {
    return standardQuery(MediaGrouping::Playlist, {});
}

std::shared_ptr<MediaQuery> MediaQuery::audiobooksQuery() {
    return standardQuery(MediaGrouping::Album, {ofType(MediaType::Audiobook)});
}

std::shared_ptr<MediaQuery> MediaQuery::podcastsQuery() {
    return standardQuery(MediaGrouping::PodcastTitle, {ofType(MediaType::Podcast)});
}

std::shared_ptr<MediaQuery> MediaQuery::compilationsQuery() {
    return standardQuery(
        MediaGrouping::Album,
        {ofType(MediaType::Music), MediaPredicate::property(MediaItemProperty::IsCompilation, true)});
}

std::shared_ptr<MediaQuery> MediaQuery::brivoMixesQuery() {
    return standardQuery(MediaGrouping::Playlist,
                         {MediaPredicate::property(MediaPlaylistProperty::IsBrivoMix, true)});
}

std::shared_ptr<MediaQuery> MediaQuery::copy() const { return make<MediaQuery>(description(), _library); }

bool MediaQuery::isEqual(const MediaQuery& other) const {
    return this == &other || asksForSame(description(), other.description());
}

MediaQueryDescription MediaQuery::description() const {
    std::lock_guard lock(_mutex);
    return _description;
}

template <class Change>
void MediaQuery::change(Change&& change) {
    std::shared_ptr<const MediaQueryResult> old;  // leaves after the lock
    std::lock_guard lock(_mutex);
    auto changed = _description;
    change(changed);
    if (changed == _description) return;
    _description = std::move(changed);
    old.swap(_result);
}

std::vector<MediaPredicate> MediaQuery::filterPredicates() const { return description().predicates; }

void MediaQuery::addFilterPredicate(MediaPredicate predicate) {
    change([&](auto& description) { description.predicates.push_back(std::move(predicate)); });
}

void MediaQuery::removeFilterPredicate(const MediaPredicate& predicate) {
    change([&](auto& description) {
        const auto found = std::ranges::find(description.predicates, predicate);
        if (found != description.predicates.end()) description.predicates.erase(found);
    });
}

std::optional<MediaPredicate> MediaQuery::predicateForProperty(std::string_view property) const {
    std::lock_guard lock(_mutex);
    for (const auto& predicate : _description.predicates)
        if (isOn(predicate, property)) return predicate;
    return std::nullopt;
}

void MediaQuery::removePredicatesForProperty(std::string_view property) {
    change([&](auto& description) {
        std::erase_if(description.predicates,
                      [&](const auto& predicate) { return isOn(predicate, property); });
    });
}

void MediaQuery::setFilterPredicateForProperty(const std::string& property, Value value) {
    change([&](auto& description) {
        std::erase_if(description.predicates,
                      [&](const auto& predicate) { return isOn(predicate, property); });
        description.predicates.push_back(MediaPredicate::property(property, std::move(value)));
    });
}

MediaGrouping MediaQuery::groupingType() const { return description().grouping; }

void MediaQuery::setGroupingType(MediaGrouping grouping) {
    change([&](auto& description) { description.grouping = grouping; });
}

std::vector<std::string> MediaQuery::orderingProperties() const { return description().ordering; }

void MediaQuery::_setOrderingProperties(std::vector<std::string> properties) {
    change([&](auto& description) { description.ordering = std::move(properties); });
}

bool MediaQuery::useSections() const { return description().useSections; }

void MediaQuery::setUseSections(bool useSections) {
    change([&](auto& description) { description.useSections = useSections; });
}

std::vector<std::string> MediaQuery::collectionPropertiesToFetch() const {
    return description().collectionPropertiesToFetch;
}

void MediaQuery::setCollectionPropertiesToFetch(std::vector<std::string> properties) {
    change([&](auto& description) { description.collectionPropertiesToFetch = std::move(properties); });
}

bool MediaQuery::specifiesPlaylistItems() const {
    return predicateForProperty(MediaPlaylistProperty::PersistentID).has_value();
}

std::shared_ptr<const MediaEntityList> MediaQuery::items() const { return result()->items(); }
std::shared_ptr<const MediaEntityList> MediaQuery::collections() const { return result()->collections(); }
std::vector<MediaQuerySection> MediaQuery::itemSections() const { return result()->itemSections(); }
std::vector<MediaQuerySection> MediaQuery::collectionSections() const {
    return result()->collectionSections();
}
MediaQuerySectionInfo MediaQuery::itemSectionInfo() const { return result()->itemSectionInfo(); }
MediaQuerySectionInfo MediaQuery::collectionSectionInfo() const { return result()->collectionSectionInfo(); }
std::uint64_t MediaQuery::_countOfItems() const { return items()->count(); }
std::uint64_t MediaQuery::_countOfCollections() const { return collections()->count(); }

double MediaQuery::maxAggregate(const std::string& itemProperty) const {
    return result()->maxAggregate(itemProperty);
}

double MediaQuery::totalAggregate(const std::string& itemProperty) const {
    return result()->totalAggregate(itemProperty);
}

std::shared_ptr<MediaLibrary> MediaQuery::library() const {
    return _library ? _library : MediaLibrary::defaultLibrary();
}

std::shared_ptr<const MediaQueryResult> MediaQuery::result() const {
    static const auto& empty = *new std::shared_ptr<const MediaQueryResult>(std::make_shared<EmptyResult>());
    const auto asked = library();
    if (!asked) return empty;
    // Read first: what changes while the library evaluates makes this result an old one.
    const auto generation = asked->generation();
    MediaQueryDescription wanted;
    {
        std::lock_guard lock(_mutex);
        if (_result && _resultGeneration == generation && _resultLibrary.lock() == asked) return _result;
        wanted = _description;
    }
    auto evaluated = asked->evaluate(wanted);
    auto old = evaluated;  // what is replaced leaves after the lock
    std::lock_guard lock(_mutex);
    if (_description == wanted) {
        old.swap(_result);
        _resultLibrary = asked;
        _resultGeneration = generation;
    }
    return evaluated;
}

}  // namespace zornic

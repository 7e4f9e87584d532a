#include "Tests/Support/FakeMediaStore.h"

#include <cctype>
#include <set>

namespace zornic {

namespace {

/** Letters before everything else, numbers by value, missing values last. */
struct SortKey {
    int rank = 2;
    double number = 0;
    std::string text;
    auto operator<=>(const SortKey&) const = default;
};

SortKey keyOf(const Value& value) {
    if (value.isNumeric()) return {0, value.asNumber(), {}};
    std::string text = value.asText();
    std::ranges::transform(text, text.begin(), [](unsigned char letter) { return std::tolower(letter); });
    if (text.empty()) return {2, static_cast<double>(value.asDate().time_since_epoch().count()), {}};
    return {std::isalpha(static_cast<unsigned char>(text.front())) ? 0 : 1, 0, text};
}

/** The property that names a grouping's groups, and the one that tells them apart. */
struct GroupProperties {
    const char* id;
    const char* name;
};

GroupProperties groupProperties(MediaGrouping grouping) {
    using namespace MediaItemProperty;
    static const std::map<MediaGrouping, GroupProperties> properties = {
        {MediaGrouping::Album, {AlbumPersistentID, AlbumTitle}},
        {MediaGrouping::AlbumsOfArtist, {AlbumPersistentID, AlbumTitle}},
        {MediaGrouping::Artist, {ArtistPersistentID, Artist}},
        {MediaGrouping::AlbumArtist, {AlbumArtistPersistentID, AlbumArtist}},
        {MediaGrouping::Composer, {ComposerPersistentID, Composer}},
        {MediaGrouping::Genre, {GenrePersistentID, Genre}},
        {MediaGrouping::PodcastTitle, {PodcastPersistentID, PodcastTitle}}};
    const auto found = properties.find(grouping);
    return found == properties.end() ? GroupProperties{MediaItemProperty::PersistentID, Title}
                                     : found->second;
}

std::vector<std::string> defaultOrdering(MediaGrouping grouping) {
    using namespace MediaItemProperty;
    switch (grouping) {
        case MediaGrouping::Title:
        case MediaGrouping::Playlist:
            return {Title};
        case MediaGrouping::Album:
            return {AlbumTitle, DiscNumber, AlbumTrackNumber};
        case MediaGrouping::AlbumsOfArtist:
            return {Year, AlbumTitle, DiscNumber, AlbumTrackNumber};
        default:
            return {groupProperties(grouping).name, AlbumTitle, DiscNumber, AlbumTrackNumber};
    }
}

/** The variant of a text property by which it is put in order. */
const char* sortVariant(std::string_view property) {
    if (property == MediaItemProperty::Title) return MediaItemProperty::SortTitle;
    if (property == MediaItemProperty::Artist) return MediaItemProperty::SortArtist;
    if (property == MediaItemProperty::AlbumTitle) return MediaItemProperty::SortAlbumTitle;
    return "";
}

bool valueMeets(const Value& value, const MediaPredicate& predicate) {
    if (predicate.property() == MediaItemProperty::MediaType)
        return (value.asInteger() & predicate.value().asInteger()) != 0;
    return predicate.value() && value == predicate.value();
}

std::vector<std::string> orderingOf(const MediaQueryDescription& description) {
    return description.ordering.empty() ? defaultOrdering(description.grouping) : description.ordering;
}

const MediaPredicate* playlistFilter(const MediaQueryDescription& description) {
    for (const auto& predicate : description.predicates)
        if (predicate.property() == MediaPlaylistProperty::PersistentID) return &predicate;
    return nullptr;
}

bool isAboutPlaylists(const MediaPredicate& predicate) {
    return predicate.isPropertyPredicate() ? predicate.property().starts_with("playlist")
                                           : std::ranges::any_of(predicate.alternatives(), isAboutPlaylists);
}

}  // namespace

FakeMediaStore::IDs FakeMediaStore::itemsOfPlaylist(PersistentID playlist) const {
    IDs all;
    std::set<PersistentID> entered;  // folders may lie in themselves
    const std::function<void(PersistentID)> add = [&](PersistentID id) {
        const auto found = playlists.find(id);
        if (found == playlists.end() || !entered.insert(id).second) return;
        std::ranges::copy(found->second.items, std::back_inserter(all));
        for (const auto& [childID, child] : playlists)
            if (valueForKey(child.values, MediaPlaylistProperty::ParentPersistentID) == Value(id))
                add(childID);
    };
    add(playlist);
    return all;
}

bool FakeMediaStore::itemMeets(PersistentID item, const MediaPredicate& predicate) const {
    const auto meets = [&](const auto& alternative) { return itemMeets(item, alternative); };
    if (!predicate.isPropertyPredicate()) return std::ranges::any_of(predicate.alternatives(), meets);
    if (!isAboutPlaylists(predicate))
        return valueMeets(valueForKey(items.at(item), predicate.property()), predicate);
    return std::ranges::any_of(playlists, [&](const auto& entry) {
        return playlistMeets(entry.second, predicate) &&
               std::ranges::count(itemsOfPlaylist(entry.first), item) > 0;
    });
}

bool FakeMediaStore::playlistMeets(const Playlist& playlist, const MediaPredicate& predicate) {
    const auto meets = [&](const auto& alternative) { return playlistMeets(playlist, alternative); };
    if (!predicate.isPropertyPredicate()) return std::ranges::any_of(predicate.alternatives(), meets);
    const auto& value = valueForKey(playlist.values, predicate.property());
    // A flag or a parent that a playlist lacks counts as off or none.
    return value ? valueMeets(value, predicate)
                 : predicate.value().asInteger() == 0 && !predicate.value().isText();
}

FakeMediaStore::IDs FakeMediaStore::playlistsMeeting(const MediaQueryDescription& description) const {
    IDs met;
    for (const auto& entry : playlists) {
        const auto& playlist = entry.second;
        const auto contents = itemsOfPlaylist(entry.first);
        const auto meets = [&](const MediaPredicate& predicate) {
            if (isAboutPlaylists(predicate)) return playlistMeets(playlist, predicate);
            return std::ranges::any_of(contents, [&](auto item) { return itemMeets(item, predicate); });
        };
        if (std::ranges::all_of(description.predicates, meets)) met.push_back(entry.first);
    }
    std::ranges::stable_sort(met, {}, [&](auto id) {
        return keyOf(valueForKey(playlists.at(id).values, MediaPlaylistProperty::Name));
    });
    return met;
}

bool FakeMediaStore::isInPlaylistOrder(const MediaQueryDescription& description) {
    return description.ordering.empty() && playlistFilter(description);
}

std::string FakeMediaStore::itemSortProperty(const MediaQueryDescription& description) {
    return orderingOf(description).front();
}

std::string FakeMediaStore::groupSortProperty(const MediaQueryDescription& description) {
    return description.ordering.empty() ? groupProperties(description.grouping).name
                                        : description.ordering.front();
}

FakeMediaStore::IDs FakeMediaStore::itemsMeeting(const MediaQueryDescription& description) const {
    IDs candidates;
    const bool inPlaylistOrder = isInPlaylistOrder(description);
    if (inPlaylistOrder) {
        candidates = itemsOfPlaylist(playlistFilter(description)->value().asUnsigned());
    } else {
        for (const auto& entry : items) candidates.push_back(entry.first);
    }
    std::erase_if(candidates, [&](auto item) {
        return !items.contains(item) ||
               !std::ranges::all_of(description.predicates,
                                    [&](const auto& predicate) { return itemMeets(item, predicate); });
    });
    if (inPlaylistOrder) return candidates;
    std::vector<std::pair<std::vector<SortKey>, PersistentID>> keyed;
    for (const auto item : candidates) {
        auto& keys = keyed.emplace_back(std::vector<SortKey>(), item).first;
        for (const auto& property : orderingOf(description)) keys.push_back(keyOf(sortValue(item, property)));
    }
    std::ranges::stable_sort(keyed, {}, [](const auto& row) { return row.first; });
    std::ranges::transform(keyed, candidates.begin(), [](const auto& row) { return row.second; });
    return candidates;
}

const Value& FakeMediaStore::sortValue(PersistentID item, std::string_view property) const {
    const auto& variant = valueForKey(items.at(item), sortVariant(property));
    return variant ? variant : valueForKey(items.at(item), property);
}

std::vector<FakeMediaStore::Group> FakeMediaStore::groups(const IDs& all,
                                                          const MediaQueryDescription& description) const {
    std::map<PersistentID, std::size_t> places;
    std::vector<IDs> members;
    for (const auto item : all) {
        const auto id = valueForKey(items.at(item), groupProperties(description.grouping).id).asUnsigned();
        if (id == 0) continue;
        const auto [place, isNew] = places.try_emplace(id, members.size());
        if (isNew) members.emplace_back();
        members[place->second].push_back(item);
    }
    std::vector<Group> made;
    for (const auto& some : members) made.push_back(group(some, description));
    return made;
}

FakeMediaStore::Group FakeMediaStore::group(const IDs& members,
                                            const MediaQueryDescription& description) const {
    using namespace MediaCollectionProperty;
    const auto& first = items.at(members.front());
    const auto* idProperty = groupProperties(description.grouping).id;
    Group made{valueForKey(first, idProperty).asUnsigned(), {}, {}};
    for (const auto& [property, value] : first) {  // a collection's are called like those of its items
        const auto name =
            "collection" + std::string(1, static_cast<char>(std::toupper(property[0]))) + property.substr(1);
        if (value) made.values[name] = made.values[name + "Name"] = value;
    }
    made.values[RepresentativeItemPersistentID] = members.front();
    made.values[ItemCount] = static_cast<std::uint64_t>(members.size());
    made.values[AlbumCount] = distinct(members, MediaItemProperty::AlbumPersistentID);
    made.values[ArtistCount] = distinct(members, MediaItemProperty::ArtistPersistentID);
    made.items.predicates = description.predicates;
    made.items.predicates.push_back(MediaPredicate::property(idProperty, made.id));
    made.items.ordering = {MediaItemProperty::AlbumTitle, MediaItemProperty::DiscNumber,
                           MediaItemProperty::AlbumTrackNumber};
    return made;
}

std::uint64_t FakeMediaStore::distinct(const IDs& members, const char* property) const {
    std::set<PersistentID> values;
    for (const auto item : members) values.insert(valueForKey(items.at(item), property).asUnsigned());
    values.erase(0);
    return values.size();
}

}  // namespace zornic

#include "Host/Library/QueryCompiler.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>

#include "Host/Library/CollectionSections.h"
#include "Host/Library/ItemColumns.h"

namespace helmo {

using zornic::MediaGrouping;
using zornic::MediaPredicate;
namespace Property = zornic::MediaItemProperty;

namespace {

struct Grouping {
    MediaGrouping grouping;
    std::int64_t kind;
    /** The track's column that leads to the collection, and the item property by which its items are asked
     * for. */
    const char* column;
    const char* property;
    /** How a collection's tracks stand in the index that leads to them: the first one stands for the
     * collection. */
    const char* order;
    /** Order of all its items. */
    std::vector<std::string> itemOrder;
};

const Grouping* groupingOf(MediaGrouping grouping) {
    static const std::vector<std::string> byAlbum{Property::AlbumTitle};
    static const std::array groupings{
        Grouping{MediaGrouping::Album, 1, "album_id", Property::AlbumPersistentID,
                 "t.disc_number, t.track_number, t.id", byAlbum},
        Grouping{MediaGrouping::AlbumsOfArtist, 1, "album_id", Property::AlbumPersistentID,
                 "t.disc_number, t.track_number, t.id", byAlbum},
        Grouping{MediaGrouping::Artist,
                 2,
                 "artist_id",
                 Property::ArtistPersistentID,
                 "t.album_id, t.disc_number, t.track_number, t.id",
                 {Property::Artist, Property::AlbumTitle}},
        Grouping{MediaGrouping::AlbumArtist,
                 3,
                 "album_artist_id",
                 Property::AlbumArtistPersistentID,
                 "t.album_id, t.disc_number, t.track_number, t.id",
                 {Property::AlbumArtist, Property::AlbumTitle}},
        Grouping{MediaGrouping::Composer,
                 4,
                 "composer_id",
                 Property::ComposerPersistentID,
                 "t.album_id, t.id",
                 {Property::Composer, Property::AlbumTitle}},
        Grouping{MediaGrouping::Genre,
                 5,
                 "genre_id",
                 Property::GenrePersistentID,
                 "t.artist_id, t.album_id, t.id",
                 {Property::Genre, Property::Artist, Property::AlbumTitle}},
        Grouping{MediaGrouping::PodcastTitle,
                 7,
                 "podcast_id",
                 Property::PodcastPersistentID,
                 "t.id",
                 {Property::PodcastTitle, Property::ReleaseDate}}};
    const auto* found = std::ranges::find(groupings, grouping, &Grouping::grouping);
    return found == groupings.end() ? nullptr : found;
}

/** The section of a row: the first two bytes of the key it is sorted by first; NULL when that is no key. */
std::string sectionOf(const std::vector<std::string>& keys) {
    return !keys.empty() && keys.front().ends_with("_key") ? "substr(" + keys.front() + ", 1, 2)" : "NULL";
}

/** Columns that order tracks by one property; none for a property that gives no order. */
std::vector<std::string> keysOf(const std::string& property) {
    static const std::map<std::string, std::vector<std::string>, std::less<>> keys{
        {Property::Title, {"t.title_key"}},
        {Property::Artist, {"t.artist_key"}},
        {Property::AlbumArtist, {"t.album_artist_key"}},
        {Property::AlbumTitle, {"t.album_key", "t.album_id"}},
        {Property::ArtistPersistentID, {"t.artist_id"}},
        {Property::AlbumPersistentID, {"t.album_id"}},
        {Property::AlbumArtistPersistentID, {"t.album_artist_id"}},
        {Property::Genre, {"(SELECT sort_key FROM collection WHERE id = t.genre_id)"}},
        {Property::Composer,
         {"t.composer_id IS NULL", "(SELECT sort_key FROM collection WHERE id = t.composer_id)"}},
        {Property::PodcastTitle,
         {"t.podcast_id IS NULL", "(SELECT sort_key FROM collection WHERE id = t.podcast_id)"}}};
    if (const auto found = keys.find(property); found != keys.end()) return found->second;
    const auto number = ItemColumns::number(property);
    return number ? std::vector{*number} : std::vector<std::string>();
}

/** Columns that order tracks by properties; inside an album always by disc and number, and at last by row, so
   that equal rows keep their places. */
std::vector<std::string> keysOf(const std::vector<std::string>& properties) {
    std::vector<std::string> keys;
    const auto add = [&](const std::string& key) {
        if (std::ranges::find(keys, key) == keys.end()) keys.push_back(key);
    };
    bool isWithinAlbums = false;
    for (const std::string& property : properties) {
        for (const std::string& key : keysOf(property)) add(key);
        isWithinAlbums = isWithinAlbums || property == Property::AlbumTitle;
    }
    for (const char* key : {"t.disc_number", "t.track_number"})
        if (isWithinAlbums) add(key);
    add("t.id");
    return keys;
}

/** When an album came out, as its earliest track says: NULL when none does. */
std::string yearOfAlbum(const std::string& id) {
    return "(SELECT MIN(NULLIF(y.year, 0)) FROM track y WHERE y.album_id = " + id + " AND y.present = 1)";
}

/** Drops the keys that are the same for all of an album's, or an artist's, tracks. */
std::vector<std::string> withoutFixed(std::vector<std::string> keys, const QueryFilter& filter) {
    const auto drop = [&](const char* property, const char* key, const char* id) {
        if (filter.fixes(property))
            std::erase_if(keys, [&](const std::string& text) {
                return text.find(key) != std::string::npos || text.find(id) != std::string::npos;
            });
    };
    drop(Property::AlbumPersistentID, "t.album_key", "t.album_id");
    drop(Property::ArtistPersistentID, "t.artist_key", "t.artist_id");
    drop(Property::AlbumArtistPersistentID, "t.album_artist_key", "t.album_artist_id");
    return keys;
}

std::vector<std::string> allItemKeys(const zornic::MediaQueryDescription& description,
                                     const QueryFilter& filter) {
    if (filter.playlist()) return {"i.position"};
    if (!description.ordering.empty()) return keysOf(description.ordering);
    const auto* grouping = groupingOf(description.grouping);
    if (description.grouping == MediaGrouping::AlbumsOfArtist) {
        const std::string year = yearOfAlbum("t.album_id");
        std::vector<std::string> keys{year + " IS NULL", year};
        std::ranges::copy(keysOf(grouping->itemOrder), std::back_inserter(keys));
        return keys;
    }
    return keysOf(grouping ? grouping->itemOrder : std::vector<std::string>{Property::Title});
}

std::vector<std::string> itemKeys(const zornic::MediaQueryDescription& description,
                                  const QueryFilter& filter) {
    const auto keys = allItemKeys(description, filter);
    // What sections begin with stays.
    return description.useSections ? keys : withoutFixed(keys, filter);
}

}  // namespace

QueryCompiler::QueryCompiler(zornic::MediaQueryDescription description)
    : _description(std::move(description)),
      _filter(_description.predicates),
      _keys(itemKeys(_description, _filter)) {}

std::int64_t QueryCompiler::collectionKind() const {
    const auto* grouping = groupingOf(_description.grouping);
    return grouping ? grouping->kind : 0;
}

std::vector<SqlQuery> QueryCompiler::items() const {
    // A folder's items are those of the playlists inside, behind its own if it should have any.
    if (_filter.playlist()) return {itemsOfPlaylist(), itemsOfPlaylistsInside()};
    SqlQuery query{
        "SELECT t.id, " + (_description.useSections ? sectionOf(_keys) : "NULL") + " FROM track t WHERE ",
        {}};
    append(query, _filter.tracks());
    query.text += " ORDER BY " + joinedKeys(_keys);
    return {std::move(query)};
}

SqlQuery QueryCompiler::itemsOfPlaylist() const {
    SqlQuery query{
        "SELECT i.track_id AS id, NULL FROM playlist_item i WHERE i.playlist_id = "
        "(SELECT id FROM playlist WHERE pid = ? AND present = 1) AND ",
        {*_filter.playlist()}};
    append(query, _filter.itemsOfPlaylist());
    query.text += " ORDER BY i.position";
    return query;
}

/** However deep; UNION ends a folder that is inside itself. */
SqlQuery QueryCompiler::itemsOfPlaylistsInside() const {
    SqlQuery query{
        "WITH RECURSIVE inside (id) AS (SELECT c.id FROM playlist c JOIN playlist q ON q.id = c.parent_id "
        "WHERE q.pid = ? AND q.present = 1 AND c.present = 1 UNION "
        "SELECT c.id FROM playlist c JOIN inside ON c.parent_id = inside.id WHERE c.present = 1) "
        "SELECT i.track_id AS id, NULL FROM inside JOIN playlist p ON p.id = inside.id "
        "JOIN playlist_item i ON i.playlist_id = p.id WHERE p.pid <> ? AND ",
        {*_filter.playlist(), *_filter.playlist()}};
    append(query, _filter.itemsOfPlaylist());
    query.text += " ORDER BY p.sort_key, p.id, i.position";
    return query;
}

std::optional<Schema::CountedOrder> QueryCompiler::countedOrder() const {
    using Schema::CountedOrder;
    if (!_filter.isOnlyMediaTypes()) return std::nullopt;
    const std::vector<std::string> withinAlbum{"t.album_key", "t.album_id", "t.disc_number", "t.track_number",
                                               "t.id"};
    const auto isAlbumOrderBehind = [&](std::size_t first) {
        return std::equal(_keys.begin() + static_cast<std::ptrdiff_t>(first), _keys.end(),
                          withinAlbum.begin(), withinAlbum.end());
    };
    const std::string& first = _keys.front();
    if (first == "t.title_key" && _keys.size() == 2) return CountedOrder::Title;
    if (first == "t.artist_key" && isAlbumOrderBehind(1)) return CountedOrder::Artist;
    if (first == "t.album_artist_key" && isAlbumOrderBehind(1)) return CountedOrder::AlbumArtist;
    if (first == "t.album_key" && isAlbumOrderBehind(0)) return CountedOrder::Album;
    return std::nullopt;
}

std::optional<CountedQuery> QueryCompiler::countedItems() const {
    const auto order = countedOrder();
    if (!order) return std::nullopt;
    SqlQuery counts{"SELECT section, tracks FROM section_count WHERE ordering = ? AND tracks > 0",
                    {static_cast<std::int64_t>(*order)}};
    append(counts, _filter.andMediaTypes("media_type"));
    counts.text += " ORDER BY section";
    return CountedQuery(std::move(counts), "track t", _filter.tracks(), _keys);
}

std::optional<CountedQuery> QueryCompiler::countedCollections() const {
    const auto keys = collectionOrdering();
    const bool isByOwner = keys.front() == "c.owner_key";
    // The types of two tracks together may meet two conditions that neither of them meets.
    if (collectionKind() == 0 || !_filter.isOnlyMediaTypes() || _filter.countOfMediaTypes() > 1 ||
        !(isByOwner || keys.front() == "c.sort_key"))
        return std::nullopt;
    const auto order = isByOwner ? CollectionSections::Order::Owner : CollectionSections::Order::Name;
    const std::string kind = std::to_string(collectionKind());
    SqlQuery counts{"SELECT section, collections FROM collection_section WHERE kind = " + kind +
                        " AND ordering = ? AND collections > 0",
                    {static_cast<std::int64_t>(order)}};
    append(counts, _filter.andMediaTypes("media_types"));
    counts.text += " ORDER BY section";
    // Spelled out, so that the index of those that have tracks is found.
    SqlQuery condition{"c.kind = " + kind + " AND c.media_types <> 0", {}};
    append(condition, _filter.andMediaTypes("c.media_types"));
    return CountedQuery(std::move(counts), "collection c", std::move(condition), keys);
}

SqlQuery QueryCompiler::aggregate(const std::string& function, const std::string& column) const {
    if (!_filter.playlist()) {
        SqlQuery query{"SELECT " + function + "(" + column + ") FROM track t WHERE ", {}};
        append(query, _filter.tracks());
        return query;
    }
    SqlQuery query{"SELECT " + function + "(" + column + ") FROM (SELECT * FROM (", {}};
    append(query, itemsOfPlaylist());
    query.text += ") UNION ALL SELECT * FROM (";
    append(query, itemsOfPlaylistsInside());
    query.text += ")) AS listed JOIN track t ON t.id = listed.id";
    return query;
}

std::vector<std::string> QueryCompiler::collectionOrdering() const {
    if (_description.grouping == MediaGrouping::AlbumsOfArtist && _description.ordering.empty())
        return {yearOfAlbum("c.id") + " IS NULL", yearOfAlbum("c.id"), "c.sort_key", "c.owner_key", "c.id"};
    // An album stands under its album artist, whichever artist a list is sorted by.
    const bool byOwner = collectionKind() == 1 && !_description.ordering.empty() &&
                         (_description.ordering.front() == Property::Artist ||
                          _description.ordering.front() == Property::AlbumArtist);
    if (byOwner) return {"c.owner_key", "c.sort_key", "c.id"};
    return {"c.sort_key", "c.owner_key", "c.id"};
}

std::vector<SqlQuery> QueryCompiler::collections() const {
    if (isOfPlaylists()) {
        SqlQuery query{"SELECT p.id, substr(p.sort_key, 1, 2) FROM playlist p WHERE ", {}};
        append(query, _filter.playlists());
        query.text += " ORDER BY p.sort_key, p.id";
        return {std::move(query)};
    }
    const auto* grouping = groupingOf(_description.grouping);
    if (!grouping) return items();
    const auto keys = collectionOrdering();
    SqlQuery query{"SELECT c.id, " + sectionOf(keys) + " FROM ", {}};
    if (_filter.isOnlyMediaTypes()) {
        append(query, {"collection c WHERE c.kind = ? AND EXISTS (SELECT 1 FROM collection_count n "
                       "WHERE n.collection_id = c.id AND n.tracks > 0",
                       {grouping->kind}});
        append(query, _filter.andMediaTypes("n.media_type"));
        query.text += ')';
    } else {
        const std::string column = std::string("t.") + grouping->column;
        query.text += "(SELECT " + column + " AS id FROM track t WHERE " + column + " IS NOT NULL AND ";
        append(query, _filter.tracks());
        query.text += " GROUP BY " + column + ") g JOIN collection c ON c.id = g.id";
    }
    query.text += " ORDER BY " + joinedKeys(keys);
    return {std::move(query)};
}

SqlQuery QueryCompiler::collectionValues(std::size_t count, bool withAlbums, bool withArtists) const {
    const auto* grouping = groupingOf(_description.grouping);
    if (!grouping) return {};
    SqlQuery within{std::string(" FROM track t WHERE t.") + grouping->column + " = c.id AND ", {}};
    append(within, _filter.tracks());
    SqlQuery query{"SELECT c.id, c.pid, c.name, o.name, o.pid, (SELECT ", {}};
    if (_filter.isOnlyMediaTypes()) {
        query.text += "SUM(n.tracks) FROM collection_count n WHERE n.collection_id = c.id";
        append(query, _filter.andMediaTypes("n.media_type"));
    } else {
        query.text += "COUNT(*)";
        append(query, within);
    }
    query.text += "), (SELECT t.pid";
    append(query, within);
    query.text += std::string(" ORDER BY ") + grouping->order + " LIMIT 1)";
    for (const auto& [isWanted, column] :
         {std::pair(withAlbums, "album_id"), std::pair(withArtists, "artist_id")}) {
        if (!isWanted) {
            query.text += ", NULL";
            continue;
        }
        query.text += std::string(", (SELECT COUNT(DISTINCT t.") + column + ")";
        append(query, within);
        query.text += ')';
    }
    query.text += " FROM collection c LEFT JOIN collection o ON o.id = c.owner_id WHERE c.id IN (?";
    for (std::size_t more = 1; more < count; ++more) query.text += ", ?";
    query.text += ')';
    return query;
}

SqlQuery QueryCompiler::countWithin(const std::string& column, std::int64_t collection) const {
    const auto* grouping = groupingOf(_description.grouping);
    if (!grouping) return {"SELECT 0", {}};
    SqlQuery query{
        "SELECT COUNT(DISTINCT t." + column + ") FROM track t WHERE t." + grouping->column + " = ? AND ",
        {collection}};
    append(query, _filter.tracks());
    return query;
}

zornic::MediaQueryDescription QueryCompiler::itemsOf(zornic::PersistentID collection) const {
    const auto* grouping = groupingOf(_description.grouping);
    zornic::MediaQueryDescription items = _description;
    items.ordering.clear();
    items.useSections = false;
    items.predicates.push_back(
        MediaPredicate::property(grouping ? grouping->property : Property::PersistentID, collection));
    return items;
}

}  // namespace helmo

#include "Host/Library/QueryCompiler.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>

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

std::string joinedKeys(const std::vector<std::string>& keys, const char* direction = "") {
    std::string text;
    for (const auto& key : keys) text += (text.empty() ? "" : ", ") + key + direction;
    return text;
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

std::vector<std::string> itemKeys(const zornic::MediaQueryDescription& description,
                                  const QueryFilter& filter) {
    if (filter.playlist()) return {"p.depth", "p.sort_key", "p.id", "i.position"};
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

}  // namespace

QueryCompiler::QueryCompiler(zornic::MediaQueryDescription description)
    : _description(std::move(description)),
      _filter(_description.predicates),
      _keys(itemKeys(_description, _filter)) {}

std::int64_t QueryCompiler::collectionKind() const {
    const auto* grouping = groupingOf(_description.grouping);
    return grouping ? grouping->kind : 0;
}

SqlQuery QueryCompiler::items() const {
    SqlQuery query;
    if (_filter.playlist()) {
        // A folder's items are those of the playlists inside, however deep; UNION ends a folder that is
        // inside itself.
        query = {
            "WITH RECURSIVE inside (id, depth) AS (SELECT id, 0 FROM playlist WHERE pid = ? AND present = 1 "
            "UNION "
            "SELECT c.id, 1 FROM playlist c JOIN inside ON c.parent_id = inside.id WHERE c.present = 1), "
            "p AS (SELECT id, MIN(depth) AS depth, (SELECT sort_key FROM playlist WHERE id = inside.id) AS "
            "sort_key "
            "FROM inside GROUP BY id) "
            "SELECT t.id, NULL FROM p JOIN playlist_item i ON i.playlist_id = p.id JOIN track t ON t.id = "
            "i.track_id "
            "WHERE ",
            {*_filter.playlist()}};
        append(query, _filter.tracksOfPlaylist());
    } else {
        query.text = "SELECT t.id, " + sectionOf(_keys) + " FROM track t WHERE ";
        append(query, _filter.tracks());
    }
    query.text += " ORDER BY " + joinedKeys(_keys);
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

SqlQuery QueryCompiler::counts() const {
    SqlQuery query{"SELECT section, SUM(tracks) FROM section_count WHERE ordering = ? AND tracks > 0",
                   {static_cast<std::int64_t>(countedOrder().value_or(Schema::CountedOrder::Title))}};
    append(query, _filter.andMediaTypes("media_type"));
    query.text += " GROUP BY section ORDER BY section";
    return query;
}

SqlQuery QueryCompiler::itemsFrom(const std::string& key, std::uint64_t skipped, std::uint64_t limit) const {
    SqlQuery query{"SELECT t.id FROM track t WHERE ", {}};
    append(query, _filter.tracks());
    append(query, {" AND " + _keys.front() + " >= ? ORDER BY " + joinedKeys(_keys) + " LIMIT ? OFFSET ?",
                   {Blob{key}, static_cast<std::int64_t>(limit), static_cast<std::int64_t>(skipped)}});
    return query;
}

SqlQuery QueryCompiler::itemsBefore(const std::string& key, std::uint64_t skipped,
                                    std::uint64_t limit) const {
    SqlQuery query{"SELECT t.id FROM track t WHERE ", {}};
    append(query, _filter.tracks());
    append(query,
           {" AND " + _keys.front() + " < ? ORDER BY " + joinedKeys(_keys, " DESC") + " LIMIT ? OFFSET ?",
            {Blob{key}, static_cast<std::int64_t>(limit), static_cast<std::int64_t>(skipped)}});
    return query;
}

SqlQuery QueryCompiler::keyOf(std::uint32_t row) const {
    SqlQuery query{"SELECT " + _keys.front() + " FROM track t WHERE t.id = ? AND ", {std::int64_t{row}}};
    append(query, _filter.tracks());
    return query;
}

SqlQuery QueryCompiler::countOfItemsBetween(const std::string& key, std::uint32_t row) const {
    SqlQuery query{"SELECT COUNT(*) FROM track t WHERE ", {}};
    append(query, _filter.tracks());
    const std::string keys = joinedKeys(_keys);
    append(query, {" AND " + _keys.front() + " >= ? AND (" + keys + ") < (SELECT " + keys +
                       " FROM track t WHERE t.id = ?)",
                   {Blob{key}, std::int64_t{row}}});
    return query;
}

SqlQuery QueryCompiler::aggregate(const std::string& function, const std::string& column) const {
    if (!_filter.playlist()) {
        SqlQuery query{"SELECT " + function + "(" + column + ") FROM track t WHERE ", {}};
        append(query, _filter.tracks());
        return query;
    }
    SqlQuery query{"SELECT " + function + "(" + column + ") FROM track t JOIN (", {}};
    append(query, items());
    query.text += ") AS listed ON listed.id = t.id";
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

SqlQuery QueryCompiler::collections() const {
    if (isOfPlaylists()) {
        SqlQuery query{"SELECT p.id, substr(p.sort_key, 1, 2) FROM playlist p WHERE ", {}};
        append(query, _filter.playlists());
        query.text += " ORDER BY p.sort_key, p.id";
        return query;
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
    return query;
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
    items.predicates.push_back(
        MediaPredicate::property(grouping ? grouping->property : Property::PersistentID, collection));
    return items;
}

}  // namespace helmo

#include "Host/Library/ItemColumns.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "Platform/Media/MediaProperty.h"

namespace helmo {

using zornic::Dictionary;
using zornic::MediaComparison;
using zornic::MediaPredicate;
using zornic::Value;
namespace Property = zornic::MediaItemProperty;

namespace {

enum class Kind { Text, Identifier, Integer, Truth, Number, Date };

struct Column {
    const char* property;
    Kind kind;
    /** Of the track's row, or of the row of a collection where `link` names the track's column that leads
     * there. */
    const char* expression;
    const char* link = nullptr;
};
using Columns = std::vector<const Column*>;

constexpr Column all[] = {
    {Property::PersistentID, Kind::Identifier, "t.pid"},
    {Property::Title, Kind::Text, "t.title"},
    {Property::SortTitle, Kind::Text, "t.sort_title"},
    {Property::Artist, Kind::Text, "name", "artist_id"},
    {Property::SortArtist, Kind::Text, "sort_name", "artist_id"},
    {Property::AlbumTitle, Kind::Text, "name", "album_id"},
    {Property::SortAlbumTitle, Kind::Text, "sort_name", "album_id"},
    {Property::AlbumArtist, Kind::Text, "name", "album_artist_id"},
    {Property::Composer, Kind::Text, "name", "composer_id"},
    {Property::Genre, Kind::Text, "name", "genre_id"},
    {Property::PodcastTitle, Kind::Text, "name", "podcast_id"},
    {Property::ArtistPersistentID, Kind::Identifier, "pid", "artist_id"},
    {Property::AlbumPersistentID, Kind::Identifier, "pid", "album_id"},
    {Property::AlbumArtistPersistentID, Kind::Identifier, "pid", "album_artist_id"},
    {Property::ComposerPersistentID, Kind::Identifier, "pid", "composer_id"},
    {Property::GenrePersistentID, Kind::Identifier, "pid", "genre_id"},
    {Property::PodcastPersistentID, Kind::Identifier, "pid", "podcast_id"},
    {Property::MediaType, Kind::Integer, "t.media_type"},
    {Property::IsExplicit, Kind::Truth, "t.is_explicit"},
    {Property::IsCompilation, Kind::Truth, "t.is_compilation"},
    {Property::IsSonvaleU, Kind::Truth, "((t.media_type & 8) <> 0)"},
    {Property::AlbumTrackNumber, Kind::Integer, "t.track_number"},
    {Property::AlbumTrackCount, Kind::Integer, "t.track_count"},
    {Property::DiscNumber, Kind::Integer, "t.disc_number"},
    {Property::PlaybackDuration, Kind::Number, "t.duration"},
    {Property::BookmarkTime, Kind::Number, "t.bookmark"},
    {Property::RememberBookmarkTime, Kind::Truth, "((t.media_type & 14) <> 0)"},
    {Property::ReleaseDate, Kind::Date, "t.release_date"},
    {Property::Year, Kind::Integer, "t.year"},
    {Property::DateAdded, Kind::Date, "t.date_added"},
    {Property::LastPlayedDate, Kind::Date, "t.last_played"},
    {Property::PlayCount, Kind::Integer, "t.play_count"},
    {Property::IncludeInShuffle, Kind::Truth, "((t.media_type & 14) = 0)"},
    {Property::IsStreamingQuality, Kind::Truth, "0"},
    {Property::Location, Kind::Text,
     "((SELECT path FROM folder WHERE id = t.folder_id) || '/' || t.file_name)"},
    {Property::ArtworkToken, Kind::Text,
     "CASE WHEN t.picture <> 0 THEN 'embedded:' || t.picture ELSE (SELECT CASE WHEN picture <> '' "
     "THEN 'file:' || id || ':' || picture_stamp ELSE '' END FROM folder WHERE id = t.folder_id) END"},
};

constexpr const char* links[] = {"artist_id",   "album_id", "album_artist_id",
                                 "composer_id", "genre_id", "podcast_id"};

const Column* columnOf(std::string_view property) {
    const auto* found =
        std::ranges::find_if(all, [&](const Column& column) { return property == column.property; });
    return found == std::end(all) ? nullptr : found;
}

/** A damaged file may hold anything. */
zornic::Date dateOf(std::int64_t secondsSince1970) {
    constexpr std::int64_t farthest = 1'000'000'000'000;
    return zornic::Date(std::chrono::seconds(std::clamp(secondsSince1970, -farthest, farthest)));
}

Value valueOf(const Statement& row, int at, Kind kind) {
    if (row.isNull(at)) return {};
    switch (kind) {
        case Kind::Text: {
            auto text = row.text(at);
            return text.empty() ? Value() : Value(std::move(text));
        }
        case Kind::Identifier:
            return static_cast<std::uint64_t>(row.integer(at));
        case Kind::Integer:
            return row.integer(at);
        case Kind::Truth:
            return row.integer(at) != 0;
        case Kind::Number:
            return row.number(at);
        case Kind::Date:
            return dateOf(row.integer(at));
    }
    return {};
}

const Columns& allColumns() {
    static const Columns columns = [] {
        Columns made;
        for (const Column& column : all) made.push_back(&column);
        return made;
    }();
    return columns;
}

const Columns& columnsOfRows() {
    static const Columns columns{columnOf(Property::PersistentID),     columnOf(Property::Title),
                                 columnOf(Property::Artist),           columnOf(Property::AlbumTitle),
                                 columnOf(Property::IsExplicit),       columnOf(Property::ArtworkToken),
                                 columnOf(Property::AlbumTrackNumber), columnOf(Property::PlaybackDuration)};
    return columns;
}

std::string columnsOf(const Columns& columns) {
    std::string list = "t.id";
    for (const Column* column : columns)
        list += std::string(", ") + (column->link ? std::string(column->link) + "_row." : "") +
                column->expression;
    return list;
}

std::string tablesOf(const Columns& columns) {
    std::string list = "track t";
    for (const std::string link : links)
        if (std::ranges::any_of(columns,
                                [&](const Column* column) { return column->link && column->link == link; }))
            list += " LEFT JOIN collection " + link + "_row ON " + link + "_row.id = t." + link;
    return list;
}

Dictionary valuesOf(const Statement& row, const Columns& columns) {
    Dictionary result;
    int at = 1;
    for (const Column* column : columns) result.emplace(column->property, valueOf(row, at++, column->kind));
    return result;
}

std::string comparison(const std::string& expression, const MediaPredicate& predicate) {
    return predicate.comparison() == MediaComparison::Contains ? "contains_text(" + expression + ", ?)"
                                                               : expression + " = ?";
}

}  // namespace

SqlValue sqlValue(const Value& value) {
    if (value.isNone()) return {};
    if (value.isText()) return value.asText();
    if (value == Value(value.asDate()))
        return std::chrono::duration_cast<std::chrono::seconds>(value.asDate().time_since_epoch()).count();
    if (!value.isNumeric()) return {};
    if (value == Value(value.asUnsigned())) return static_cast<std::int64_t>(value.asUnsigned());
    if (value == Value(value.asInteger())) return value.asInteger();
    return value.asNumber();
}

namespace ItemColumns {

const std::string& columns() {
    static const std::string text = columnsOf(allColumns());
    return text;
}

const std::string& tables() {
    static const std::string text = tablesOf(allColumns());
    return text;
}

Dictionary values(const Statement& row) { return valuesOf(row, allColumns()); }

const std::string& rowColumns() {
    static const std::string text = columnsOf(columnsOfRows());
    return text;
}

const std::string& rowTables() {
    static const std::string text = tablesOf(columnsOfRows());
    return text;
}

Dictionary rowValues(const Statement& row) { return valuesOf(row, columnsOfRows()); }

std::optional<std::string> number(std::string_view property) {
    const Column* column = columnOf(property);
    if (!column || column->link || column->kind == Kind::Text || column->kind == Kind::Identifier)
        return std::nullopt;
    return column->expression;
}

SqlQuery condition(const MediaPredicate& predicate) {
    const Column* column = columnOf(predicate.property());
    if (!column || predicate.value().isNone()) return {"0", {}};
    SqlValue value = sqlValue(predicate.value());
    if (predicate.property() == Property::MediaType)
        return {"(t.media_type & ?) <> 0", {predicate.value().asInteger()}};
    // Spelled out, so that an index on just those rows is found.
    if (column->kind == Kind::Truth)
        return {std::string(column->expression) + (predicate.value().asBool() ? " = 1" : " = 0"), {}};
    if (!column->link) return {comparison(column->expression, predicate), {std::move(value)}};
    // Only one collection has an ID: where its tracks stand in order in an index, they needn't be sorted.
    const bool isOne = column->kind == Kind::Identifier && predicate.comparison() == MediaComparison::EqualTo;
    return {std::string("t.") + column->link + (isOne ? " = " : " IN ") +
                "(SELECT id FROM collection WHERE " + comparison(column->expression, predicate) + ")",
            {std::move(value)}};
}

}  // namespace ItemColumns

}  // namespace helmo

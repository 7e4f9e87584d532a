#include "Host/Library/QueryFilter.h"

#include <algorithm>

#include "Host/Library/ItemColumns.h"
#include "Host/Library/PlaylistColumns.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

using zornic::MediaComparison;
using zornic::MediaPredicate;

namespace {

bool isMediaType(const MediaPredicate& predicate) {
    return predicate.isPropertyPredicate() && predicate.property() == zornic::MediaItemProperty::MediaType &&
           !predicate.value().isNone();
}

bool isThePlaylist(const MediaPredicate& predicate) {
    return predicate.isPropertyPredicate() && predicate.comparison() == MediaComparison::EqualTo &&
           predicate.property() == zornic::MediaPlaylistProperty::PersistentID;
}

bool isOnPlaylists(const MediaPredicate& predicate) {
    if (predicate.isPropertyPredicate()) return PlaylistColumns::isProperty(predicate.property());
    return std::ranges::all_of(predicate.alternatives(), isOnPlaylists);
}

SqlQuery anyOf(const MediaPredicate& predicate, SqlQuery (*condition)(const MediaPredicate&)) {
    SqlQuery query{"(", {}};
    for (const auto& alternative : predicate.alternatives()) {
        if (query.text.size() > 1) query.text += " OR ";
        append(query, condition(alternative));
    }
    query.text += ')';
    return query;
}

SqlQuery playlistCondition(const MediaPredicate& predicate) {
    return predicate.isPropertyPredicate() ? PlaylistColumns::condition(predicate)
                                           : anyOf(predicate, playlistCondition);
}

/** Conditions on playlists are met by a track that is in such a playlist. */
SqlQuery trackCondition(const MediaPredicate& predicate) {
    if (isThePlaylist(predicate))
        return {PlaylistColumns::holdsTrack(), {static_cast<std::int64_t>(predicate.value().asUnsigned())}};
    if (!isOnPlaylists(predicate))
        return predicate.isPropertyPredicate() ? ItemColumns::condition(predicate)
                                               : anyOf(predicate, trackCondition);
    SqlQuery query{
        "t.id IN (SELECT i.track_id FROM playlist p JOIN playlist_item i ON i.playlist_id = p.id "
        "WHERE p.present = 1 AND ",
        {}};
    append(query, playlistCondition(predicate));
    query.text += ')';
    return query;
}

}  // namespace

void append(SqlQuery& query, const SqlQuery& more) {
    query.text += more.text;
    query.values.insert(query.values.end(), more.values.begin(), more.values.end());
}

QueryFilter::QueryFilter(std::vector<MediaPredicate> predicates) : _predicates(std::move(predicates)) {
    for (const auto& predicate : _predicates) {
        if (isMediaType(predicate))
            _mediaTypes.push_back(predicate.value().asInteger());
        else
            _isOnlyMediaTypes = false;
        if (!_playlist && isThePlaylist(predicate))
            _playlist = static_cast<std::int64_t>(predicate.value().asUnsigned());
    }
}

bool QueryFilter::fixes(const char* itemProperty) const {
    return std::ranges::any_of(_predicates, [&](const MediaPredicate& predicate) {
        return predicate.isPropertyPredicate() && predicate.property() == itemProperty &&
               predicate.comparison() == MediaComparison::EqualTo;
    });
}

SqlQuery QueryFilter::andMediaTypes(const std::string& column) const {
    SqlQuery query;
    for (const std::int64_t types : _mediaTypes) append(query, {" AND (" + column + " & ?) <> 0", {types}});
    return query;
}

SqlQuery QueryFilter::tracks() const { return ofTracks(false); }

SqlQuery QueryFilter::itemsOfPlaylist() const {
    if (_predicates.size() > 1) {
        SqlQuery query{"i.track_id IN (SELECT t.id FROM track t WHERE t.id = i.track_id AND ", {}};
        append(query, ofTracks(true));
        query.text += ')';
        return query;
    }
    // There are few that are gone, if any: not one of the others has to be looked at.
    return {
        "i.track_id IS NOT NULL AND NOT EXISTS (SELECT 1 FROM track t INDEXED BY track_gone "
        "WHERE t.id = i.track_id AND t.present = 0)",
        {}};
}

SqlQuery QueryFilter::ofTracks(bool areReadFromPlaylist) const {
    SqlQuery query{"t.present = 1", {}};
    bool isPlaylistMet = !areReadFromPlaylist;
    for (const auto& predicate : _predicates) {
        if (isThePlaylist(predicate) && !std::exchange(isPlaylistMet, true)) continue;
        query.text += " AND ";
        append(query, trackCondition(predicate));
    }
    return query;
}

SqlQuery QueryFilter::playlists() const {
    SqlQuery query{"p.present = 1", {}};
    for (const auto& predicate : _predicates) {
        if (isOnPlaylists(predicate)) {
            query.text += " AND ";
            append(query, playlistCondition(predicate));
            continue;
        }
        query.text +=
            " AND EXISTS (SELECT 1 FROM playlist_item i JOIN track t ON t.id = i.track_id "
            "WHERE i.playlist_id = p.id AND t.present = 1 AND ";
        append(query, trackCondition(predicate));
        query.text += ')';
    }
    return query;
}

}  // namespace helmo

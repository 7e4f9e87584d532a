#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Host/Library/Database.h"
#include "Platform/Media/MediaPredicate.h"

namespace helmo {

/** Appends SQL with its values. */
void append(SqlQuery& query, const SqlQuery& more);

/** What a query's predicates ask of tracks (`t` in all SQL here) and playlists (`p`). Immutable; any thread.
 */
class QueryFilter {
public:
    explicit QueryFilter(std::vector<zornic::MediaPredicate> predicates);

    /** The playlist, or folder of playlists, whose items are listed in its own order. */
    const std::optional<std::int64_t>& playlist() const { return _playlist; }
    /** Whether nothing but the media type is asked for, so that maintained counts answer. */
    bool isOnlyMediaTypes() const { return _isOnlyMediaTypes; }
    std::size_t countOfMediaTypes() const { return _mediaTypes.size(); }
    /** Whether all tracks have the same value of a property. */
    bool fixes(const char* itemProperty) const;
    /** " AND ..." for a column that holds a media type. */
    SqlQuery andMediaTypes(const std::string& column) const;
    /** Whether a track meets all of it. */
    SqlQuery tracks() const;
    /** Whether the track of `i`, an item of the playlist that is asked for, does. */
    SqlQuery itemsOfPlaylist() const;
    /** Whether a playlist meets all of it; what is asked of items, some item in it meets. */
    SqlQuery playlists() const;

private:
    SqlQuery ofTracks(bool areReadFromPlaylist) const;

    const std::vector<zornic::MediaPredicate> _predicates;
    std::optional<std::int64_t> _playlist;
    std::vector<std::int64_t> _mediaTypes;
    bool _isOnlyMediaTypes = true;
};

}  // namespace helmo

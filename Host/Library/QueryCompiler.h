#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Host/Library/CountedQuery.h"
#include "Host/Library/Database.h"
#include "Host/Library/QueryFilter.h"
#include "Host/Library/Schema.h"
#include "Platform/Media/MediaQuery.h"

namespace helmo {

/** Turns what a query asks for into SQL. Lists are read as row numbers in order, each with its section (two
   bytes; NULL in an order that has no sections). Immutable; any thread. */
class QueryCompiler {
public:
    explicit QueryCompiler(zornic::MediaQueryDescription description);
    const zornic::MediaQueryDescription& description() const { return _description; }

    /** Row numbers and sections of all items, to be read one behind the other. */
    std::vector<SqlQuery> items() const;
    /** The statements for the items, or collections, when they are counted by the first bytes of their keys:
       all of them, filtered by media type at most, in an order that is kept. None for other lists, which have
       to be read to be counted. */
    std::optional<CountedQuery> countedItems() const;
    std::optional<CountedQuery> countedCollections() const;
    /** `function` ("MAX", "SUM") of a number over all items. */
    SqlQuery aggregate(const std::string& function, const std::string& column) const;

    /** Row numbers and sections of all collections: rows of collections, of playlists when grouped by
       playlist, of tracks when each item is its own collection. */
    std::vector<SqlQuery> collections() const;
    /** For `count` collections whose row numbers are to be bound behind the values: row number, ID, name,
       album artist's name and ID, number of items, representative item's ID, and where wanted the numbers of
       albums and artists. */
    SqlQuery collectionValues(std::size_t count, bool withAlbums, bool withArtists) const;
    SqlQuery numberOfAlbums(std::int64_t collection) const { return countWithin("album_id", collection); }
    SqlQuery numberOfArtists(std::int64_t collection) const { return countWithin("artist_id", collection); }
    /** What the items of one collection are asked by. */
    zornic::MediaQueryDescription itemsOf(zornic::PersistentID collection) const;

    /** The kind of collection that the grouping gathers; 0 when each item is one, or playlists. */
    std::int64_t collectionKind() const;
    bool isOfPlaylists() const { return _description.grouping == zornic::MediaGrouping::Playlist; }
    bool isOfItems() const { return !isOfPlaylists() && collectionKind() == 0; }

private:
    SqlQuery itemsOfPlaylist() const;
    SqlQuery itemsOfPlaylistsInside() const;
    SqlQuery countWithin(const std::string& column, std::int64_t collection) const;
    std::optional<Schema::CountedOrder> countedOrder() const;
    std::vector<std::string> collectionOrdering() const;

    const zornic::MediaQueryDescription _description;
    const QueryFilter _filter;
    /** Columns by which items are ordered, most significant first. */
    const std::vector<std::string> _keys;
};

}  // namespace helmo

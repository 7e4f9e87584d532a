#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Host/Library/AlbumDecision.h"
#include "Host/Library/CollectionRows.h"
#include "Host/Library/TagReader.h"

namespace helmo {

/** Keeps the tracks that lie in one place under one title together as the albums they are, whenever one
   comes, goes or says something else. A place is the row of the folder, for discs of that around their
   folders. What it costs is in proportion to the group. Within one transaction; throws. */
class AlbumGroups {
public:
    struct Key {
        std::int64_t place = 0;
        /** The album's title. */
        std::string folded;
        auto operator<=>(const Key&) const = default;
    };
    struct Title {
        std::string name, sortName;
    };
    /** A track that is about to be stored, and where it was until now: all 0 for a new one. */
    struct Newcomer {
        AlbumFile file;
        std::int64_t track = 0, album = 0, place = 0;
    };
    struct Rows {
        CollectionRows::Row album, owner;
        bool isCompilation = false;
    };
    /** What is wrong with the tags of a group; empty when nothing is any more. */
    using Remarks = std::map<Key, std::string>;

    AlbumGroups(Database& database, CollectionRows& rows, TrackCounts& counts)
        : _database(database), _rows(rows), _counts(counts) {}

    static AlbumFile fileOf(const TrackTags& tags);
    /** What of these a track's row keeps: whether its tags name an album artist, and a compilation. */
    static std::int64_t claimOf(const TrackTags& tags);

    /** The album of a file by its own tags alone. */
    Rows alone(const AlbumFile& file, const Title& title, std::int64_t place);
    /** The albums of files that come into a group; the tracks that are there are changed where that makes
       them another's. An album of which all tracks come here stays the same, whoever's and whatever called
       it is now. */
    std::vector<Rows> settle(const Key& key, const Title& title, std::vector<Newcomer> newcomers);
    /** Decides anew, after tracks went, with those that came back. */
    void settleAgain(const Key& key, const std::set<std::int64_t>& returned);
    /** Where a track is, and the album it is in now. */
    std::optional<std::pair<Key, std::int64_t>> whereIs(std::int64_t track);
    /** The groups of which a folder's tracks are but a part. */
    std::vector<Key> sharedWith(std::int64_t folder);

    const Remarks& remarks() const { return _remarks; }

private:
    struct Member;
    using Members = std::vector<Member>;

    /** In order: a heap of files may have very many. */
    std::vector<std::int64_t> albumsOf(const Key& key);
    /** None when it is too many to be an album. */
    std::optional<Members> members(const Key& key, const std::vector<std::int64_t>& albums);
    std::vector<Rows> decide(const Key& key, const Title& title, Members& members,
                             std::vector<std::int64_t> albums);
    std::vector<Rows> rowsOf(const Key& key, const Title& title, const AlbumDecision& decision,
                             const Members& members, std::vector<std::int64_t>& albums);
    std::int64_t freeAlbum(const Key& key, const AlbumDecision& decision, std::size_t album,
                           const Members& members, const std::set<std::int64_t>& used);
    bool isLeft(std::int64_t album, const Key& key, const Members& members);
    bool isGone(std::int64_t place);
    void store(const Member& member, const Rows& rows);
    void keep(const Key& key, const std::vector<Rows>& rows, const std::vector<std::int64_t>& albums);
    void remark(const Key& key, const Title& title, const std::string& contradiction);

    Database& _database;
    CollectionRows& _rows;
    TrackCounts& _counts;
    Remarks _remarks;
};

}  // namespace helmo

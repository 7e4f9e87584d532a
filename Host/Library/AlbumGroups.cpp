#include "Host/Library/AlbumGroups.h"

#include <algorithm>
#include <numeric>
#include <tuple>

#include "Host/Library/MediaFiles.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

namespace {

constexpr auto albumArtistKind = static_cast<std::int64_t>(zornic::MediaGrouping::AlbumArtist);
/** More is no album, but a heap of files with the same word in their tags: each goes by its own. */
constexpr std::size_t mostMembers = 500;
/** Of an album that is in many places, a place's tracks are sooner found by the place. */
constexpr std::int64_t manyTracks = 1000;
constexpr std::int64_t claimsArtist = 1, claimsCompilation = 2;

const std::string columns =
    "SELECT t.id, t.album_id, t.album_artist_id, t.is_compilation, t.album_claim, t.media_type, "
    "t.disc_number, t.track_number, t.album_key, t.album_artist_key, a.name, o.name ";
const std::string named =
    " JOIN collection a ON a.id = t.artist_id JOIN collection o ON o.id = t.album_artist_id ";
const std::string byAlbum =
    columns +
    "FROM album_of_place m CROSS JOIN track t ON t.album_id = m.album_id CROSS JOIN folder f ON "
    "f.id = t.folder_id" +
    named +
    "WHERE m.place_id = ?1 AND m.folded = ?2 AND t.present = 1 AND (f.id = ?1 OR f.disc_of = ?1) LIMIT ?3";
const std::string byPlace =
    columns + "FROM folder f CROSS JOIN track t ON t.folder_id = f.id" + named +
    "WHERE (f.id = ?1 OR f.disc_of = ?1) AND t.present = 1 AND t.album_id IN "
    "(SELECT album_id FROM album_of_place WHERE place_id = ?1 AND folded = ?2) LIMIT ?3";
const std::string byTrack = columns + "FROM track t" + named + "WHERE t.id = ? AND t.present = 1";

bool isMusic(std::int64_t mediaType) {
    using namespace zornic::MediaType;
    return (mediaType & (Podcast | Audiobook | Lecture)) == 0;
}

}  // namespace

struct AlbumGroups::Member : Newcomer {
    bool isNew = true;
    /** As stored. */
    std::int64_t owner = 0;
    bool isCompilation = false;
    std::string albumKey, ownerKey;

    static Member of(Newcomer&& newcomer) {
        Member member;
        static_cast<Newcomer&>(member) = std::move(newcomer);
        return member;
    }
    static Member of(const Statement& row, std::int64_t place) {
        Member member;
        member.isNew = false;
        member.track = row.integer(0);
        member.album = row.integer(1);
        member.place = place;
        member.owner = row.integer(2);
        member.isCompilation = row.integer(3) != 0;
        const std::int64_t claim = row.integer(4);
        member.file.isCompilation = (claim & claimsCompilation) != 0;
        member.file.isMusic = isMusic(row.integer(5));
        member.file.disc = row.integer(6);
        member.file.number = row.integer(7);
        member.albumKey = row.text(8);
        member.ownerKey = row.text(9);
        member.file.artist = row.text(10);
        if ((claim & claimsArtist) != 0) member.file.albumArtist = row.text(11);
        return member;
    }
    /** In the album's order; new ones behind old ones, as they are stored. */
    bool operator<(const Member& other) const {
        return std::tie(file.disc, file.number, isNew) <
               std::tie(other.file.disc, other.file.number, other.isNew);
    }
};

AlbumFile AlbumGroups::fileOf(const TrackTags& tags) {
    return {tags.artist,
            tags.sortArtist,
            tags.albumArtist,
            tags.sortAlbumArtist,
            tags.isCompilation && !tags.albumTitle.empty(),
            isMusic(tags.mediaType),
            tags.discNumber,
            tags.trackNumber};
}

std::int64_t AlbumGroups::claimOf(const TrackTags& tags) {
    const bool isCompilation = tags.isCompilation && !tags.albumTitle.empty();
    return (tags.albumArtist.empty() ? 0 : claimsArtist) | (isCompilation ? claimsCompilation : 0);
}

AlbumGroups::Rows AlbumGroups::alone(const AlbumFile& file, const Title& title, std::int64_t place) {
    const AlbumOwner owner = AlbumDecision::of({file}).albums.front();
    const CollectionRows::Row ownerRow = _rows.row(albumArtistKind, owner.name, owner.sortName);
    const bool needsPlace = !title.name.empty() && !owner.isSomebody();
    return {_rows.album({title.name, title.sortName, ownerRow, needsPlace ? place : 0}), ownerRow,
            owner.isCompilation};
}

std::vector<AlbumGroups::Rows> AlbumGroups::settle(const Key& key, const Title& title,
                                                   std::vector<Newcomer> newcomers) {
    const auto albums = albumsOf(key);
    auto found = members(key, albums);
    if (!found || found->size() + newcomers.size() > mostMembers) {
        std::vector<Rows> rows;
        for (const Newcomer& newcomer : newcomers) rows.push_back(alone(newcomer.file, title, key.place));
        std::vector<Rows> all = rows;
        for (const auto album : albums) all.push_back({{album, {}}, {}, false});
        keep(key, all, albums);
        return rows;
    }
    std::erase_if(*found, [&](const Member& member) {
        return std::ranges::find(newcomers, member.track, &Newcomer::track) != newcomers.end();
    });
    Members all;
    for (Newcomer& newcomer : newcomers) all.push_back(Member::of(std::move(newcomer)));
    std::ranges::move(*found, std::back_inserter(all));
    auto rows = decide(key, title, all, albums);
    rows.resize(newcomers.size());
    return rows;
}

void AlbumGroups::settleAgain(const Key& key, const std::set<std::int64_t>& returned) {
    const auto albums = albumsOf(key);
    auto all = members(key, albums);
    if (!all || isGone(key.place)) return;
    for (const std::int64_t track : returned) {
        if (std::ranges::find(*all, track, &Member::track) != all->end()) continue;
        auto row = _database.prepare({byTrack, {track}});
        if (row.step()) all->push_back(Member::of(row, key.place));
    }
    if (all->empty() || all->size() > mostMembers) return;
    auto name =
        _database.prepare({"SELECT name, sort_name FROM collection WHERE id = ?", {all->front().album}});
    if (name.step()) decide(key, {name.text(0), name.text(1)}, *all, albums);
}

std::optional<std::pair<AlbumGroups::Key, std::int64_t>> AlbumGroups::whereIs(std::int64_t track) {
    auto row = _database.prepare(
        {"SELECT IFNULL(f.disc_of, f.id), c.folded, c.id FROM track t JOIN folder f ON f.id = t.folder_id "
         "JOIN collection c ON c.id = t.album_id WHERE t.id = ?",
         {track}});
    if (!row.step()) return std::nullopt;
    Key key{row.integer(0), row.text(1)};
    key.folded.resize(std::min(key.folded.size(), key.folded.find('\n')));
    return std::pair(std::move(key), row.integer(2));
}

std::vector<AlbumGroups::Key> AlbumGroups::sharedWith(std::int64_t folder) {
    std::vector<Key> keys;
    auto rows = _database.prepare(
        {"SELECT DISTINCT m.place_id, m.folded FROM folder f JOIN album_of_place m ON m.place_id = "
         "IFNULL(f.disc_of, f.id) WHERE f.id = ? AND EXISTS (SELECT 1 FROM folder d WHERE d.disc_of = "
         "m.place_id)",
         {folder}});
    while (rows.step()) keys.push_back({rows.integer(0), rows.text(1)});
    return keys;
}

std::vector<std::int64_t> AlbumGroups::albumsOf(const Key& key) {
    std::vector<std::int64_t> albums;
    auto rows = _database.prepare(
        {"SELECT album_id FROM album_of_place WHERE place_id = ? AND folded = ? ORDER BY album_id",
         {key.place, key.folded}});
    while (rows.step()) albums.push_back(rows.integer(0));
    return albums;
}

std::optional<AlbumGroups::Members> AlbumGroups::members(const Key& key,
                                                         const std::vector<std::int64_t>& albums) {
    Members found;
    std::int64_t tracks = 0;
    for (const std::int64_t album : albums)
        tracks +=
            _database.integer({"SELECT SUM(tracks) FROM collection_count WHERE collection_id = ?", {album}});
    if (albums.empty()) return found;
    auto rows = _database.prepare({tracks > manyTracks ? byPlace : byAlbum,
                                   {key.place, key.folded, static_cast<std::int64_t>(mostMembers + 1)}});
    while (rows.step()) found.push_back(Member::of(rows, key.place));
    if (found.size() > mostMembers) return std::nullopt;
    return found;
}

/** The rows of all members, in their order. */
std::vector<AlbumGroups::Rows> AlbumGroups::decide(const Key& key, const Title& title, Members& members,
                                                   std::vector<std::int64_t> albums) {
    std::vector<std::size_t> order(members.size());
    std::iota(order.begin(), order.end(), 0u);
    std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return members[a] < members[b]; });
    std::vector<AlbumFile> files;
    Members sorted;
    for (const std::size_t at : order) {
        files.push_back(std::move(members[at].file));
        sorted.push_back(std::move(members[at]));
    }
    const AlbumDecision decision = AlbumDecision::of(files);
    const std::vector<Rows> rows = rowsOf(key, title, decision, sorted, albums);
    keep(key, rows, albums);
    std::vector<Rows> result(members.size());
    bool hasNew = false;
    for (std::size_t at = 0; at < order.size(); ++at) {
        const Rows& own = rows[decision.albumOfFile[at]];
        if (!sorted[at].isNew) store(sorted[at], own);
        hasNew = hasNew || sorted[at].isNew;
        result[order[at]] = own;
    }
    if (hasNew) remark(key, title, decision.contradiction);
    return result;
}

std::vector<AlbumGroups::Rows> AlbumGroups::rowsOf(const Key& key, const Title& title,
                                                   const AlbumDecision& decision, const Members& members,
                                                   std::vector<std::int64_t>& albums) {
    std::vector<Rows> rows;
    std::vector<CollectionRows::Album> wanted;
    std::set<std::int64_t> used;
    for (const AlbumOwner& owner : decision.albums) {
        const CollectionRows::Row ownerRow = _rows.row(albumArtistKind, owner.name, owner.sortName);
        wanted.push_back({title.name, title.sortName, ownerRow, owner.isSomebody() ? 0 : key.place});
        const auto known = _rows.knownAlbum(wanted.back());
        if (known) used.insert(known->id);
        rows.push_back({known.value_or(CollectionRows::Row()), ownerRow, owner.isCompilation});
    }
    for (std::size_t at = 0; at < rows.size(); ++at) {
        if (rows[at].album.id != 0) continue;
        const std::int64_t old = freeAlbum(key, decision, at, members, used);
        rows[at].album = old != 0 ? _rows.takeOver(old, wanted[at]) : _rows.addAlbum(wanted[at]);
        if (old != 0) _database.run({"DELETE FROM album_of_place WHERE album_id = ?", {old}});
        std::erase(albums, old);
        used.insert(rows[at].album.id);
    }
    return rows;
}

/** The row that most of an album's tracks had and that is no longer anybody else's; 0 without one. */
std::int64_t AlbumGroups::freeAlbum(const Key& key, const AlbumDecision& decision, std::size_t album,
                                    const Members& members, const std::set<std::int64_t>& used) {
    std::map<std::int64_t, std::size_t> tracks;
    for (std::size_t at = 0; at < members.size(); ++at)
        if (decision.albumOfFile[at] == album && members[at].album != 0 && !used.contains(members[at].album))
            ++tracks[members[at].album];
    while (!tracks.empty()) {
        const auto most = std::ranges::max_element(tracks, {}, [](const auto& old) { return old.second; });
        if (isLeft(most->first, key, members)) return most->first;
        tracks.erase(most);
    }
    return 0;
}

/** Whether an album has no tracks but those of `members`. Where the folder of others is gone, and some of
   them came from there, they are on their way too. */
bool AlbumGroups::isLeft(std::int64_t album, const Key& key, const Members& members) {
    auto places =
        _database.prepare({"SELECT place_id, folded FROM album_of_place WHERE album_id = ?", {album}});
    bool isKnown = false;
    while (places.step()) {
        isKnown = true;
        const std::int64_t place = places.integer(0);
        if (key == Key{place, places.text(1)}) continue;
        const auto own = std::ranges::count_if(
            members, [&](const Member& member) { return member.album == album && member.place == place; });
        const auto all = _database.integer(
            {"SELECT COUNT(*) FROM folder f CROSS JOIN track t ON t.folder_id = f.id WHERE (f.id = ?1 OR "
             "f.disc_of = ?1) AND t.album_id = ?2 AND (t.present = 1 OR ?1 <> ?3)",
             {place, album, key.place}});
        if (all > own && (own == 0 || !isGone(place))) return false;
    }
    return isKnown;
}

bool AlbumGroups::isGone(std::int64_t place) {
    auto folders = _database.prepare({"SELECT path FROM folder WHERE id = ?1 OR disc_of = ?1", {place}});
    while (folders.step())
        if (FileStamp::of(folders.text(0))) return false;
    return true;
}

void AlbumGroups::store(const Member& member, const Rows& rows) {
    if (member.album == rows.album.id && member.owner == rows.owner.id &&
        member.isCompilation == rows.isCompilation && member.albumKey == rows.album.key &&
        member.ownerKey == rows.owner.key)
        return;
    // Triggers take it out of the counts that it must be in by then.
    if (!_counts.isEmpty()) _counts.store(_database);
    _database.run(
        {"UPDATE track SET album_id = ?, album_key = ?, album_artist_id = ?, album_artist_key = ?, "
         "is_compilation = ? WHERE id = ?",
         {rows.album.id, Blob{rows.album.key}, rows.owner.id, Blob{rows.owner.key},
          std::int64_t{rows.isCompilation}, member.track}});
}

void AlbumGroups::keep(const Key& key, const std::vector<Rows>& rows,
                       const std::vector<std::int64_t>& albums) {
    std::set<std::int64_t> now;
    for (const Rows& row : rows)
        if (now.insert(row.album.id).second && !std::ranges::binary_search(albums, row.album.id))
            _database.run(
                {"INSERT OR IGNORE INTO album_of_place (place_id, folded, album_id) VALUES (?, ?, ?)",
                 {key.place, key.folded, row.album.id}});
    for (const std::int64_t album : albums)
        if (!now.contains(album))
            _database.run({"DELETE FROM album_of_place WHERE place_id = ? AND folded = ? AND album_id = ?",
                           {key.place, key.folded, album}});
}

void AlbumGroups::remark(const Key& key, const Title& title, const std::string& contradiction) {
    std::string& text = _remarks[key];
    text.clear();
    if (contradiction.empty()) return;
    auto folder = _database.prepare({"SELECT path FROM folder WHERE id = ?", {key.place}});
    if (folder.step()) text = folder.text(0) + ": album \"" + title.name + "\": " + contradiction;
}

}  // namespace helmo

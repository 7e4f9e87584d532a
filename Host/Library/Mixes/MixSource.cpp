#include "Host/Library/Mixes/MixSource.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "Platform/Media/MediaProperty.h"

namespace helmo {

namespace {

using zornic::MediaGrouping;
namespace Type = zornic::MediaType;

constexpr auto artists = static_cast<std::int64_t>(MediaGrouping::Artist);
constexpr auto genres = static_cast<std::int64_t>(MediaGrouping::Genre);

/** Songs that are looked at; one in fifty of a million is enough to tell what there is much of. */
constexpr std::int64_t mostSongs = 20'000;
/** Rows that are read before others may read. */
constexpr std::size_t batch = 250;
/** Rows without a song, of one place in the table, before another place is looked at. */
constexpr std::int64_t longestGap = 64;
constexpr std::int64_t songsLookedAt = 2000, mostCompilations = 50, mostSongsOfCompilation = 200;
constexpr std::size_t mostCompanions = 20;

const std::string songColumns = "SELECT t.id, t.artist_id, t.album_id, t.genre_id, t.year FROM track t ";
const std::string isUsable = std::string(isMixMusic) + " AND t.artist_id <> ?";

}  // namespace

static_assert(Type::Music == 1 && (Type::Podcast | Type::Audiobook | Type::Lecture) == 14);

MixSource::MixSource(Readers& readers, const std::function<bool()>& isStopping)
    : _readers(readers),
      _isStopping(isStopping),
      _unnamedArtist(unnamed(artists)),
      _unnamedGenre(unnamed(genres)) {}

std::int64_t MixSource::integer(const SqlQuery& query) const {
    return _readers.readLong(std::int64_t{0}, [&](Database& database) { return database.integer(query); });
}

std::vector<std::int64_t> MixSource::integers(const SqlQuery& query) const {
    return _readers.readLong(std::vector<std::int64_t>(), [&](Database& database) {
        std::vector<std::int64_t> found;
        auto rows = database.prepare(query);
        while (rows.step()) found.push_back(rows.integer(0));
        return found;
    });
}

std::int64_t MixSource::unnamed(std::int64_t kind) const {
    return integer({"SELECT id FROM collection WHERE kind = ? AND folded = '' AND owner_id = 0", {kind}});
}

MixSong MixSource::songIn(const Statement& row) const {
    const std::int64_t genre = row.integer(3);
    return {row.integer(0), row.integer(1), row.integer(2), genre == _unnamedGenre ? 0 : genre,
            static_cast<int>(row.integer(4))};
}

std::vector<MixSong> MixSource::songs() const {
    const auto first = integer({"SELECT MIN(id) FROM track", {}});
    const auto last = integer({"SELECT MAX(id) FROM track", {}});
    return last - first < mostSongs ? allSongs() : sampledSongs(first, last);
}

std::vector<MixSong> MixSource::allSongs() const {
    std::vector<MixSong> songs;
    for (std::size_t read = batch; read == batch && !_isStopping();) {
        const std::int64_t last = songs.empty() ? 0 : songs.back().id;
        read = _readers.readLong(std::size_t{0}, [&](Database& database) {
            const std::size_t before = songs.size();
            auto rows = database.prepare(
                {songColumns + "NOT INDEXED WHERE t.id > ? AND " + isUsable + " ORDER BY t.id LIMIT ?",
                 {last, _unnamedArtist, static_cast<std::int64_t>(batch)}});
            while (rows.step()) songs.push_back(songIn(rows));
            return songs.size() - before;
        });
    }
    return songs;
}

std::vector<MixSong> MixSource::sampledSongs(std::int64_t firstRow, std::int64_t lastRow) const {
    std::mt19937_64 generator(static_cast<std::uint64_t>(lastRow));
    const std::int64_t first = firstRow - longestGap;  // the first row is as likely as any other
    const auto rows = static_cast<std::uint64_t>(lastRow - first + 1);
    std::vector<std::int64_t> places;
    for (std::int64_t at = 0; at < mostSongs; ++at)
        places.push_back(first + static_cast<std::int64_t>(generator() % rows));
    std::ranges::sort(places);  // from the beginning of the file to its end
    std::vector<MixSong> songs;
    for (std::size_t from = 0; from < places.size() && !_isStopping(); from += batch)
        _readers.readLong(false, [&](Database& database) {
            auto row = database.prepare({songColumns + "NOT INDEXED WHERE t.id BETWEEN ? AND ? AND " +
                                             isUsable + " ORDER BY t.id LIMIT 1",
                                         {}});
            for (std::size_t at = from; at < std::min(from + batch, places.size()); ++at) {
                row.bind(places[at]).bind(places[at] + longestGap).bind(_unnamedArtist);
                if (row.step() && (songs.empty() || songs.back().id < row.integer(0)))
                    songs.push_back(songIn(row));
                row.reset();
            }
            return true;
        });
    return songs;
}

std::vector<std::int64_t> MixSource::leadingArtists(std::size_t count) const {
    return integers(
        {"SELECT c.id FROM collection c JOIN collection_count n ON n.collection_id = c.id "
         "WHERE c.kind = ? AND c.id <> ? AND (n.media_type & 1) <> 0 AND n.tracks > 0 "
         "ORDER BY n.tracks DESC, c.id LIMIT ?",
         {artists, _unnamedArtist, static_cast<std::int64_t>(count)}});
}

std::vector<std::int64_t> MixSource::companionsOf(std::int64_t artist) const {
    const auto compilations = integers(
        {"SELECT DISTINCT album_id FROM (SELECT t.album_id, t.is_compilation FROM track t WHERE " +
             std::string(isMixMusic) + " AND t.artist_id = ? LIMIT ?) WHERE is_compilation = 1 LIMIT ?",
         {artist, songsLookedAt, mostCompilations}});
    std::map<std::int64_t, std::size_t> shared;
    for (const std::int64_t album : compilations) {
        if (_isStopping()) return {};
        const auto onIt =
            integers({"SELECT t.artist_id FROM track t WHERE t.album_id = ? AND "
                      "t.is_compilation = 1 AND " +
                          isUsable + " LIMIT ?",
                      {album, _unnamedArtist, mostSongsOfCompilation}});
        for (const std::int64_t other : std::set(onIt.begin(), onIt.end()))
            if (other != artist) ++shared[other];
    }
    std::vector<std::int64_t> companions;
    for (const auto& [other, count] : shared) companions.push_back(other);
    std::ranges::stable_sort(companions, std::ranges::greater{}, [&](auto other) { return shared[other]; });
    companions.resize(std::min(companions.size(), mostCompanions));
    return companions;
}

std::vector<MixSong> MixSource::songsOfArtist(std::int64_t artist, std::int64_t limit) const {
    return _readers.readLong(std::vector<MixSong>(), [&](Database& database) {
        std::vector<MixSong> songs;
        auto rows = database.prepare(
            {songColumns + "WHERE t.artist_id = ? AND " + isMixMusic + " LIMIT ?", {artist, limit}});
        while (rows.step()) songs.push_back(songIn(rows));
        return songs;
    });
}

MixSource::Name MixSource::nameOf(std::int64_t collection) const {
    return _readers.readLong(Name(), [&](Database& database) {
        auto row = database.prepare({"SELECT name, pid FROM collection WHERE id = ?", {collection}});
        return row.step() ? Name{row.text(0), row.integer(1)} : Name();
    });
}

}  // namespace helmo

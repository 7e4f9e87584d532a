#include "Host/Library/Mixes/MixPlan.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "Host/Library/Mixes/MixOrder.h"
#include "Host/Library/SortKey.h"
#include "Platform/Foundation/StringFormat.h"

namespace helmo {

namespace {

/** So many artists are looked at for companions. */
constexpr std::size_t leadingArtists = 16;
/** Groups of a kind that are compared with what was chosen. */
constexpr std::size_t mostGroups = 32;
constexpr std::size_t mostNamedArtists = 4;
/** A mix around an artist has more of him than of each of the others. */
constexpr std::int64_t mostSongsOfArtist = 200, mostSongsOfCompanion = 40;

/** The decade of a year, 0 for a year that is none of recorded music. */
int decadeOf(int year) { return year >= 1900 && year < 2100 ? year - year % 10 : 0; }

bool isEarlier(const MixSong& left, const MixSong& right) { return left.id < right.id; }

std::map<std::int64_t, std::size_t> countsOfArtists(const std::vector<MixSong>& songs) {
    std::map<std::int64_t, std::size_t> counts;
    for (const MixSong& song : songs) ++counts[song.artist];
    return counts;
}

/** Artists of a mix, those first of whom there is the most in the group that it was made from; `leading` is
   before them all. */
std::vector<std::int64_t> mostPresent(const std::vector<MixSong>& mix, const std::vector<MixSong>& group,
                                      std::int64_t leading) {
    auto counts = countsOfArtists(group);
    counts[leading] = group.size();
    std::vector<std::int64_t> artists;
    for (const auto& [artist, count] : countsOfArtists(mix)) artists.push_back(artist);
    std::ranges::stable_sort(artists, std::ranges::greater{},
                             [&](std::int64_t artist) { return counts.at(artist); });
    artists.resize(std::min(artists.size(), mostNamedArtists));
    return artists;
}

}  // namespace

std::vector<Mix> MixPlan::make() {
    gatherSongs();
    gatherArtists();
    constexpr std::size_t all = std::numeric_limits<std::size_t>::max();
    for (const auto& [kind, quota] : {std::pair(Kind::Genre, 5), std::pair(Kind::GenreOfDecade, 3),
                                      std::pair(Kind::Artist, 3), std::pair(Kind::Decade, 2)})
        choose(kind, static_cast<std::size_t>(quota));
    for (const Kind kind : {Kind::GenreOfDecade, Kind::Genre, Kind::Decade, Kind::Artist}) choose(kind, all);
    return _isStopping() ? std::vector<Mix>() : std::move(_mixes);
}

void MixPlan::gatherSongs() {
    const auto songs = _source.songs();
    std::map<std::int64_t, std::vector<MixSong>> genres;
    std::map<int, std::vector<MixSong>> decades;
    for (const MixSong& song : songs) {
        if (song.genre != 0) genres[song.genre].push_back(song);
        if (const int decade = decadeOf(song.year)) decades[decade].push_back(song);
    }
    for (auto& [decade, group] : decades)
        offer({.kind = Kind::Decade, .decade = decade, .songs = std::move(group)});
    for (auto& [genre, group] : genres) {
        std::map<int, std::vector<MixSong>> parts;
        for (const MixSong& song : group)
            if (const int decade = decadeOf(song.year)) parts[decade].push_back(song);
        for (auto& [decade, part] : parts)
            offer({.kind = Kind::GenreOfDecade, .genre = genre, .decade = decade, .songs = std::move(part)});
        offer({.kind = Kind::Genre, .genre = genre, .songs = std::move(group)});
    }
}

void MixPlan::gatherArtists() {
    for (const std::int64_t artist : _source.leadingArtists(leadingArtists)) {
        if (_isStopping()) return;
        auto songs = _source.songsOfArtist(artist, mostSongsOfArtist);
        for (const std::int64_t companion : _source.companionsOf(artist))
            std::ranges::copy(_source.songsOfArtist(companion, mostSongsOfCompanion),
                              std::back_inserter(songs));
        std::ranges::sort(songs, isEarlier);
        offer({.kind = Kind::Artist, .artist = artist, .songs = std::move(songs)});
    }
}

void MixPlan::offer(Group group) {
    if (group.songs.size() < fewestMixSongs) return;
    auto& groups = _groups[group.kind];
    // The artists come in their order; of the others, the largest come first.
    const auto place = group.kind == Kind::Artist
                           ? groups.end()
                           : std::ranges::upper_bound(groups, group.songs.size(), std::ranges::greater{},
                                                      [](const Group& other) { return other.songs.size(); });
    groups.insert(place, std::move(group));
    if (groups.size() > mostGroups) groups.pop_back();
}

void MixPlan::choose(Kind kind, std::size_t quota) {
    for (const Group& group : _groups[kind]) {
        if (_mixes.size() >= mostMixes || quota == 0 || _isStopping()) return;
        const auto before = _mixes.size();
        if (!isLikeAnother(group)) take(group);
        quota -= _mixes.size() - before;
    }
}

bool MixPlan::isLikeAnother(const Group& group) const {
    return std::ranges::any_of(_chosen, [&](const Group& other) {
        std::vector<MixSong> common;
        std::ranges::set_intersection(group.songs, other.songs, std::back_inserter(common), isEarlier);
        // More than half of all that the two have.
        return common.size() * 3 > group.songs.size() + other.songs.size();
    });
}

void MixPlan::describe(const Group& group, Mix& mix) const {
    const auto about = _source.nameOf(group.artist != 0 ? group.artist : group.genre);
    const std::string decade = std::to_string(group.decade);
    const std::string persistentID = std::to_string(about.persistentID);
    switch (group.kind) {
        case Kind::Genre:
            mix.subject = "genre " + persistentID;
            mix.name = about.text;
            break;
        case Kind::GenreOfDecade:
            mix.subject = "genre " + persistentID + " of " + decade;
            mix.name = zornic::formatted(_texts.genreOfDecade, {about.text, decade});
            break;
        case Kind::Artist:
            mix.subject = "artist " + persistentID;
            mix.name = zornic::formatted(_texts.artist, {about.text});
            break;
        case Kind::Decade:
            mix.subject = "decade " + decade;
            mix.name = zornic::formatted(_texts.decade, {decade});
            break;
    }
}

void MixPlan::take(const Group& group) {
    Mix mix;
    describe(group, mix);
    const auto songs = MixOrder::mixed(group.songs, MixOrder::seedOf(mix.name));
    mix.artists = mostPresent(songs, group.songs, group.artist);
    if (songs.size() < fewestMixSongs || mix.artists.size() < fewestMixArtists) return;
    if (!_names.insert(SortKey::folded(mix.name)).second) return;
    for (const MixSong& song : songs) mix.songs.push_back(song.id);
    _chosen.push_back(group);
    _mixes.push_back(std::move(mix));
}

}  // namespace helmo

#include "Host/Library/Mixes/MixOrder.h"

#include <algorithm>
#include <map>
#include <random>
#include <utility>

namespace helmo::MixOrder {

namespace {

/** Places that one artist may take while others wait. */
constexpr std::size_t mostOfArtist = 20;

using Counts = std::map<std::int64_t, std::size_t>;

Counts countsOfArtists(const std::vector<MixSong>& songs) {
    Counts counts;
    for (const MixSong& song : songs) ++counts[song.artist];
    return counts;
}

/** Swaps by its own rule: the standard library's may be another elsewhere. */
void shuffle(std::vector<MixSong>& songs, std::uint64_t seed) {
    std::mt19937_64 generator(seed);
    for (std::size_t left = songs.size(); left > 1; --left)
        std::swap(songs[left - 1], songs[generator() % left]);
}

/** The first songs, without those of artists who had their share. */
std::vector<MixSong> shared(const std::vector<MixSong>& songs) {
    std::vector<MixSong> taken;
    Counts counts;
    for (const MixSong& song : songs)
        if (taken.size() < mostMixSongs && ++counts[song.artist] <= mostOfArtist) taken.push_back(song);
    return taken;
}

/** Leaves out the last songs of an artist who has more than all others and one. */
void halve(std::vector<MixSong>& songs) {
    const Counts counts = countsOfArtists(songs);
    if (counts.empty()) return;
    const auto [artist, count] = *std::ranges::max_element(counts, {}, &Counts::value_type::second);
    const std::size_t others = songs.size() - count;
    for (std::size_t at = songs.size(), left = count; left > others + 1; --left) {
        do --at;
        while (songs[at].artist != artist);
        songs.erase(songs.begin() + static_cast<std::ptrdiff_t>(at));
    }
}

}  // namespace

std::vector<MixSong> spread(const std::vector<MixSong>& songs) {
    std::vector<MixSong> waiting = songs, ordered;
    Counts counts = countsOfArtists(songs);
    while (!waiting.empty()) {
        const auto last = ordered.empty() ? std::int64_t{-1} : ordered.back().artist;
        // Whoever has more than half of what is left comes now, or has to follow himself in the end.
        const auto isUrgent = [&](const MixSong& song) {
            return song.artist != last && 2 * counts[song.artist] > waiting.size();
        };
        auto next = std::ranges::find_if(waiting, isUrgent);
        if (next == waiting.end())
            next = std::ranges::find_if(waiting, [&](const MixSong& song) { return song.artist != last; });
        if (next == waiting.end()) next = waiting.begin();
        --counts[next->artist];
        ordered.push_back(*next);
        waiting.erase(next);
    }
    return ordered;
}

std::vector<MixSong> mixed(std::vector<MixSong> songs, std::uint64_t seed) {
    shuffle(songs, seed);
    auto taken = shared(songs);
    halve(taken);
    return spread(taken);
}

std::uint64_t seedOf(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char byte : text) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
    return hash;
}

}  // namespace helmo::MixOrder

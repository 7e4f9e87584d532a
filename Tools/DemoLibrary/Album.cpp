#include <algorithm>

#include "Tools/DemoLibrary/Catalogue.h"

namespace helmo::demo {

int Album::discCount() const {
    int count = 1;
    for (const Track& track : tracks) count = std::max(count, track.disc);
    return count;
}

int Album::numberOfTrack(std::size_t index) const {
    const int disc = tracks[index].disc;
    const auto end = tracks.begin() + static_cast<std::ptrdiff_t>(index) + 1;
    return static_cast<int>(
        std::count_if(tracks.begin(), end, [disc](const Track& track) { return track.disc == disc; }));
}

int Album::trackCountOfDisc(int disc) const {
    return static_cast<int>(
        std::ranges::count_if(tracks, [disc](const Track& track) { return track.disc == disc; }));
}

const std::string& Album::artistOfTrack(std::size_t index) const {
    return tracks[index].artist.empty() ? artist : tracks[index].artist;
}

}  // namespace helmo::demo

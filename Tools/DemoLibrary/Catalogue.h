#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace helmo::demo {

enum class Format { Flac, Vorbis, Opus, Mp3, M4a, Wav };

/** Who plays: the instruments, the tempo and the patterns of a track. */
enum class Style { Folk, Chanson, Electronic, Downtempo, Jazz, Pop, Oud, Solo, Ambient, Rock, Story };

/** What is played: the scale and the chord progressions of a track. */
enum class Mood { Bright, Warm, Wistful, Nocturnal, Spiced };

enum class Motif {
    Harbour,
    Reeds,
    Swallows,
    Rails,
    Bay,
    Tram,
    Rain,
    Moon,
    Star,
    Keys,
    Rings,
    Road,
    Firs,
    Orchard
};

enum class CoverPlace { None, Embedded, CoverJpeg, FolderPng };

struct Cover {
    CoverPlace place = CoverPlace::None;
    Motif motif = Motif::Harbour;
    /** 0xRRGGBB: ground at the top, ground at the bottom, main shape, accent. */
    std::array<std::uint32_t, 4> colors{};
};

struct Track {
    std::string title;
    Mood mood;
    int seconds;
    /** Empty where it is the album's. */
    std::string artist{};
    std::string composer{};
    int disc = 1;
    bool isExplicit = false;
};

struct Album {
    std::string title;
    std::string artist;
    std::string sortArtist{};
    std::string genre;
    int year;
    Style style;
    Format format;
    Cover cover{};
    bool isCompilation = false;
    bool isAudiobook = false;
    std::vector<Track> tracks;

    int discCount() const;
    /** Number of a track on its disc, from 1. */
    int numberOfTrack(std::size_t index) const;
    int trackCountOfDisc(int disc) const;
    /** Performer of a track: its own, or the album's. */
    const std::string& artistOfTrack(std::size_t index) const;
};

/** Raised whenever the library would come out differently, so that older ones are made anew. */
inline constexpr int catalogueVersion = 1;

/** Every album of the demo library; artists, titles and music are invented. */
const std::vector<Album>& catalogue();

}  // namespace helmo::demo

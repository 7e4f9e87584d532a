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

enum class Kind { Music, Audiobook, Podcast, Lecture };

struct Chapter {
    std::string title;
    /** Where it begins in its track; it ends where the next one begins. */
    int second;
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
    /** Of the form 2024-03-05; empty where the album's year is all that is known. */
    std::string date{};
    /** Written into MP3 files. */
    std::vector<Chapter> chapters{};
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
    Kind kind = Kind::Music;
    std::vector<Track> tracks;

    int discCount() const;
    /** Number of a track on its disc, from 1. */
    int numberOfTrack(std::size_t index) const;
    int trackCountOfDisc(int disc) const;
    /** Performer of a track: its own, or the album's. */
    const std::string& artistOfTrack(std::size_t index) const;
};

/** Raised whenever the library would come out differently, so that older ones are made anew. */
inline constexpr int catalogueVersion = 2;

/** Every album of the demo library; artists, titles and music are invented. */
const std::vector<Album>& catalogue();
/** Those of them that are music, and those that are spoken. */
std::vector<Album> musicAlbums();
std::vector<Album> spokenAlbums();

}  // namespace helmo::demo

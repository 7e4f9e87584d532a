#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Foundation/Value.h"
#include "Platform/Media/MediaProperty.h"

namespace helmo {

/** A mark inside a file: where a chapter begins, how long it is and what it is called. */
struct TrackChapter {
    std::chrono::milliseconds start{0}, duration{0};
    std::string title;
    friend bool operator==(const TrackChapter&, const TrackChapter&) = default;
};
/** What lies behind so many chapters is left out. */
inline constexpr std::size_t maximumChapters = 2000;

/** What a music file says about itself. Texts are valid UTF-8 without control characters and of bounded
   length; empty or 0 where the file says nothing. */
struct TrackTags {
    std::string title, sortTitle;
    std::string artist, sortArtist;
    std::string albumTitle, sortAlbumTitle;
    std::string albumArtist, sortAlbumArtist;
    std::string composer, sortComposer;
    std::string genre;
    /** As the file names it: "deu", "ger", "de" or "German". */
    std::string language;
    /** As a reader fills it: what the tags say in so many words, or 0; a genre is none of them. What is
       stored is decided by `MediaKind`. */
    std::int64_t mediaType = zornic::MediaType::Music;
    /** Whether pictures move to the sound. */
    bool hasVideo = false;
    bool isExplicit = false;
    bool isCompilation = false;
    int trackNumber = 0, trackCount = 0;
    int discNumber = 0, discCount = 0;
    /** Seconds. */
    double duration = 0;
    std::optional<zornic::Date> releaseDate;
    int year = 0;
    /** Names the embedded picture by its bytes, so that equal covers are equal; 0 without one. */
    std::int64_t picture = 0;
    /** By their start, none reaching into the next; `maximumChapters` at most. */
    std::vector<TrackChapter> chapters;
};

/** What came of reading one file. */
struct TagReading {
    TrackTags tags;
    /** Why the file could not be read, or not wholly; empty when all went well. */
    std::string problem;
    /** Whether the file can be a track: false for one that holds no music or stopped its reader. */
    bool isTrack = true;
};

/** Readings of many files, handed out in the order in which they were asked for and made ahead meanwhile.
   One thread. */
class TagStream {
public:
    virtual ~TagStream() = default;
    /** Asks for a file; never waits for a reading. */
    virtual void ask(const std::filesystem::path& file) = 0;
    /** The next reading; none when it isn't finished (`wait` false) or nothing was asked for. */
    virtual std::optional<TagReading> take(bool wait) = 0;
    /** Files asked for and not handed out. */
    virtual std::size_t pending() const = 0;
};

/** Reads one music file. Never throws, whatever the file holds. Any thread. */
class TagReader {
public:
    virtual ~TagReader() = default;
    virtual TagReading read(const std::filesystem::path& file) = 0;
    /** A stream of its own, which the reader outlives; the default reads one by one as readings are taken. */
    virtual std::unique_ptr<TagStream> stream();
};

}  // namespace helmo

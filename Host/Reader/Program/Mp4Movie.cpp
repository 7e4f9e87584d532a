#include "Host/Reader/Program/Mp4Movie.h"

#include <algorithm>
#include <optional>

#include "Host/Reader/Program/ByteSource.h"
#include "Platform/Foundation/TextTools.h"

namespace helmo {

namespace {

using std::chrono::milliseconds;

/** A file of boxes in boxes is given up after so many. */
constexpr int maximumBoxes = 100'000;
constexpr std::size_t maximumTracks = 64;
/** One more, so that it is seen that there are more. */
constexpr std::size_t wantedChapters = maximumChapters + 1;
constexpr std::size_t longestTitle = 4096;

struct Box {
    std::string name;
    std::uint64_t begin = 0, end = 0;
};

/** A track as far as chapters have to do with it. */
struct Track {
    Box media, samples;
    std::uint64_t id = 0;
    std::string handler, codec;
    /** IDs of the tracks that hold its chapters. */
    std::vector<std::uint64_t> chapters;
};

std::string textOfSample(const std::string& bytes) {
    const bool isBig = bytes.starts_with("\xfe\xff"), isLittle = bytes.starts_with("\xff\xfe");
    if (!isBig && !isLittle) return bytes;
    std::u32string text;
    for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
        const auto unit = static_cast<char32_t>(ByteSource::numberIn(bytes, at, 2));
        const char32_t value = isBig ? unit : (unit & 0xff) << 8 | unit >> 8;
        const bool isPair = value >= 0xdc00 && value < 0xe000 && !text.empty() && text.back() >= 0xd800 &&
                            text.back() < 0xdc00;
        if (isPair)
            text.back() = 0x10000 + ((text.back() - 0xd800) << 10) + (value - 0xdc00);
        else
            text += value;
    }
    return zornic::encodedUtf8(text);
}

class Parser {
public:
    explicit Parser(std::istream& file) : _source(file) {}

    Mp4Movie movie() {
        Mp4Movie movie;
        const auto root = child({"", 0, _source.size()}, "moov");
        if (!root) return movie;
        const auto tracks = tracksOf(*root);
        for (const Track& track : tracks)
            if (movie.chapters.empty()) movie.chapters = chaptersOfTracks(tracks, track);
        movie.hasVideo = std::ranges::any_of(tracks, [&](const Track& track) {
            const bool isStill = track.codec == "jpeg" || track.codec == "png ";
            const bool isOfChapters = std::ranges::any_of(tracks, [&](const Track& other) {
                return std::ranges::find(other.chapters, track.id) != other.chapters.end();
            });
            return track.handler == "vide" && !isStill && !isOfChapters;
        });
        if (movie.chapters.empty()) movie.chapters = chaptersOfList(*root);
        return movie;
    }

private:
    /** Calls `look` for the boxes in `box` until it returns false. */
    template <class Look>
    void forEach(const Box& box, Look&& look) {
        constexpr std::uint64_t head = 8, longHead = 16;
        for (std::uint64_t at = box.begin; at < box.end && box.end - at >= head && _boxesLeft-- > 0;) {
            const std::string bytes = _source.bytes(at, longHead);
            if (bytes.size() < head) return;
            std::uint64_t size = ByteSource::numberIn(bytes, 0, 4), begin = head;
            if (size == 1) {
                size = ByteSource::numberIn(bytes, 8, 8);
                begin = longHead;
            }
            if (size == 0) size = box.end - at;  // up to the end
            if (size < begin || size > box.end - at) return;
            if (!look(Box{bytes.substr(4, 4), at + begin, at + size})) return;
            at += size;
        }
    }
    std::optional<Box> child(const Box& box, const char* name) {
        std::optional<Box> found;
        forEach(box, [&](const Box& each) {
            if (each.name == name) found = each;
            return !found;
        });
        return found;
    }
    Box childOrNothing(const Box& box, const char* name) { return child(box, name).value_or(Box()); }
    /** The beginning of a box. */
    std::string contentOf(const Box& box, std::size_t limit) {
        return _source.bytes(box.begin,
                             static_cast<std::size_t>(std::min<std::uint64_t>(limit, box.end - box.begin)));
    }

    std::vector<Track> tracksOf(const Box& movie) {
        std::vector<Track> tracks;
        forEach(movie, [&](const Box& box) {
            if (box.name == "trak") tracks.push_back(trackOf(box));
            return tracks.size() < maximumTracks;
        });
        return tracks;
    }
    Track trackOf(const Box& box) {
        Track track;
        const Box head = childOrNothing(box, "tkhd");
        track.id = _source.number(head.begin + (isVersion1(head) ? 20 : 12), 4);
        track.media = childOrNothing(box, "mdia");
        track.handler = _source.bytes(childOrNothing(track.media, "hdlr").begin + 8, 4);
        track.samples = childOrNothing(childOrNothing(track.media, "minf"), "stbl");
        track.codec = _source.bytes(childOrNothing(track.samples, "stsd").begin + 12, 4);
        const std::string references =
            contentOf(childOrNothing(childOrNothing(box, "tref"), "chap"), maximumTracks * 4);
        for (std::size_t at = 0; at + 4 <= references.size(); at += 4)
            track.chapters.push_back(ByteSource::numberIn(references, at, 4));
        return track;
    }
    bool isVersion1(const Box& box) { return _source.number(box.begin, 1) == 1; }

    /** The chapters of `track`, which lie in a track of texts. */
    std::vector<FoundChapter> chaptersOfTracks(const std::vector<Track>& tracks, const Track& track) {
        for (const Track& other : tracks) {
            const bool isText = other.handler == "text" || other.handler == "sbtl";
            if (isText && std::ranges::find(track.chapters, other.id) != track.chapters.end())
                return chaptersOfTexts(other);
        }
        return {};
    }
    /** One for each sample: they follow each other, each as long as it lasts. */
    std::vector<FoundChapter> chaptersOfTexts(const Track& track) {
        const Box head = childOrNothing(track.media, "mdhd");
        const auto timescale = _source.number(head.begin + (isVersion1(head) ? 20 : 12), 4);
        const auto durations = contentOf(childOrNothing(track.samples, "stts"), 8 + wantedChapters * 8);
        std::vector<FoundChapter> chapters;
        if (timescale == 0) return chapters;
        const auto places = placesOfSamples(track);
        std::uint64_t time = 0;
        std::size_t entry = 8;
        auto left = ByteSource::numberIn(durations, entry, 4);
        for (const auto place : places) {
            for (; left == 0 && entry + 8 < durations.size();
                 left = ByteSource::numberIn(durations, entry, 4))
                entry += 8;
            if (left > 0) --left;
            const auto begin = time;
            time += ByteSource::numberIn(durations, entry + 4, 4);
            const auto size = static_cast<std::size_t>(_source.number(place, 2));
            chapters.push_back({milliseconds(begin * 1000 / timescale), milliseconds(time * 1000 / timescale),
                                textOfSample(_source.bytes(place + 2, std::min(size, longestTitle)))});
        }
        return chapters;
    }
    /** Where the first samples of a track lie: in chunks, one behind the other. */
    std::vector<std::uint64_t> placesOfSamples(const Track& track) {
        constexpr std::size_t many = wantedChapters;
        const auto sizes = contentOf(childOrNothing(track.samples, "stsz"), 12 + many * 4);
        const auto groups = contentOf(childOrNothing(track.samples, "stsc"), 8 + many * 12);
        const auto shortPlaces = child(track.samples, "stco");
        const std::size_t placeBytes = shortPlaces ? 4 : 8;
        const auto chunks = contentOf(shortPlaces ? *shortPlaces : childOrNothing(track.samples, "co64"),
                                      8 + many * placeBytes);
        const auto equalSize = ByteSource::numberIn(sizes, 4, 4);
        const auto count = std::min<std::uint64_t>(ByteSource::numberIn(sizes, 8, 4), many);
        std::vector<std::uint64_t> places;
        std::size_t group = 8;
        for (std::size_t chunk = 0; 8 + (chunk + 1) * placeBytes <= chunks.size(); ++chunk) {
            // A group's number of samples holds from its first chunk, counted from 1, to the next group's.
            while (group + 24 <= groups.size() && ByteSource::numberIn(groups, group + 12, 4) <= chunk + 1)
                group += 12;
            auto place = ByteSource::numberIn(chunks, 8 + chunk * placeBytes, placeBytes);
            const auto samples = ByteSource::numberIn(groups, group + 4, 4);
            for (std::uint64_t sample = 0; sample < samples && places.size() < count; ++sample) {
                const std::size_t at = 12 + places.size() * 4;
                places.push_back(place);
                place += equalSize != 0 ? equalSize : ByteSource::numberIn(sizes, at, 4);
            }
        }
        return places;
    }

    /** A version, flags, in later versions four bytes more, a count; for each a time in tenths of
       microseconds and a text with its length. */
    std::vector<FoundChapter> chaptersOfList(const Box& movie) {
        const Box list = childOrNothing(childOrNothing(movie, "udta"), "chpl");
        constexpr std::uint64_t unitsPerMillisecond = 10'000, farthest = 1ull << 62;
        const std::string bytes = contentOf(list, 256 * (9 + 255) + 16);
        std::size_t at = ByteSource::numberIn(bytes, 0, 1) == 0 ? 4 : 8;
        auto count = ByteSource::numberIn(bytes, at++, 1);
        std::vector<FoundChapter> chapters;
        for (; count > 0 && at + 9 <= bytes.size(); --count) {
            const auto start = std::min(ByteSource::numberIn(bytes, at, 8), farthest);
            const auto size = static_cast<std::size_t>(ByteSource::numberIn(bytes, at + 8, 1));
            chapters.push_back(
                {milliseconds(start / unitsPerMillisecond), milliseconds(-1), bytes.substr(at + 9, size)});
            at += 9 + size;
        }
        return chapters;
    }

    ByteSource _source;
    int _boxesLeft = maximumBoxes;
};

}  // namespace

Mp4Movie Mp4Movie::read(std::istream& file) { return Parser(file).movie(); }

}  // namespace helmo

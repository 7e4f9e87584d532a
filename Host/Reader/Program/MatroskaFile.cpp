#include "Host/Reader/Program/MatroskaFile.h"

#include <bit>
#include <cmath>
#include <string_view>

#include "Host/Reader/Program/ByteSource.h"

namespace helmo {

namespace {

using std::chrono::milliseconds;

/** Numbers of elements, as they stand in the file. */
enum ID : std::uint64_t {
    Header = 0x1A45DFA3,
    Segment = 0x18538067,
    Info = 0x1549A966,
    TimestampScale = 0x2AD7B1,
    Duration = 0x4489,
    Title = 0x7BA9,
    Tracks = 0x1654AE6B,
    TrackEntry = 0xAE,
    TrackType = 0x83,
    Chapters = 0x1043A770,
    Edition = 0x45B9,
    Chapter = 0xB6,
    ChapterStart = 0x91,
    ChapterEnd = 0x92,
    ChapterHidden = 0x98,
    ChapterDisplay = 0x80,
    ChapterText = 0x85,
    Tags = 0x1254C367,
    Tag = 0x7373,
    Targets = 0x63C0,
    TargetLevel = 0x68CA,
    SimpleTag = 0x67C8,
    TagName = 0x45A3,
    TagText = 0x4487
};

/** A file of elements in elements is given up after so many. */
constexpr int maximumElements = 100'000;
constexpr std::size_t longestText = 4096;
constexpr double longestDuration = 1e9;  // seconds
constexpr std::int64_t albumLevel = 50;
constexpr std::uint64_t nanosecondsPerMillisecond = 1'000'000;

struct Element {
    std::uint64_t id = 0, begin = 0, end = 0;
};

class Parser {
public:
    explicit Parser(std::istream& file) : _source(file) {}

    MatroskaFile file() {
        _file.isValid = _source.number(0, 4) == Header;
        if (!_file.isValid) return std::move(_file);
        forEach({0, 0, _source.size()}, [&](const Element& element) {
            if (element.id == Segment) readSegment(element);
            return element.id != Segment;
        });
        return std::move(_file);
    }

private:
    /** A number whose first byte says by its leading zeros how long it is; `at` is moved behind it. All ones
       in what is kept stands for "unknown", told by the largest number there is. */
    std::uint64_t variable(std::uint64_t& at, bool keepsMark) {
        const auto first = _source.bytes(at, 1);
        if (first.empty() || first[0] == 0) return 0;
        const auto length =
            static_cast<std::size_t>(std::countl_zero(static_cast<unsigned char>(first[0]))) + 1;
        const auto value = _source.number(at, length);
        at += length;
        if (keepsMark) return value;
        const auto mask = (std::uint64_t{1} << 7 * length) - 1;
        return (value & mask) == mask ? ~std::uint64_t{0} : value & mask;
    }
    /** Calls `look` for the elements in `parent` until it returns false. One without a length ends with its
       parent. */
    template <class Look>
    void forEach(const Element& parent, Look&& look) {
        for (std::uint64_t at = parent.begin; at < parent.end && _elementsLeft-- > 0;) {
            Element element;
            element.id = variable(at, true);
            const auto before = at;
            const auto size = variable(at, false);
            if (element.id == 0 || at == before || at > parent.end) return;
            element.begin = at;
            element.end = size > parent.end - at ? parent.end : at + size;
            if (!look(element)) return;
            at = element.end;
        }
    }
    std::uint64_t number(const Element& element) {
        const auto size = element.end - element.begin;
        return size <= 8 ? _source.number(element.begin, static_cast<std::size_t>(size)) : 0;
    }
    double real(const Element& element) {
        const auto bits = number(element);
        return element.end - element.begin == 4 ? std::bit_cast<float>(static_cast<std::uint32_t>(bits))
                                                : std::bit_cast<double>(bits);
    }
    std::string text(const Element& element) {
        const auto size = std::min<std::uint64_t>(element.end - element.begin, longestText);
        auto text = _source.bytes(element.begin, static_cast<std::size_t>(size));
        return text.substr(0, text.find('\0'));
    }

    void readSegment(const Element& segment) {
        forEach(segment, [&](const Element& element) {
            switch (element.id) {
                case Info:
                    readInfo(element);
                    break;
                case Tracks:
                    readTracks(element);
                    break;
                case Chapters:
                    forEach(element, [&](const Element& edition) {
                        if (edition.id == Edition) readEdition(edition);
                        return _file.chapters.empty();  // others are other ways to watch it
                    });
                    break;
                case Tags:
                    forEach(element, [&](const Element& tag) {
                        if (tag.id == Tag) readTag(tag);
                        return true;
                    });
                    break;
            }
            return true;
        });
        if (const auto title = _file.properties.find("TITLE");
            title == _file.properties.end() && !_title.empty())
            _file.properties["TITLE"] = _title;
    }
    void readInfo(const Element& info) {
        double scale = nanosecondsPerMillisecond, duration = 0;
        forEach(info, [&](const Element& element) {
            if (element.id == TimestampScale) scale = static_cast<double>(number(element));
            if (element.id == Duration) duration = real(element);
            if (element.id == Title) _title = text(element);
            return true;
        });
        const double seconds = duration * scale / 1e9;
        if (seconds > 0 && seconds <= longestDuration) _file.duration = seconds;
    }
    void readTracks(const Element& tracks) {
        forEach(tracks, [&](const Element& entry) {
            if (entry.id != TrackEntry) return true;
            _file.hasTracks = true;
            forEach(entry, [&](const Element& element) {
                constexpr std::uint64_t video = 1, sound = 2;
                if (element.id != TrackType) return true;
                _file.hasVideo = _file.hasVideo || number(element) == video;
                _file.hasSound = _file.hasSound || number(element) == sound;
                return false;
            });
            return true;
        });
    }
    void readEdition(const Element& edition) {
        forEach(edition, [&](const Element& element) {
            if (element.id == Chapter) readChapter(element);
            return _file.chapters.size() <= maximumChapters;
        });
    }
    void readChapter(const Element& element) {
        FoundChapter chapter;
        bool isHidden = false;
        const auto time = [this](const Element& of) {
            return milliseconds(number(of) / nanosecondsPerMillisecond);
        };
        forEach(element, [&](const Element& part) {
            if (part.id == ChapterStart) chapter.start = time(part);
            if (part.id == ChapterEnd) chapter.end = time(part);
            if (part.id == ChapterHidden) isHidden = number(part) != 0;
            if (part.id == ChapterDisplay && chapter.title.empty())
                forEach(part, [&](const Element& display) {
                    if (display.id == ChapterText) chapter.title = text(display);
                    return display.id != ChapterText;
                });
            return true;
        });
        if (!isHidden) _file.chapters.push_back(std::move(chapter));
    }
    /** What is said of the whole file, or of the album that it is of; a level that nobody named is the
       file's, as most programs mean it. */
    void readTag(const Element& tag) {
        bool isOfAlbum = false;
        forEach(tag, [&](const Element& element) {
            if (element.id == Targets)
                forEach(element, [&](const Element& target) {
                    if (target.id == TargetLevel)
                        isOfAlbum = static_cast<std::int64_t>(number(target)) >= albumLevel;
                    return true;
                });
            return true;
        });
        forEach(tag, [&](const Element& element) {
            if (element.id == SimpleTag) readSimpleTag(element, isOfAlbum);
            return true;
        });
    }
    void readSimpleTag(const Element& tag, bool isOfAlbum) {
        std::string name, value;
        forEach(tag, [&](const Element& element) {
            if (element.id == TagName) name = text(element);
            if (element.id == TagText) value = text(element);
            return true;
        });
        name = propertyOf(name, isOfAlbum);
        if (!name.empty() && !value.empty()) _file.properties.try_emplace(std::move(name), std::move(value));
    }
    static std::string propertyOf(std::string name, bool isOfAlbum) {
        for (char& letter : name)
            if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - ('a' - 'A'));
        if (isOfAlbum && name == "TITLE") return "ALBUM";
        if (isOfAlbum && name == "ARTIST") return "ALBUMARTIST";
        if (isOfAlbum && name == "TOTAL_PARTS") return "TRACKTOTAL";
        if (name == "PART_NUMBER") return isOfAlbum ? "" : "TRACKNUMBER";
        if (name == "DATE_RELEASED" || name == "DATE_RECORDED") return "DATE";
        return name;
    }

    ByteSource _source;
    MatroskaFile _file;
    std::string _title;
    int _elementsLeft = maximumElements;
};

}  // namespace

MatroskaFile MatroskaFile::read(std::istream& file) { return Parser(file).file(); }

}  // namespace helmo

#include "Host/Reader/ReaderMessage.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <span>

#include "Host/Library/TagText.h"

namespace helmo {

namespace {

constexpr std::size_t maximumPath = 4096, maximumText = 4096;
constexpr std::int64_t maximumNumber = 99'999, maximumYear = 9'999;
constexpr double maximumDuration = 1e9;  // seconds
constexpr std::size_t lengthBytes = sizeof(std::uint32_t);
constexpr std::size_t maximumRequest = maximumPictureBytes + 64;
/** Of all chapters' titles together; a few thousand files that were read wait to be stored at a time. */
constexpr std::size_t maximumChapterTitles = 48 << 10;
constexpr std::int64_t maximumMilliseconds = static_cast<std::int64_t>(maximumDuration) * 1000;
constexpr std::size_t largestChapter = 2 * 6 + 2;  // two numbers and the length of a title
static_assert(largestTagReply >
              13 * (maximumText + 2) + 128 + maximumChapters * largestChapter + maximumChapterTitles);

enum class ReplyKind : std::uint8_t { Tags = 1, Picture = 2 };

/** A field of the tags and the largest value that it may have. */
struct NumberField {
    int TrackTags::*field;
    std::int64_t limit;
};
constexpr NumberField numberFields[] = {{&TrackTags::trackNumber, maximumNumber},
                                        {&TrackTags::trackCount, maximumNumber},
                                        {&TrackTags::discNumber, maximumNumber},
                                        {&TrackTags::discCount, maximumNumber},
                                        {&TrackTags::year, maximumYear}};
constexpr std::string TrackTags::*textFields[] = {
    &TrackTags::title,       &TrackTags::sortTitle,       &TrackTags::artist,   &TrackTags::sortArtist,
    &TrackTags::albumTitle,  &TrackTags::sortAlbumTitle,  &TrackTags::composer, &TrackTags::sortComposer,
    &TrackTags::albumArtist, &TrackTags::sortAlbumArtist, &TrackTags::genre,    &TrackTags::language};

/** Dates are told in seconds since 1970: of the years 0 to 9999. */
constexpr std::int64_t firstDate = -62'167'219'200, lastDate = 253'402'300'799;

/** Puts a message together behind what a stream already holds. */
class Writer {
public:
    explicit Writer(std::string& stream) : _stream(stream), _begin(stream.size()) {
        _stream.append(lengthBytes, '\0');
    }
    ~Writer() {
        const auto length = static_cast<std::uint32_t>(_stream.size() - _begin - lengthBytes);
        std::memcpy(_stream.data() + _begin, &length, sizeof length);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /** In as few bytes as it needs, seven bits a byte. */
    void number(std::uint64_t value) {
        for (; value >= 0x80; value >>= 7) _stream += static_cast<char>(value | 0x80);
        _stream += static_cast<char>(value);
    }
    void raw(const void* bytes, std::size_t size) { _stream.append(static_cast<const char*>(bytes), size); }
    template <class T>
    void fixed(T value) {
        raw(&value, sizeof value);
    }
    void bytes(std::string_view bytes) {
        number(bytes.size());
        _stream += bytes;
    }
    void text(std::string_view text) {
        bytes(text.size() <= maximumText ? text
                                         : std::string_view(cleanTagText(text.substr(0, maximumText))));
    }

private:
    std::string& _stream;
    const std::size_t _begin;
};

/** Takes a message apart. After the first fault everything it gives is empty. */
class Reader {
public:
    explicit Reader(std::string_view message) : _rest(message) {}

    std::uint64_t number(std::uint64_t limit) {
        std::uint64_t value = 0;
        for (int shift = 0; shift < 63; shift += 7) {
            if (_rest.empty()) break;
            const auto byte = static_cast<unsigned char>(_rest.front());
            _rest.remove_prefix(1);
            value |= static_cast<std::uint64_t>(byte & 0x7f) << shift;
            if (byte < 0x80) return value <= limit ? value : fault();
        }
        return fault();
    }
    bool flag() { return number(1) == 1; }
    std::string_view raw(std::size_t size) {
        if (size > _rest.size()) fault();
        const auto result = _rest.substr(0, _isSound ? size : 0);
        _rest.remove_prefix(result.size());
        return result;
    }
    template <class T>
    T fixed() {
        T value{};
        if (const auto bytes = raw(sizeof value); bytes.size() == sizeof value)
            std::memcpy(&value, bytes.data(), sizeof value);
        return value;
    }
    std::string_view bytes(std::size_t limit) { return raw(number(limit)); }
    /** What may be stored and shown, or nothing. */
    std::string_view text() {
        const auto text = bytes(maximumText);
        const auto isPlain = [](char c) { return c >= 0x20 && c < 0x7f; };
        if (!std::ranges::all_of(text, isPlain) && cleanTagText(text) != text) fault();
        return text;
    }
    std::uint64_t fault() {
        _isSound = false;
        _rest = {};
        return 0;
    }
    void expect(bool isSo) {
        if (!isSo) fault();
    }
    /** Whether all was sound and nothing is left over. */
    bool isDone() const { return _isSound && _rest.empty(); }

private:
    std::string_view _rest;
    bool _isSound = true;
};

void write(Writer& writer, const std::vector<TrackChapter>& chapters) {
    std::size_t titles = 0;
    const auto milliseconds = [](std::chrono::milliseconds time) {
        return static_cast<std::uint64_t>(std::clamp<std::int64_t>(time.count(), 0, maximumMilliseconds));
    };
    const std::size_t count = std::min(chapters.size(), maximumChapters);
    writer.number(count);
    for (const TrackChapter& chapter : std::span(chapters).first(count)) {
        writer.number(milliseconds(chapter.start));
        writer.number(milliseconds(chapter.duration));
        titles += std::min(chapter.title.size(), maximumText);
        writer.text(titles <= maximumChapterTitles ? std::string_view(chapter.title) : "");
    }
}

std::vector<TrackChapter> readChapters(Reader& reader) {
    std::vector<TrackChapter> chapters(reader.number(maximumChapters));
    std::chrono::milliseconds end{0};
    const auto milliseconds = [&] {
        return std::chrono::milliseconds(reader.number(static_cast<std::uint64_t>(maximumMilliseconds)));
    };
    for (TrackChapter& chapter : chapters) {
        chapter.start = milliseconds();
        chapter.duration = milliseconds();
        chapter.title = reader.text();
        reader.expect(chapter.start >= end);
        end = chapter.start + chapter.duration;
    }
    return chapters;
}

void write(Writer& writer, const TagReading& reading) {
    const TrackTags& tags = reading.tags;
    writer.number(reading.isTrack);
    writer.text(reading.problem);
    for (const auto field : textFields) writer.text(tags.*field);
    for (const auto& [field, limit] : numberFields)
        writer.number(static_cast<std::uint64_t>(std::clamp<std::int64_t>(tags.*field, 0, limit)));
    writer.number(static_cast<std::uint64_t>(tags.mediaType));
    writer.number(tags.isExplicit);
    writer.number(tags.isCompilation);
    writer.fixed(tags.duration);
    writer.number(tags.releaseDate.has_value());
    if (tags.releaseDate)
        writer.fixed(static_cast<std::int64_t>(
            std::chrono::floor<std::chrono::seconds>(*tags.releaseDate).time_since_epoch().count()));
    writer.fixed(tags.picture);
    writer.number(tags.hasVideo);
    write(writer, tags.chapters);
}

TagReading readTags(Reader& reader) {
    TagReading reading;
    TrackTags& tags = reading.tags;
    reading.isTrack = reader.flag();
    reading.problem = reader.text();
    for (const auto field : textFields) tags.*field = reader.text();
    for (const auto& [field, limit] : numberFields)
        tags.*field = static_cast<int>(reader.number(static_cast<std::uint64_t>(limit)));
    tags.mediaType = static_cast<std::int64_t>(reader.number(zornic::MediaType::MusicVideo));
    reader.expect(tags.mediaType == 0 || std::has_single_bit(static_cast<std::uint64_t>(tags.mediaType)));
    tags.isExplicit = reader.flag();
    tags.isCompilation = reader.flag();
    tags.duration = reader.fixed<double>();
    reader.expect(tags.duration >= 0 && tags.duration <= maximumDuration);
    if (reader.flag()) {
        const auto seconds = reader.fixed<std::int64_t>();
        const bool isOfAYear = seconds >= firstDate && seconds <= lastDate;
        reader.expect(isOfAYear);
        if (isOfAYear) tags.releaseDate = zornic::Date(std::chrono::seconds(seconds));
    }
    tags.picture = reader.fixed<std::int64_t>();
    reader.expect(tags.picture >= 0);
    tags.hasVideo = reader.flag();
    tags.chapters = readChapters(reader);
    return reading;
}

void write(Writer& writer, const PictureReading& reading) {
    const Picture& picture = reading.picture;
    writer.text(reading.problem);
    writer.number(static_cast<std::uint64_t>(picture.width));
    writer.number(static_cast<std::uint64_t>(picture.height));
    writer.raw(picture.pixels.data(), picture.pixels.size() * sizeof(std::uint32_t));
}

PictureReading readPicture(Reader& reader) {
    PictureReading reading;
    Picture& picture = reading.picture;
    reading.problem = reader.text();
    const auto width = reader.number(maximumPictureSide), height = reader.number(maximumPictureSide);
    reader.expect((width == 0) == (height == 0) && (width == 0) != reading.problem.empty());
    reader.expect(width * height <= static_cast<std::uint64_t>(maximumFittedPixels));
    const auto bytes = reader.raw(width * height * sizeof(std::uint32_t));
    if (!reader.isDone()) return {};
    picture.width = static_cast<int>(width);
    picture.height = static_cast<int>(height);
    picture.pixels.resize(bytes.size() / sizeof(std::uint32_t));
    if (!bytes.empty()) std::memcpy(picture.pixels.data(), bytes.data(), bytes.size());
    return reading;
}

/** The message at the beginning of `stream`, without its length; `Whole` when it is all there. */
MessageState split(std::string_view stream, std::size_t limit, std::string_view& message) {
    std::uint32_t length = 0;
    if (stream.size() < lengthBytes) return MessageState::Incomplete;
    std::memcpy(&length, stream.data(), sizeof length);
    if (length == 0 || length > limit) return MessageState::Rubbish;
    if (stream.size() - lengthBytes < length) return MessageState::Incomplete;
    message = stream.substr(lengthBytes, length);
    return MessageState::Whole;
}

std::uint32_t readNumber(Reader& reader) {
    const auto number = reader.fixed<std::uint32_t>();
    reader.expect(number != 0);
    return number;
}

bool isValidPath(std::string_view path) {
    return !path.empty() && path.size() <= maximumPath && path.find('\0') == std::string_view::npos;
}

}  // namespace

void append(const ReaderRequest& request, std::string& stream) {
    Writer writer(stream);
    writer.fixed(request.number);
    writer.number(static_cast<std::uint64_t>(request.kind));
    const bool isPicture = request.kind != ReaderRequest::Kind::Tags;
    if (isPicture)
        for (const int side : {request.fitting.width, request.fitting.height})
            writer.number(static_cast<std::uint64_t>(std::clamp(side, 0, maximumPictureSide)));
    const bool isBytes = request.kind == ReaderRequest::Kind::PictureOfBytes;
    const bool fits = isBytes ? request.subject.size() <= maximumPictureBytes : isValidPath(request.subject);
    writer.bytes(fits ? std::string_view(request.subject) : isBytes ? "" : "/");
}

MessageState take(std::string_view& stream, ReaderRequest& request) {
    using Kind = ReaderRequest::Kind;
    std::string_view message;
    const auto state = split(stream, maximumRequest, message);
    if (state != MessageState::Whole) return state;
    Reader reader(message);
    request.number = readNumber(reader);
    request.kind = static_cast<Kind>(reader.number(static_cast<std::uint64_t>(Kind::PictureOfBytes)));
    reader.expect(request.kind >= Kind::Tags);
    request.fitting = {};
    if (request.kind != Kind::Tags)
        for (int* const side : {&request.fitting.width, &request.fitting.height})
            *side = static_cast<int>(reader.number(maximumPictureSide));
    request.subject = reader.bytes(maximumPictureBytes);
    if (request.kind != Kind::PictureOfBytes) reader.expect(isValidPath(request.subject));
    if (!reader.isDone()) return MessageState::Rubbish;
    stream.remove_prefix(lengthBytes + message.size());
    return MessageState::Whole;
}

void append(const ReaderReply& reply, std::string& stream) {
    Writer writer(stream);
    writer.fixed(reply.number);
    writer.number(static_cast<std::uint64_t>(
        std::holds_alternative<TagReading>(reply.reading) ? ReplyKind::Tags : ReplyKind::Picture));
    std::visit([&](const auto& reading) { write(writer, reading); }, reply.reading);
}

MessageState take(std::string_view& stream, ReaderReply& reply, std::size_t limit) {
    std::string_view message;
    const auto state = split(stream, limit, message);
    if (state != MessageState::Whole) return state;
    Reader reader(message);
    reply.number = readNumber(reader);
    const auto kind = reader.number(static_cast<std::uint64_t>(ReplyKind::Picture));
    if (kind == static_cast<std::uint64_t>(ReplyKind::Tags))
        reply.reading = readTags(reader);
    else if (kind == static_cast<std::uint64_t>(ReplyKind::Picture))
        reply.reading = readPicture(reader);
    else
        return MessageState::Rubbish;
    if (!reader.isDone()) return MessageState::Rubbish;
    stream.remove_prefix(lengthBytes + message.size());
    return MessageState::Whole;
}

}  // namespace helmo

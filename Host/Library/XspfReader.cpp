#include "Host/Library/XspfReader.h"

#include <algorithm>
#include <array>
#include <expat.h>
#include <memory>
#include <optional>
#include <span>

#include "Host/Library/PlaylistLocation.h"

namespace helmo {

namespace {

using Parser =
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype([](XML_Parser p) { XML_ParserFree(p); })>;

constexpr std::size_t deepest = 32;
constexpr std::size_t blockBytes = 64 * 1024;
/** Of blocks in which no tag, text or comment comes to an end: the parser keeps what is unfinished. */
constexpr int mostQuietBlocks = 4;

class XspfReading {
public:
    XspfReading(const char* encoding, const PlaylistFaultHandler& fault)
        : _parser(XML_ParserCreate(encoding)), _fault(fault) {
        XML_SetUserData(_parser.get(), this);
        XML_SetElementHandler(
            _parser.get(), [](void* self, const char* name, const char**) { at(self).begin(name); },
            [](void* self, const char*) { at(self).end(); });
        XML_SetCharacterDataHandler(_parser.get(), [](void* self, const char* text, int length) {
            at(self).text({text, static_cast<std::size_t>(length)});
        });
        XML_SetDefaultHandler(_parser.get(), [](void* self, const char*, int) { at(self)._quietBlocks = 0; });
        XML_SetStartDoctypeDeclHandler(_parser.get(),
                                       [](void* self, const char*, const char*, const char*, int) {
                                           at(self).stop("it has a document type, the rest is left out");
                                       });
    }

    void read(std::string_view bytes, bool isCut) {
        for (std::size_t start = 0; start < bytes.size() && !_isStopped; start += blockBytes) {
            if (++_quietBlocks > mostQuietBlocks) return stop("a tag is too long, the rest is left out");
            parse(bytes.substr(start, blockBytes), false);
        }
        if (!isCut && !_isStopped) parse({}, true);
    }
    PlaylistText take() { return std::move(_result); }

private:
    static XspfReading& at(void* self) { return *static_cast<XspfReading*>(self); }
    std::uint32_t line() const { return static_cast<std::uint32_t>(XML_GetCurrentLineNumber(_parser.get())); }
    void parse(std::string_view block, bool isLast) {
        const auto status = XML_Parse(_parser.get(), block.data(), static_cast<int>(block.size()), isLast);
        if (status == XML_STATUS_ERROR && !_isStopped)
            stop(std::string("no sound XML, the rest is left out: ") +
                 XML_ErrorString(XML_GetErrorCode(_parser.get())));
    }
    void stop(const std::string& reason) {
        if (_isStopped) return;
        _isStopped = true;
        _fault(line(), reason);
        XML_StopParser(_parser.get(), XML_FALSE);
    }

    /** Whether the element that is open now is the one at this place. */
    bool isIn(std::initializer_list<std::string_view> path) const {
        return _depth == path.size() && std::ranges::equal(path, std::span(_path.data(), _depth));
    }
    bool isInTrack() const { return isIn({"playlist", "trackList", "track"}); }
    bool isInTitle() const { return isIn({"playlist", "title"}); }
    bool isInLocation() const { return isIn({"playlist", "trackList", "track", "location"}); }

    void begin(std::string_view name) {
        _quietBlocks = 0;
        name.remove_prefix(name.rfind(':') + 1);  // npos + 1 is 0
        if (_depth < _path.size()) _path[_depth] = name.substr(0, longestPlaylistLine);
        if (++_depth > deepest) return stop("elements are more than 32 deep, the rest is left out");
        if (isInTrack()) _file.reset();
        _text.clear();
        _begun = line();
    }
    void text(std::string_view part) {
        _quietBlocks = 0;
        // One byte more than allowed shows that it is too long.
        if (isInTitle() || isInLocation())
            _text +=
                part.substr(0, longestPlaylistLine + 1 - std::min(_text.size(), longestPlaylistLine + 1));
    }
    void end() {
        _quietBlocks = 0;
        if (isInTitle()) _result.name = _text;
        if (isInLocation()) endLocation();
        if (isInTrack() && _file) endTrack();
        --_depth;
    }
    void endLocation() {
        const auto first = _text.find_first_not_of(" \t\r\n");
        if (first == std::string::npos || _file) return;
        _text = _text.substr(first, _text.find_last_not_of(" \t\r\n") - first + 1);
        PlaylistText::Location location{std::move(_text), _begun, true};
        _text.clear();
        if (location.text.size() > longestPlaylistLine)
            _fault(_begun, "the location is longer than 4096 bytes");
        else if (!isElsewhere(location))
            _file = std::move(location);
    }
    void endTrack() {
        if (_result.locations.size() >= mostPlaylistEntries)
            return stop("more than 100,000 entries, the rest is left out");
        _result.locations.push_back(std::move(*_file));
        _file.reset();
    }

    const Parser _parser;
    const PlaylistFaultHandler& _fault;
    PlaylistText _result;
    /** The outermost open elements. */
    std::array<std::string, 4> _path;
    std::size_t _depth = 0;
    std::string _text;
    std::uint32_t _begun = 0;
    std::optional<PlaylistText::Location> _file;
    int _quietBlocks = 0;
    bool _isStopped = false;
};

/** By what is there: the one that a file names is often unknown to the parser, or not its own. None for one
   that shows in the first two bytes. */
const char* encodingOf(std::string_view bytes) {
    const bool isUtf16 = bytes.starts_with("\xfe\xff") || bytes.starts_with("\xff\xfe") ||
                         bytes.substr(0, 2).find('\0') != std::string_view::npos;
    return isUtf16 ? nullptr : isUtf8(bytes) ? "UTF-8" : "ISO-8859-1";
}

}  // namespace

PlaylistText parseXspf(std::string_view bytes, bool isCut, const PlaylistFaultHandler& fault) {
    XspfReading reading(encodingOf(bytes), fault);
    reading.read(bytes, isCut);
    return reading.take();
}

}  // namespace helmo

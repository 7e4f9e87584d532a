#include "Host/Library/PlaylistFileReader.h"

#include <algorithm>
#include <fstream>
#include <system_error>

#include "Host/Library/MediaFiles.h"
#include "Host/Library/PlaylistLocation.h"
#include "Host/Library/TagText.h"
#include "Host/Library/XspfReader.h"

namespace helmo {

namespace {

constexpr std::size_t mostBytes = 16 * 1024 * 1024;
constexpr std::size_t mostNested = 8, mostLists = 100;
constexpr std::size_t mostProblems = 20;

bool hasExtension(const std::filesystem::path& file, std::string_view extension) {
    return std::ranges::equal(file.extension().native(), extension, {},
                              [](char c) { return static_cast<char>(c | 0x20); });
}

PlaylistText parse(std::string_view bytes, const std::filesystem::path& file, bool isCut,
                   const PlaylistFaultHandler& fault) {
    if (hasExtension(file, ".xspf")) return parseXspf(bytes, isCut, fault);
    return hasExtension(file, ".pls") ? parsePls(bytes, fault) : parseM3u(bytes, fault);
}

/** A hidden file's dot is no part of its name. */
std::string nameOf(const std::filesystem::path& file) {
    std::string stem = file.stem().string();
    stem.erase(0, stem.find_first_not_of('.'));
    std::string name = cleanTagText(asUtf8(std::move(stem)));
    return name.empty() ? cleanTagText(asUtf8(file.filename().string())) : name;
}

/** Faults of one kind in one file. */
struct Problem {
    std::string file, reason;
    std::uint32_t firstLine = 0;
    std::size_t others = 0;

    std::string text() const {
        const std::string more = others == 0 ? "" : " (and " + std::to_string(others) + " more)";
        return file + ":" + std::to_string(firstLine) + ": " + reason + more;
    }
};

}  // namespace

/** One playlist with those that it names. */
class PlaylistFileReader::Reading {
public:
    explicit Reading(const PlaylistFileReader& reader) : _reader(reader) {}

    PlaylistFile read(const std::filesystem::path& file) {
        _result.name = nameOf(file);
        _result.isRead = list(file);
        if (!_result.isRead) {
            const std::string obstacle = whyUnreachable(file);
            fault(file, 1, obstacle.empty() ? "can't be read" : obstacle);
        }
        for (const Problem& problem : _problems) _result.problems.push_back(problem.text());
        return std::move(_result);
    }

private:
    bool list(const std::filesystem::path& file) {
        // One byte more than allowed shows that there is more.
        auto bytes = _reader._open(file, _bytesLeft + 1);
        const auto* root = _reader.rootOf(file.native());
        if (!bytes || !root) return false;
        _open.push_back(file.native());
        const bool isCut = bytes->size() > _bytesLeft;
        if (isCut) cut(*bytes, file);
        _bytesLeft -= bytes->size();
        const auto text = parse(*bytes, file, isCut, [&](std::uint32_t line, const std::string& reason) {
            fault(file, line, reason);
        });
        bytes.reset();
        if (_open.size() == 1)
            if (auto name = cleanTagText(text.name); !name.empty()) _result.name = std::move(name);
        const PlaylistPlace place{file.parent_path(), *root};
        for (const auto& location : text.locations)
            if (!take(location, place, file)) break;
        _open.pop_back();
        return true;
    }

    void cut(std::string& bytes, const std::filesystem::path& file) {
        // Not within a character.
        bytes.resize(_bytesLeft);
        while (!bytes.empty() && static_cast<unsigned char>(bytes.back()) >= 0x80) bytes.pop_back();
        fault(file, static_cast<std::uint32_t>(std::ranges::count(bytes, '\n') + 1),
              "larger than 16 MB, the rest is left out");
    }

    /** Whether to go on. */
    bool take(const PlaylistText::Location& location, const PlaylistPlace& place,
              const std::filesystem::path& file) {
        if (isElsewhere(location)) return true;
        auto path = pathOfLocation(location, place);
        const char* reason = nullptr;
        if (!path)
            reason = "the entry is no path";
        else if (!_reader.rootOf(*path))
            reason = "the entry leads out of the music folders";
        else if (isPlaylistFile(*path))
            reason = takeList(*path);
        else if (!isMusicFile(*path))
            reason = "the entry is no music file";
        else if (_isFull = _result.entries.size() >= mostPlaylistEntries; _isFull)
            reason = "more than 100,000 entries, the rest is left out";
        else
            _result.entries.push_back(std::move(*path));
        if (reason) fault(file, location.line, reason);
        return !_isFull;
    }

    /** Why not; null when it was taken, or isn't there. */
    const char* takeList(const std::string& path) {
        _result.namesOthers = true;
        if (path == _open.back()) return "the playlist names itself";
        if (std::ranges::find(_open, path) != _open.end()) return "playlists name each other in a circle";
        if (_open.size() >= mostNested) return "playlists name others more than 8 deep";
        if (_listsLeft == 0 || _bytesLeft == 0) return "too many playlists are named, the rest is left out";
        --_listsLeft;
        list(path);
        return nullptr;
    }

    void fault(const std::filesystem::path& file, std::uint32_t line, const std::string& reason) {
        const auto known = std::ranges::find_if(_problems, [&](const Problem& problem) {
            return problem.reason == reason && problem.file == file.native();
        });
        if (known != _problems.end())
            ++known->others;
        else if (_problems.size() < mostProblems)
            _problems.push_back({file.native(), reason, line, 0});
    }

    const PlaylistFileReader& _reader;
    PlaylistFile _result;
    std::vector<Problem> _problems;
    /** The playlist that is being read, and those in which it is named, outermost first. */
    std::vector<std::string> _open;
    std::size_t _bytesLeft = mostBytes, _listsLeft = mostLists;
    bool _isFull = false;
};

PlaylistFile PlaylistFileReader::read(const std::filesystem::path& file) const {
    return Reading(*this).read(file);
}

const std::filesystem::path* PlaylistFileReader::rootOf(std::string_view path) const {
    const std::filesystem::path* innermost = nullptr;
    for (const auto& root : _roots) {
        const std::string& text = root.native();
        const bool isIn =
            path.starts_with(text) && (text.ends_with('/') || path.substr(text.size()).starts_with('/'));
        if (isIn && (!innermost || innermost->native().size() < text.size())) innermost = &root;
    }
    return innermost;
}

std::optional<std::string> PlaylistFileReader::beginningOfFile(const std::filesystem::path& file,
                                                               std::size_t limit) {
    // What a playlist names may be a pipe, at which reading would wait.
    std::error_code error;
    std::ifstream stream;
    if (std::filesystem::is_regular_file(file, error)) stream.open(file, std::ios::binary);
    if (!stream.is_open()) return std::nullopt;
    std::string bytes, block(64 * 1024, '\0');
    while (stream && bytes.size() < limit) {
        stream.read(block.data(), static_cast<std::streamsize>(std::min(block.size(), limit - bytes.size())));
        bytes.append(block, 0, static_cast<std::size_t>(stream.gcount()));
    }
    return stream.bad() ? std::nullopt : std::optional(std::move(bytes));
}

}  // namespace helmo

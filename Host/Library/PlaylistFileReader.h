#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace helmo {

/** What a playlist file lists. */
struct PlaylistFile {
    /** Whether it could be opened; nothing is known of its entries otherwise. */
    bool isRead = false;
    /** As it calls itself, else the file's name without extension. Never empty. */
    std::string name;
    /** Paths of music files in order, absolute and without "..", whether or not they exist. */
    std::vector<std::string> entries;
    /** Whether it names other playlists, so that it changes when they do. */
    bool namesOthers = false;
    /** What was left out and why: one line for each reason, with the first place and how many more there are.
     */
    std::vector<std::string> problems;
};

/** Reads playlists: M3U and M3U8, PLS, XSPF. Relative and absolute paths with either slash, drives, "file:"
   addresses, in UTF-8, UTF-16 or Latin-1. The entries of a playlist that is named in another stand in its
   place. Left out silently are addresses on a network; with a problem, what is out of the music folders by
   its path and what is no music by its name. A playlist with those that it names, at most eight deep, has 16
   MB, 100,000 entries and 100 files at most, 4096 bytes a line. Any thread. */
class PlaylistFileReader {
public:
    /** At most so many bytes of a file; none when it can't be read. */
    using Opener =
        std::function<std::optional<std::string>(const std::filesystem::path& file, std::size_t limit)>;

    /** `roots`: the music folders, absolute, without "..", without a slash at the end. */
    explicit PlaylistFileReader(std::vector<std::filesystem::path> roots)
        : PlaylistFileReader(std::move(roots), beginningOfFile) {}
    PlaylistFileReader(std::vector<std::filesystem::path> roots, Opener open)
        : _roots(std::move(roots)), _open(std::move(open)) {}

    /** `file`: absolute, in one of the music folders. */
    PlaylistFile read(const std::filesystem::path& file) const;
    /** The innermost music folder that a path is in; null when it is in none. */
    const std::filesystem::path* rootOf(std::string_view path) const;

private:
    class Reading;
    static std::optional<std::string> beginningOfFile(const std::filesystem::path& file, std::size_t limit);

    const std::vector<std::filesystem::path> _roots;
    const Opener _open;
};

}  // namespace helmo

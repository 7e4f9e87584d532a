#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace helmo {

/** A file as a folder lists it. */
struct FoundFile {
    std::string name;
    /** Bytes. */
    std::int64_t size = 0;
    /** Nanoseconds since 1970. */
    std::int64_t mtime = 0;
};

/** What lies in one folder, sorted by name, without what is hidden and what is no regular file. Playlists
   whose names begin with a dot are among the others. */
struct FolderContents {
    std::filesystem::path path;
    /** For `FolderWalk::isGone`. */
    std::size_t medium = 0;
    std::vector<FoundFile> music;
    std::vector<std::string> playlists, pictures;
    std::vector<std::string> folders;
    /** Of the folders those that are, or may be, links. */
    std::set<std::string> links;
};

/** Visits a folder and all folders inside, each folder of the disk once, whatever links lead to it. What
   can't be read is logged and passed over; a medium that is taken away meanwhile is logged once, and what
   was still to be visited on it is left out. */
class FolderWalk {
public:
    using Visit = std::function<bool(FolderContents&)>;

    FolderWalk() = default;
    /** `willRead` is called for each folder before it is listed. */
    explicit FolderWalk(std::function<void(const std::filesystem::path&)> willRead)
        : _willRead(std::move(willRead)) {}
    /** Calls `visit` for each folder from `root` down, parents first, until it answers false. */
    void run(const std::filesystem::path& root, const Visit& visit);
    /** The same from a folder somewhere inside a root, which may be gone, or with that folder alone. Links to
       folders are not followed: what they lead to may be reached in another way. Whether there were none. */
    bool runWithin(const std::filesystem::path& folder, bool isTree, const Visit& visit);
    /** Whether a medium that was met is no longer where it was. Logs it the first time. */
    bool isGone(std::size_t medium);

private:
    using Identity = std::pair<std::uint64_t, std::uint64_t>;
    /** A root, or a place inside where another disk begins. */
    struct Medium {
        std::filesystem::path path;
        Identity identity;
        bool isGone = false;
    };
    struct Waiting {
        std::filesystem::path path;
        /** Of the folder that it is in; none for a root. */
        std::size_t medium;
        int depth;
    };
    static constexpr auto none = static_cast<std::size_t>(-1);

    /** How far it goes. */
    struct Reach {
        bool descends = true, followsLinks = true;
    };
    bool walk(const std::filesystem::path& top, Reach reach, const Visit& visit);
    bool read(const Waiting& place, FolderContents& folder);
    bool list(int descriptor, FolderContents& folder);
    void logFailure(const std::filesystem::path& folder, std::size_t medium, int error);

    const std::function<void(const std::filesystem::path&)> _willRead;
    std::set<Identity> _visited;
    std::vector<Medium> _media;
};

}  // namespace helmo

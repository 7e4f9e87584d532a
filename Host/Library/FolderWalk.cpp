#include "Host/Library/FolderWalk.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "Host/Library/MediaFiles.h"
#include "Host/Log.h"

namespace helmo {

namespace {

/** Deeper than any music is filed; a file system that never ends is damaged. */
constexpr int maximumDepth = 64;

using Listing = std::unique_ptr<DIR, decltype([](DIR* listing) { ::closedir(listing); })>;

void logProblem(const std::filesystem::path& path, const std::string& problem) {
    logLine("scan: " + path.string() + ": " + problem);
}

/** A hidden playlist counts, unlike what other systems put beside a file under "._" and its name. */
bool isPassedOver(std::string_view name) {
    return name.starts_with('.') && (name.starts_with("._") || !isPlaylistFile(name));
}

/** Sorts one entry of a folder into `folder`. */
void take(int descriptor, const dirent& entry, FolderContents& folder) {
    const std::string_view name = entry.d_name;
    if (entry.d_type == DT_DIR) {
        folder.folders.emplace_back(name);
        return;
    }
    const bool isMusic = isMusicFile(name), isPicture = isPictureFile(name),
               isPlaylist = isPlaylistFile(name);
    const bool mayBeFolder = entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
    if (isPicture && entry.d_type == DT_REG) folder.pictures.emplace_back(name);
    if (isPlaylist && entry.d_type == DT_REG) folder.playlists.emplace_back(name);
    if (!mayBeFolder && !isMusic) return;
    struct stat status {};
    if (::fstatat(descriptor, entry.d_name, &status, 0) != 0) {
        // Gone since it was listed is no problem worth a line; a link that leads nowhere is.
        const int error = errno;
        if (isMusic && (error != ENOENT || entry.d_type == DT_LNK))
            logProblem(folder.path / name, std::generic_category().message(error));
    } else if (S_ISDIR(status.st_mode)) {
        folder.folders.emplace_back(name);
        folder.links.emplace(name);
    } else if (!S_ISREG(status.st_mode)) {
        if (isMusic) logProblem(folder.path / name, "no file but a pipe, a socket or a device");
    } else if (isMusic) {
        folder.music.push_back(
            {std::string(name), static_cast<std::int64_t>(status.st_size),
             static_cast<std::int64_t>(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec});
    } else if (mayBeFolder) {
        if (isPicture) folder.pictures.emplace_back(name);
        if (isPlaylist) folder.playlists.emplace_back(name);
    }
}

}  // namespace

bool FolderWalk::isGone(std::size_t number) {
    Medium& medium = _media[number];
    if (medium.isGone) return true;
    const auto stamp = FileStamp::of(medium.path);
    if (stamp && Identity(stamp->device, stamp->inode) == medium.identity) return false;
    logProblem(medium.path, "taken away during the scan; its music is there again when it is back");
    return medium.isGone = true;
}

void FolderWalk::logFailure(const std::filesystem::path& folder, std::size_t medium, int error) {
    if (medium == none || !isGone(medium)) logProblem(folder, std::generic_category().message(error));
}

bool FolderWalk::list(int descriptor, FolderContents& folder) {
    const Listing listing(::fdopendir(descriptor));
    if (!listing) {
        ::close(descriptor);
        return false;
    }
    for (errno = 0; const dirent* entry = ::readdir(listing.get()); errno = 0)
        if (!isPassedOver(entry->d_name)) take(::dirfd(listing.get()), *entry, folder);
    if (errno != 0) logFailure(folder.path, folder.medium, errno);
    std::ranges::sort(folder.music, {}, &FoundFile::name);
    for (auto* names : {&folder.playlists, &folder.pictures, &folder.folders}) std::ranges::sort(*names);
    return true;
}

bool FolderWalk::read(const Waiting& place, FolderContents& folder) {
    const int descriptor =
        ::open(place.path.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status {};
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0) {
        logFailure(place.path, place.medium, errno);
        if (descriptor >= 0) ::close(descriptor);
        return false;
    }
    const Identity identity(status.st_dev, status.st_ino);
    if (!_visited.insert(identity).second) {
        ::close(descriptor);
        return false;
    }
    folder.medium = place.medium;
    if (place.medium == none || _media[place.medium].identity.first != identity.first) {
        folder.medium = _media.size();
        _media.push_back({place.path, identity});
    }
    if (_willRead) _willRead(place.path);
    if (list(descriptor, folder)) return true;
    logFailure(place.path, folder.medium, errno);
    return false;
}

void FolderWalk::run(const std::filesystem::path& root, const Visit& visit) { walk(root, {}, visit); }

bool FolderWalk::runWithin(const std::filesystem::path& folder, bool isTree, const Visit& visit) {
    return !FileStamp::of(folder) || walk(folder, {isTree, false}, visit);
}

bool FolderWalk::walk(const std::filesystem::path& top, Reach reach, const Visit& visit) {
    bool isComplete = true;
    std::vector<Waiting> waiting{{top, none, 0}};
    while (!waiting.empty()) {
        const Waiting place = std::move(waiting.back());
        waiting.pop_back();
        if (place.medium != none && _media[place.medium].isGone) continue;
        FolderContents folder;
        folder.path = place.path;
        if (!read(place, folder)) continue;
        // Taken before the visitor may take the contents over.
        auto folders = std::move(folder.folders);
        const auto links = std::move(folder.links);
        const auto medium = folder.medium;
        if (!visit(folder)) return isComplete;
        if (!reach.descends) continue;
        if (!reach.followsLinks && !links.empty()) {
            isComplete = false;
            std::erase_if(folders, [&](const std::string& name) { return links.contains(name); });
        }
        if (place.depth >= maximumDepth && !folders.empty()) {
            logProblem(place.path, "too deep, folders inside are left out");
            continue;
        }
        for (auto name = folders.rbegin(); name != folders.rend(); ++name)
            waiting.push_back({place.path / *name, medium, place.depth + 1});
    }
    return isComplete;
}

}  // namespace helmo

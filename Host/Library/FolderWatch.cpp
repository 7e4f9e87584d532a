#include "Host/Library/FolderWatch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/inotify.h>
#include <sys/stat.h>

#include "Host/Library/MediaFiles.h"
#include "Host/Log.h"

namespace helmo {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t comings = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t goings = IN_DELETE | IN_MOVED_FROM;
constexpr std::uint32_t selfChanges = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t folderEvents =
    comings | goings | selfChanges | IN_CLOSE_WRITE | IN_ATTRIB | IN_EXCL_UNLINK;
/** Files that nobody seems to close; beyond that all are read as they are. */
constexpr std::size_t maximumBeingWritten = 10'000;

bool matters(const std::string& name) {
    return isMusicFile(name) || isPictureFile(name) || isPlaylistFile(name);
}

}  // namespace

FolderWatch::FolderWatch(std::vector<fs::path> roots)
    : _roots(std::move(roots)), _notifications(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!_notifications) noteLimit("max_user_instances");
}

void FolderWatch::noteLimit(const std::string& limit) {
    _isFull = true;
    if (!_limitsLogged.insert(limit).second) return;
    logLine("watch: not all music folders can be watched, the limit fs.inotify." + limit +
            " is reached; changes there show up every few minutes");
}

int FolderWatch::watch(const fs::path& folder, std::uint32_t events) {
    const int watch =
        ::inotify_add_watch(_notifications.number(), folder.c_str(), events | IN_ONLYDIR | IN_MASK_ADD);
    if (watch < 0 && (errno == ENOSPC || errno == ENOMEM)) noteLimit("max_user_watches");
    return watch;
}

void FolderWatch::beginScan(const ScanScope& scope) {
    std::lock_guard lock(_mutex);
    ++_scan;
    if (scope.isWhole()) _isFull = !_notifications;
}

void FolderWatch::add(const fs::path& folder) {
    std::lock_guard lock(_mutex);  // so that who hears of a folder finds it here
    if (_isFull) return;
    if (const int number = watch(folder, folderEvents); number >= 0) _folders[number] = {folder, _scan};
}

ScanScope FolderWatch::endScan(const ScanScope& scope) {
    std::lock_guard lock(_mutex);
    forgetUnseen(scope);
    return _notifications ? awaitRoots() : ScanScope();
}

void FolderWatch::forgetUnseen(const ScanScope& scope) {
    for (auto entry = _folders.begin(); entry != _folders.end();) {
        const auto& [number, folder] = *entry;
        const bool isUnseen = folder.scan != _scan && scope.contains(folder.path);
        if (isUnseen) ::inotify_rm_watch(_notifications.number(), number);
        entry = isUnseen ? _folders.erase(entry) : std::next(entry);
    }
}

ScanScope FolderWatch::awaitRoots() {
    std::set<fs::path> missing(_roots.begin(), _roots.end());
    for (const auto& [number, folder] : _folders) missing.erase(folder.path);
    const auto before = std::exchange(_approaches, {});
    ScanScope changes;
    for (const auto& root : missing) {
        Approach approach = approachTo(root);
        const bool isNew = std::ranges::none_of(before, [&](const Approach& known) {
            return known.root == root && known.watch == approach.watch;
        });
        // It may have come before it was waited for.
        std::error_code error;
        if (isNew && fs::exists(root, error)) changes.addTree(root);
        if (approach.watch >= 0) _approaches.push_back(std::move(approach));
    }
    for (const Approach& old : before) endWatch(old.watch);
    return changes;
}

FolderWatch::Approach FolderWatch::approachTo(const fs::path& root) {
    for (auto below = root; below.has_relative_path(); below = below.parent_path())
        if (const int number = watch(below.parent_path(), comings | selfChanges); number >= 0)
            return {number, below.filename().native(), root};
    return {-1, {}, root};
}

/** Ends a watch that nobody needs any more. */
void FolderWatch::endWatch(int watch) {
    const auto uses = [&](const Approach& approach) { return approach.watch == watch; };
    if (!_folders.contains(watch) && std::ranges::none_of(_approaches, uses))
        ::inotify_rm_watch(_notifications.number(), watch);
}

bool FolderWatch::isBeingWritten(const fs::path& file) const {
    std::lock_guard lock(_changesMutex);
    return _beingWritten.contains(file.native());
}

ScanScope FolderWatch::takeChanges() {
    std::lock_guard lock(_changesMutex);
    return std::exchange(_changes, {});
}

void FolderWatch::addChanges(const ScanScope& changes) {
    std::lock_guard lock(_changesMutex);
    _changes.add(changes);
}

// What has happened

bool FolderWatch::drain() {
    alignas(inotify_event) std::array<char, 65'536> buffer;
    Tidings tidings;
    for (ssize_t length = 0; (length = ::read(descriptor(), buffer.data(), buffer.size())) > 0;)
        for (ssize_t at = 0; at < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            take(*event, tidings);
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    if (!tidings.gone.empty()) addGone(tidings);
    addChanges(tidings.changes);
    return !tidings.changes.isEmpty();
}

void FolderWatch::take(const inotify_event& event, Tidings& tidings) {
    if (event.mask & IN_Q_OVERFLOW) {
        logLine("watch: more changes than fs.inotify.max_queued_events; looking through all music folders");
        tidings.changes.addEverything();
        std::lock_guard lock(_changesMutex);
        return _beingWritten.clear();
    }
    fs::path folder;
    {
        std::lock_guard lock(_mutex);
        takeApproach(event, tidings);
        const auto found = _folders.find(event.wd);
        if (found == _folders.end()) return;
        folder = found->second.path;
        if (event.mask & IN_IGNORED) _folders.erase(found);
    }
    if (event.len == 0)
        takeSelf(event, folder, tidings);
    else
        takeEntry(event, folder, tidings);
}

void FolderWatch::takeApproach(const inotify_event& event, Tidings& tidings) {
    const bool hasGone = (event.mask & (selfChanges | IN_UNMOUNT | IN_IGNORED)) != 0;
    for (Approach& approach : _approaches) {
        if (approach.watch != event.wd) continue;
        if (hasGone || (event.len > 0 && approach.name == event.name)) tidings.changes.addTree(approach.root);
        if (event.mask & IN_IGNORED) approach.watch = -1;
    }
}

void FolderWatch::takeSelf(const inotify_event& event, const fs::path& folder, Tidings& tidings) {
    if (event.mask & (selfChanges | IN_UNMOUNT)) tidings.changes.addTree(folder);
}

void FolderWatch::takeEntry(const inotify_event& event, const fs::path& folder, Tidings& tidings) {
    const fs::path path = folder / event.name;
    if (!(event.mask & IN_ISDIR)) return takeFile(event, folder, tidings);
    if (event.name[0] == '.') return;
    // At once, to hear what comes into it.
    if (event.mask & IN_CREATE) add(path);
    tidings.changes.addTree(path);
}

void FolderWatch::takeFile(const inotify_event& event, const fs::path& folder, Tidings& tidings) {
    const std::string name = event.name;
    const fs::path path = folder / name;
    if (event.mask & comings) return takeArrival((event.mask & IN_CREATE) != 0, path, tidings);
    {
        std::lock_guard lock(_changesMutex);
        if (event.mask & (goings | IN_CLOSE_WRITE))
            _beingWritten.erase(path.native());
        else if (_beingWritten.contains(path.native()))
            return;
    }
    if (matters(name))
        tidings.changes.addFolder(folder);
    else if (event.mask & goings)
        tidings.gone.insert(path.native());
}

void FolderWatch::takeArrival(bool wasMade, const fs::path& path, Tidings& tidings) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) return;
    const bool isLink = S_ISLNK(status.st_mode);
    std::error_code error;
    // Through a link to a folder anything may have come, and may be known by another way.
    if (isLink && path.filename().native().front() != '.' && fs::is_directory(path, error))
        return tidings.changes.addEverything();
    if (!matters(path.filename().native())) return;
    std::lock_guard lock(_changesMutex);
    // A link and a second name of a file have it whole from the beginning.
    if (!wasMade || isLink || status.st_nlink > 1) {
        _beingWritten.erase(path.native());  // whatever had that name has it no more
        return tidings.changes.addFolder(path.parent_path());
    }
    if (_beingWritten.size() >= maximumBeingWritten) _beingWritten.clear();
    _beingWritten.insert(path.native());
}

/** A link to a folder goes as a file does. */
void FolderWatch::addGone(Tidings& tidings) const {
    std::lock_guard lock(_mutex);
    for (const auto& [number, folder] : _folders)
        if (tidings.gone.contains(folder.path.native())) tidings.changes.addTree(folder.path);
}

}  // namespace helmo

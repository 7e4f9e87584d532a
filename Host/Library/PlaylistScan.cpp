#include "Host/Library/PlaylistScan.h"

#include "Host/Log.h"

namespace helmo {

PlaylistScan::PlaylistScan(SqliteMediaLibrary& library, const std::vector<std::filesystem::path>& roots,
                           const std::set<std::filesystem::path>& found, std::function<bool()> isEnding)
    : _library(library),
      _found(found),
      _isEnding(std::move(isEnding)),
      _reader(roots),
      _folders(found, _reader, library.readers()) {
    for (const auto& root : roots) _roots += root.native() + "\n";
}

bool PlaylistScan::run() {
    _library.readers()->read(false, [this](Database& database) {
        _known = PlaylistStore::known(database);
        return _haveRootsChanged = PlaylistStore::roots(database) != _roots;
    });
    compare();
    for (const File& file : _files) {
        if (_isEnding()) return _hasStored;
        store(file);
    }
    hideWhatIsGone();
    rememberRoots();
    return _hasStored;
}

void PlaylistScan::compare() {
    for (const auto& [path, known] : _known)
        if (!known.isFolder && !_found.contains(path)) {
            _missing.emplace(Stamp(known.size, known.mtime), path);
            _hasAnyChanged = _hasAnyChanged || known.isPresent;
        }
    for (const auto& path : _found) {
        const auto stamp = FileStamp::of(path);
        if (!stamp) continue;
        File file{path, *stamp, {}, false, false};
        if (const auto known = _known.find(path.native()); known != _known.end())
            file.known = known->second;
        else
            takeMoved(file);
        file.isAsKnown = file.known.isPresent && !file.known.isFolder && !file.hasMoved &&
                         file.known.size == stamp->size && file.known.mtime == stamp->mtime;
        _hasAnyChanged = _hasAnyChanged || !file.isAsKnown;
        _files.push_back(std::move(file));
    }
}

void PlaylistScan::takeMoved(File& file) {
    const auto [first, last] = _missing.equal_range(Stamp(file.stamp.size, file.stamp.mtime));
    for (auto candidate = first; candidate != last; ++candidate) {
        const std::filesystem::path path = candidate->second;
        const bool isLikely =
            path.filename() == file.path.filename() || path.parent_path() == file.path.parent_path();
        if (!isLikely || FileStamp::of(path)) continue;
        const auto known = _known.find(path.native());
        file.known = known->second;
        file.hasMoved = true;
        _known.erase(known);
        _missing.erase(candidate);
        return;
    }
}

void PlaylistScan::store(const File& file) {
    const auto parent = folderOf(file.path);
    if (_isEnding()) return;
    const bool isToRead = !file.isAsKnown || _haveRootsChanged || (file.known.namesOthers && _hasAnyChanged);
    if (!isToRead) {
        if (parent != file.known.parent)
            write([&](PlaylistStore& playlists) { playlists.setParent(file.known.id, parent); });
        return;
    }
    PlaylistFile list = _reader.read(file.path);
    for (std::string& entry : list.entries)
        if (const auto* root = _reader.rootOf(entry)) entry = _names.pathOnDisk(entry, *root);
    if (!file.isAsKnown || _haveRootsChanged)
        for (const std::string& problem : list.problems) logLine("scan: " + problem);
    if (!list.isRead && file.known.id == 0) return;
    write([&](PlaylistStore& playlists) {
        if (file.hasMoved) playlists.move(file.known.id, file.path);
        if (list.isRead)
            playlists.store(
                {file.path, file.stamp.size, file.stamp.mtime, parent, isHiddenPlaylist(file.path)}, list);
    });
}

std::int64_t PlaylistScan::folderOf(const std::filesystem::path& playlist) {
    std::int64_t row = 0;
    for (const auto& directory : _folders.above(playlist)) {
        const auto [known, isNew] = _folderRows.try_emplace(directory, 0);
        if (isNew) known->second = storedFolder(directory, row);
        row = known->second;
    }
    return row;
}

std::int64_t PlaylistScan::storedFolder(const std::filesystem::path& directory, std::int64_t parent) {
    const auto known = _known.find(directory.native());
    const bool isAsKnown = known != _known.end() && known->second.isFolder && known->second.isPresent &&
                           known->second.parent == parent;
    if (isAsKnown) return known->second.id;
    const auto moved = known == _known.end() ? movedFolder(directory) : std::nullopt;
    std::int64_t row = 0;
    write([&](PlaylistStore& playlists) {
        if (moved) playlists.move(*moved, directory);
        row = playlists.storeFolder(directory, parent);
    });
    return row;
}

std::optional<std::int64_t> PlaylistScan::movedFolder(const std::filesystem::path& directory) {
    for (auto known = _known.begin(); known != _known.end(); ++known) {
        const std::filesystem::path path = known->first;
        if (!known->second.isFolder || path.filename() != directory.filename() || FileStamp::of(path))
            continue;
        const auto row = known->second.id;
        _known.erase(known);
        return row;
    }
    return std::nullopt;
}

void PlaylistScan::hideWhatIsGone() {
    for (const auto& [path, known] : _known) {
        const bool isThere = known.isFolder ? _folderRows.contains(path) : _found.contains(path);
        if (!known.isPresent || isThere) continue;
        if (_isEnding()) return;
        write([id = known.id](PlaylistStore& playlists) { playlists.hide(id); });
    }
}

void PlaylistScan::rememberRoots() {
    if (!_haveRootsChanged || _isEnding()) return;
    _library.write([this](TrackStore& store) { store.playlists().setRoots(_roots); });
}

void PlaylistScan::write(const std::function<void(PlaylistStore&)>& change) {
    if (_library.write([&](TrackStore& store) { change(store.playlists()); })) _hasStored = true;
}

}  // namespace helmo

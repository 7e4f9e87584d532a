#include "Host/Library/LibraryScan.h"

#include "Host/Library/FileNameTags.h"
#include "Host/Library/MediaFiles.h"
#include "Host/Library/PictureFinder.h"
#include "Host/Log.h"

namespace helmo {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t firstBatch = 25, laterBatch = 250;
constexpr auto longestBatch = std::chrono::seconds(1);
constexpr auto announcementInterval = std::chrono::seconds(1);

}  // namespace

void LibraryScan::run() {
    _batchLimit = firstBatch;
    for (const auto& root : _roots)
        _walk.run(root, [&](const FolderContents& folder) { return scanFolder(folder, root); });
    storeBatch();
    if (!_isStopping) hideWhatIsGone();
    if (!_isStopping) scanPlaylists();
    announce(true);
    if (!_isStopping) _library.checkIntegrity();
}

bool LibraryScan::scanFolder(const FolderContents& folder, const std::filesystem::path& root) {
    std::vector<MusicFile> files;
    for (const std::string& name : folder.files) {
        if (isPlaylistFile(name)) _playlists.insert(folder.path / name);
        if (!isMusicFile(name)) continue;
        if (const auto stamp = FileStamp::of(folder.path / name))
            files.push_back({folder.path, name, stamp->size, stamp->mtime});
    }
    if (files.empty()) return !_isStopping;
    _progress.found += files.size();
    for (const MusicFile& file : compare(folder, files)) {
        if (_isStopping) return false;
        readFile(file, root);
    }
    announce(false);
    return !_isStopping;
}

std::vector<MusicFile> LibraryScan::compare(const FolderContents& folder,
                                            const std::vector<MusicFile>& files) {
    const std::string picture = folderPicture(folder.files);
    const auto pictureStamp = picture.empty() ? std::nullopt : FileStamp::of(folder.path / picture);
    std::vector<MusicFile> toRead;
    bool hasChanged = false;
    _library.write([&](TrackStore& store) {
        const auto id = store.folderId(folder.path);
        _folders.insert(id);
        hasChanged =
            store.setFolderPicture(id, pictureStamp ? picture : "", pictureStamp ? pictureStamp->mtime : 0);
        KnownFiles known = store.filesOfFolder(folder.path);
        for (const MusicFile& file : files) {
            const auto node = known.extract(file.name);
            const bool isAsKnown =
                node && node.mapped().size == file.size && node.mapped().mtime == file.mtime;
            if (!isAsKnown) {
                toRead.push_back(file);
            } else if (!node.mapped().isPresent) {
                store.markPresent(node.mapped().id, true);
                hasChanged = true;
            }
        }
        for (const auto& [name, file] : known) {
            if (!file.isPresent) continue;
            store.markPresent(file.id, false);
            hasChanged = true;
        }
    });
    _hasChanged = _hasChanged || hasChanged;
    _isUnannounced = _isUnannounced || hasChanged;
    return toRead;
}

void LibraryScan::readFile(const MusicFile& file, const std::filesystem::path& root) {
    const auto path = file.path();
    TagReading reading = _reader.read(path);
    if (!reading.problem.empty()) {
        logLine("scan: " + path.string() + ": " + reading.problem);
        if (!FileStamp::of(path)) return;  // the medium went away meanwhile
    }
    completeFromFileName(reading.tags, path, root);
    if (_batch.empty()) _batchBegan = Clock::now();
    _batch.push_back({file, std::move(reading.tags)});
    ++_progress.read;
    if (_batch.size() >= _batchLimit || Clock::now() - _batchBegan >= longestBatch) storeBatch();
}

void LibraryScan::storeBatch() {
    if (_batch.empty()) return;
    const bool isStored = _library.write([this](TrackStore& store) {
        for (const Read& read : _batch) store.store(read.file, read.tags);
    });
    _batch.clear();
    _batchLimit = laterBatch;
    _hasChanged = _hasChanged || isStored;
    _isUnannounced = _isUnannounced || isStored;
    announce(false);
}

void LibraryScan::hideWhatIsGone() {
    _library.write([this](TrackStore& store) {
        for (const auto& [id, path] : store.folders())
            if (!_folders.contains(id) && store.hideFolder(id) > 0) _hasChanged = _isUnannounced = true;
    });
}

void LibraryScan::scanPlaylists() {
    KnownFiles known;
    _library.write([&](TrackStore& store) { known = store.playlistFiles(); });
    for (const auto& file : _playlists) {
        if (_isStopping) return;
        storePlaylist(file, known);
    }
    _library.write([&](TrackStore& store) {
        for (const auto& [path, playlist] : known) {
            if (!playlist.isPresent || _playlists.contains(path)) continue;
            store.hidePlaylist(playlist.id);
            _isUnannounced = true;
        }
    });
}

void LibraryScan::storePlaylist(const std::filesystem::path& file, const KnownFiles& known) {
    const auto stamp = FileStamp::of(file);
    if (!stamp) return;
    const auto found = known.find(file.string());
    const bool isAsKnown = found != known.end() && found->second.isPresent &&
                           found->second.size == stamp->size && found->second.mtime == stamp->mtime;
    // An unchanged file may name tracks that are known only now.
    if (isAsKnown && !_hasChanged) return;
    const PlaylistFile list = readPlaylistFile(file);
    if (!isAsKnown)
        for (const std::string& problem : list.problems) logLine("scan: " + problem);
    _library.write([&](TrackStore& store) { store.storePlaylist(file, stamp->size, stamp->mtime, list); });
    _isUnannounced = true;
}

void LibraryScan::announce(bool isEnd) {
    const auto now = Clock::now();
    const bool isDue = isEnd || !_wasAnnounced || now - _announced >= announcementInterval;
    if (_isUnannounced && isDue) {
        _isUnannounced = false;
        _wasAnnounced = true;
        _announced = now;
        _library.noteChange();
    }
    _progress.isFinished = isEnd;
    if (_progressHandler && isDue) _progressHandler(_progress);
}

}  // namespace helmo

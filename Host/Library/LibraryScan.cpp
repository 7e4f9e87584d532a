#include "Host/Library/LibraryScan.h"

#include <algorithm>

#include "Host/Library/AlbumFolder.h"
#include "Host/Library/FileNameTags.h"
#include "Host/Library/MediaFiles.h"
#include "Host/Library/MediaKind.h"
#include "Host/Library/PictureFinder.h"
#include "Host/Library/PlaylistScan.h"
#include "Host/Library/Schema.h"
#include "Host/Library/SortNames.h"
#include "Host/Log.h"

namespace helmo {

namespace {

using Clock = std::chrono::steady_clock;

/** Changes of the first transaction, and how fast they grow: the database rewrites fewer pages in large ones,
   but nobody else can write meanwhile. */
constexpr std::size_t firstBatch = 25, batchGrowth = 4, largestBatch = 1000;
constexpr auto longestBatch = std::chrono::seconds(1);
constexpr auto announcementInterval = std::chrono::seconds(1);
/** Enough to keep readers busy while a batch is stored. */
constexpr std::size_t maximumAsked = 1024;

}  // namespace

ScanScope LibraryScan::run() {
    if (_library.beginStoring()) begin();
    if (_watch) _watch->beginScan(_scope);
    if (_scope.isWhole())
        walkFolders();
    else
        walkPlaces();
    if (_watch && !isEnding()) _again.add(_watch->endScan(_scope));
    if (!isEnding()) takeReadings(0);
    _stream = nullptr;
    storeBatch();
    for (const auto& [album, remark] : _albumRemarks) logLine("scan: " + remark);
    if (!isEnding()) makeMissingIndices();
    if (!isEnding()) hideWhatIsGone();
    if (!isEnding() && !_scope.isWhole()) addOtherPlaylists();
    if (!isEnding()) scanPlaylists();
    if (_hasChanged && !isEnding()) _library.write([](TrackStore& store) { store.forgetCache(); });
    announce(true);
    if (!isEnding()) _library.checkIntegrity();
    return _again;
}

void LibraryScan::walkFolders() {
    for (const auto& root : _roots) {
        if (isEnding()) return;
        _walk.run(root, [&](FolderContents& folder) {
            scanFolder(folder, root);
            return !isEnding();
        });
    }
}

void LibraryScan::walkPlaces() {
    for (const auto& [place, isTree] : _scope.places()) {
        const auto root = std::ranges::find_if(
            _roots, [&, inside = place](const auto& above) { return isWithin(inside, above); });
        if (isEnding() || root == _roots.end()) continue;
        const bool isComplete = _walk.runWithin(place, isTree, [&](FolderContents& folder) {
            scanFolder(folder, *root);
            return !isEnding();
        });
        if (!isComplete) _again.addEverything();
    }
}

void LibraryScan::begin() {
    _batchLimit = firstBatch;
    _hadTracks = _library.readers()->read(true, [](Database& database) {
        return database.integer({"SELECT EXISTS (SELECT 1 FROM track)", {}}) != 0;
    });
    if (_hadTracks)
        makeMissingIndices();
    else
        _library.write([](TrackStore& store) { store.dropLateIndices(); });
}

void LibraryScan::scanFolder(FolderContents& contents, const std::filesystem::path& root) {
    for (const std::string& name : contents.playlists) _playlists.insert(contents.path / name);
    if (contents.music.empty()) return;
    _progress.found += contents.music.size();
    const auto known = KnownFolder::read(*_library.readers(), contents.path);
    if (!known) {
        _hasFailed = true;
        return;
    }
    if (known->id != 0) _folders[known->id] = contents.medium;
    // A music folder is no disc's, whatever it is called.
    const int disc = contents.path == root ? 0 : AlbumFolder::of(contents.path).disc;
    const auto folder =
        std::make_shared<const ScannedFolder>(ScannedFolder{contents.path, root, contents.medium, disc});
    comparePicture(contents, *known, folder);
    FolderComparison comparison(contents.music, *known);
    for (auto& presence : comparison.presences) _batch.presences.push_back(presence);
    for (auto& file : comparison.forgotten) _batch.forgotten.push_back(std::move(file));
    for (auto& unread : comparison.unread) {
        if (isEnding()) return;
        // It is heard of again when it is whole.
        if (_watch && _watch->isBeingWritten(contents.path / unread.file.name)) continue;
        ask(folder, unread);
    }
    storeIfDue();
    announce(false);
}

void LibraryScan::comparePicture(const FolderContents& contents, const KnownFolder& known,
                                 const std::shared_ptr<const ScannedFolder>& folder) {
    std::string picture = folderPicture(contents.pictures);
    const auto stamp = picture.empty() ? std::nullopt : FileStamp::of(contents.path / picture);
    if (!stamp) picture.clear();
    const std::int64_t time = stamp ? stamp->mtime : 0;
    if (picture != known.picture || time != known.pictureStamp)
        _batch.pictures.push_back({folder, std::move(picture), time});
}

void LibraryScan::ask(const std::shared_ptr<const ScannedFolder>& folder, FolderComparison::Unread& unread) {
    if (!_stream) _stream = _reader.stream();
    _stream->ask(folder->path / unread.file.name);
    _asked.push_back({folder, std::move(unread.file), unread.known, unread.wasUnreadable, {}});
    takeReadings(maximumAsked);
}

void LibraryScan::takeReadings(std::size_t pending) {
    while (!_asked.empty() && !isEnding()) {
        auto reading = _stream->take(_asked.size() > pending);
        if (!reading) return;
        ScanBatch::File file = std::move(_asked.front());
        _asked.pop_front();
        file.reading = std::move(*reading);
        takeReading(std::move(file));
    }
}

void LibraryScan::takeReading(ScanBatch::File file) {
    TagReading& reading = file.reading;
    const auto& folder = *file.folder;
    if (!reading.problem.empty() || !reading.isTrack) {
        const auto path = folder.path / file.file.name;
        if (!FileStamp::of(path) || _walk.isGone(folder.medium)) return;
        const std::string obstacle = reading.isTrack ? std::string() : whyUnreachable(path);
        logLine("scan: " + path.string() + ": " + (obstacle.empty() ? reading.problem : obstacle));
        // What is no fault of the file may be over the next time.
        if (!obstacle.empty()) return;
    }
    if (reading.isTrack) {
        const auto path = folder.path / file.file.name;
        if (reading.tags.title.empty()) completeFromFileName(reading.tags, path, folder.root);
        completeDisc(reading.tags, folder.disc);
        MediaKind::decide(reading.tags, path, folder.root);
        completeSortNames(reading.tags);
    }
    ++_progress.read;
    if (_batch.files.empty()) _batchBegan = Clock::now();
    _batch.files.push_back(std::move(file));
    storeIfDue();
}

void LibraryScan::storeIfDue() {
    const bool isOld = !_batch.files.empty() && Clock::now() - _batchBegan >= longestBatch;
    if (_batch.size() >= _batchLimit || isOld) storeBatch();
}

void LibraryScan::storeBatch() {
    if (_batch.size() == 0) return;
    const bool shows = !_batch.files.empty() || !_batch.presences.empty();
    std::vector<std::pair<std::int64_t, std::size_t>> folders;
    AlbumGroups::Remarks remarks;
    const bool isStored = _library.write([&](TrackStore& store) {
        folders = _batch.store(store, _hadTracks);
        remarks = store.albumRemarks();
    });
    // Pictures of the folders ahead of the first tracks let nothing be seen yet.
    if (shows) _batchLimit = std::min(_batchLimit * batchGrowth, largestBatch);
    if (isStored) {
        noteChange();
        _showsTracks = _showsTracks || shows;
        _folders.insert(folders.begin(), folders.end());
        for (auto& [album, remark] : remarks) noteRemark(album, std::move(remark));
    }
    _batch.clear();
    announce(false);
}

/** An album comes in several batches; what its last one says holds. */
void LibraryScan::noteRemark(const AlbumGroups::Key& album, std::string remark) {
    if (remark.empty())
        _albumRemarks.erase(album);
    else
        _albumRemarks[album] = std::move(remark);
}

void LibraryScan::makeMissingIndices() {
    const auto missing = _library.readers()->read(
        std::vector<std::string>(), [](Database& database) { return Schema::missingIndices(database); });
    // One at a time, so that others come to write in between.
    for (const std::string& sql : missing)
        if (!isEnding()) _library.write([&](TrackStore& store) { store.makeIndex(sql); });
}

void LibraryScan::hideWhatIsGone() {
    const auto isGone = [this](std::int64_t folder) {
        const auto found = _folders.find(folder);
        return found == _folders.end() || _walk.isGone(found->second);
    };
    std::vector<std::int64_t> gone;
    _library.readers()->readLong(false, [&](Database& database) {
        auto folders = database.prepare({"SELECT id, path FROM folder", {}});
        while (folders.step())
            if (isGone(folders.integer(0)) && _scope.contains(folders.text(1)) &&
                database.integer({"SELECT EXISTS (SELECT 1 FROM track WHERE folder_id = ? AND present = 1)",
                                  {folders.integer(0)}}))
                gone.push_back(folders.integer(0));
        return true;
    });
    for (const auto folder : gone) {
        if (isEnding()) return;
        _library.write([&](TrackStore& store) { store.hideFolder(folder); });
        noteChange();
    }
}

/** Those elsewhere are there still, and may name what was found. */
void LibraryScan::addOtherPlaylists() {
    const KnownPlaylists known = _library.readers()->read(
        KnownPlaylists(), [](Database& database) { return PlaylistStore::known(database); });
    for (const auto& [path, playlist] : known) {
        const bool isThere = playlist.isPresent && !playlist.isFolder;
        if (isThere && !_scope.contains(std::filesystem::path(path).parent_path())) _playlists.insert(path);
    }
}

void LibraryScan::scanPlaylists() {
    if (PlaylistScan(_library, _roots, _playlists, [this] { return isEnding(); }).run())
        _isUnannounced = true;
}

void LibraryScan::announce(bool isEnd) {
    const auto now = Clock::now();
    const bool isDue = isEnd || (_showsTracks && !_wasAnnounced) || now - _announced >= announcementInterval;
    if (_isUnannounced && isDue) {
        _isUnannounced = false;
        _wasAnnounced = _showsTracks;
        _announced = now;
        _library.noteChange();
    }
    _progress.isFinished = isEnd;
    if (_progressHandler && isDue) _progressHandler(_progress);
}

}  // namespace helmo

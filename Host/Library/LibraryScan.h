#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include "Host/Library/FolderComparison.h"
#include "Host/Library/FolderWalk.h"
#include "Host/Library/FolderWatch.h"
#include "Host/Library/ScanBatch.h"
#include "Host/Library/SqliteMediaLibrary.h"

namespace helmo {

struct ScanProgress {
    /** Music files seen, and of those the new and changed ones that were read. */
    std::uint64_t found = 0;
    std::uint64_t read = 0;
    bool isFinished = false;
};

/** One pass over all folders, or some: stores what is new or changed, hides what is gone, takes over playlist
   files. Files whose size and time are as they were are not opened, and a folder in which nothing changed
   costs no write. Files are read ahead while others are found and stored. Changes are stored in batches that
   grow, the first one small so that the first rows are soon on screen, and announced at once, then every
   second, then at the end. On the scanning thread. */
class LibraryScan {
public:
    /** `scope`: where to look. `watch`: what is to hear of changes from then on, or none. */
    LibraryScan(SqliteMediaLibrary& library, const std::vector<std::filesystem::path>& roots,
                TagReader& reader, const std::atomic<bool>& isStopping,
                const std::function<void(const ScanProgress&)>& progressHandler,
                ScanScope scope = ScanScope::everything(), FolderWatch* watch = nullptr)
        : _library(library),
          _roots(roots),
          _reader(reader),
          _isStopping(isStopping),
          _progressHandler(progressHandler),
          _scope(std::move(scope)),
          _watch(watch) {}
    /** What has to be scanned anew after all. */
    ScanScope run();

private:
    /** Whether it makes no sense to go on. */
    bool isEnding() const { return _isStopping || _hasFailed || !_library.isStoring(); }
    void begin();
    void walkFolders();
    void walkPlaces();
    void scanFolder(FolderContents& contents, const std::filesystem::path& root);
    void comparePicture(const FolderContents& contents, const KnownFolder& known,
                        const std::shared_ptr<const ScannedFolder>& folder);
    void ask(const std::shared_ptr<const ScannedFolder>& folder, FolderComparison::Unread& unread);
    /** Takes finished readings, and waits for more as long as over `pending` are outstanding. */
    void takeReadings(std::size_t pending);
    void takeReading(ScanBatch::File file);
    void storeIfDue();
    void storeBatch();
    void noteRemark(const AlbumGroups::Key& album, std::string remark);
    void makeMissingIndices();
    void hideWhatIsGone();
    void addOtherPlaylists();
    void scanPlaylists();
    void noteChange() { _hasChanged = _isUnannounced = true; }
    void announce(bool isEnd);

    SqliteMediaLibrary& _library;
    const std::vector<std::filesystem::path>& _roots;
    TagReader& _reader;
    const std::atomic<bool>& _isStopping;
    const std::function<void(const ScanProgress&)>& _progressHandler;

    const ScanScope _scope;
    FolderWatch* const _watch;
    ScanScope _again;
    FolderWalk _walk{[this](const std::filesystem::path& folder) {
        if (_watch) _watch->add(folder);
    }};
    /** Rows of the folders that hold music, and the media they are on. */
    std::unordered_map<std::int64_t, std::size_t> _folders;
    std::set<std::filesystem::path> _playlists;
    AlbumGroups::Remarks _albumRemarks;
    std::unique_ptr<TagStream> _stream;
    /** What the stream was asked for, without the readings. */
    std::deque<ScanBatch::File> _asked;
    ScanBatch _batch;
    std::chrono::steady_clock::time_point _batchBegan;
    std::size_t _batchLimit = 0;
    ScanProgress _progress;
    bool _hadTracks = true;
    bool _hasFailed = false;
    bool _hasChanged = false;
    /** Whether anything was stored that lists show. */
    bool _showsTracks = false;
    bool _isUnannounced = false;
    std::chrono::steady_clock::time_point _announced = std::chrono::steady_clock::now();
    bool _wasAnnounced = false;
};

}  // namespace helmo

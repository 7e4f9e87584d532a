#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <set>
#include <unordered_set>
#include <vector>

#include "Host/Library/FolderWalk.h"
#include "Host/Library/SqliteMediaLibrary.h"

namespace helmo {

struct ScanProgress {
    /** Music files seen, and of those the new and changed ones that were read. */
    std::uint64_t found = 0;
    std::uint64_t read = 0;
    bool isFinished = false;
};

/** One pass over all folders: stores what is new or changed, hides what is gone, takes over playlist files.
   Files whose size and time are as they were are not opened. Changes are stored in batches, the first one
   small so that the first rows are soon on screen, and announced at once, then every second, then at the end.
   On the scanning thread. */
class LibraryScan {
public:
    LibraryScan(SqliteMediaLibrary& library, const std::vector<std::filesystem::path>& roots,
                TagReader& reader, const std::atomic<bool>& isStopping,
                const std::function<void(const ScanProgress&)>& progressHandler)
        : _library(library),
          _roots(roots),
          _reader(reader),
          _isStopping(isStopping),
          _progressHandler(progressHandler) {}
    void run();

private:
    struct Read {
        MusicFile file;
        TrackTags tags;
    };
    bool scanFolder(const FolderContents& folder, const std::filesystem::path& root);
    /** Brings what is known of a folder's files up to date; those that have to be read. */
    std::vector<MusicFile> compare(const FolderContents& folder, const std::vector<MusicFile>& files);
    void readFile(const MusicFile& file, const std::filesystem::path& root);
    void storeBatch();
    void hideWhatIsGone();
    void scanPlaylists();
    void storePlaylist(const std::filesystem::path& file, const KnownFiles& known);
    void announce(bool isEnd);

    SqliteMediaLibrary& _library;
    const std::vector<std::filesystem::path>& _roots;
    TagReader& _reader;
    const std::atomic<bool>& _isStopping;
    const std::function<void(const ScanProgress&)>& _progressHandler;

    FolderWalk _walk;
    std::unordered_set<std::int64_t> _folders;
    std::set<std::filesystem::path> _playlists;
    std::vector<Read> _batch;
    std::chrono::steady_clock::time_point _batchBegan;
    std::size_t _batchLimit = 0;
    ScanProgress _progress;
    bool _hasChanged = false;
    bool _isUnannounced = false;
    std::chrono::steady_clock::time_point _announced;
    bool _wasAnnounced = false;
};

}  // namespace helmo

#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <mutex>
#include <vector>

#include "Host/Library/Bookmarks.h"
#include "Host/Library/CoverReader.h"
#include "Host/Library/LibraryStorage.h"
#include "Host/Library/Mixes/MixStore.h"
#include "Host/Library/SortKey.h"
#include "Host/Library/SqliteQueryResult.h"
#include "Host/Library/TrackStore.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/MediaLibrary.h"

namespace helmo {

/** The music library in a SQLite file. A medium that is taken away hides its tracks and forgets nothing of
   them: persistent IDs, play counts and playlists are there again with it, also under another path. */
class SqliteMediaLibrary final : public zornic::MediaLibrary {
public:
    struct Options {
        /** Reads pictures; none: there are no covers. */
        std::shared_ptr<CoverReader> coverReader;
        /** The driver's, as "de" or "pt-BR": lists are in its order. */
        std::string language = "en";
        /** How long a write waits for another program before it is given up for now. */
        std::chrono::milliseconds patience{10'000};
    };

    /** Opens or makes the library in `file`, and its folder. A damaged file is set aside beside it under a
       dated name and a new one made; one that can't be written is read; where there can be none, there is a
       temporary one. Each is a `StorageTrouble`, and why is on stderr. None only without memory. */
    static std::shared_ptr<SqliteMediaLibrary> open(const std::filesystem::path& file, Options options);
    static std::shared_ptr<SqliteMediaLibrary> open(const std::filesystem::path& file) {
        return open(file, Options());
    }
    /** Use `open`. Throws. */
    SqliteMediaLibrary(const std::filesystem::path& file, Options options);
    /** Stores what still waits, if it can be stored now. */
    ~SqliteMediaLibrary() override;
    void didMake() override;

    bool hasSongs() const override;
    std::uint64_t generation() const override { return _generation; }
    std::shared_ptr<zornic::MediaItem> itemWithPersistentID(zornic::PersistentID persistentID,
                                                            bool verifyExistence) const override;
    std::shared_ptr<const zornic::MediaQueryResult> evaluate(
        const zornic::MediaQueryDescription& description) const override;
    zornic::Dictionary valuesOfItem(zornic::PersistentID persistentID,
                                    const std::vector<std::string>& properties) const override;
    zornic::Dictionary valuesOfPlaylist(zornic::PersistentID persistentID,
                                        const std::vector<std::string>& properties) const override;
    std::vector<zornic::MediaChapter> chaptersOfItem(zornic::PersistentID persistentID,
                                                     zornic::MediaChapterType type) const override;
    std::shared_ptr<const zornic::ImageSource> loadArtwork(const std::string& token, zornic::Size fittingSize,
                                                           double scale) const override;
    std::vector<std::string> representativeArtistsOfPlaylist(
        zornic::PersistentID persistentID) const override;
    void removePlaylist(const zornic::MediaPlaylist& playlist) override;
    bool isBrivoEnabled() const override { return _isBrivoEnabled; }
    /** None when Brivo is off, and before one was first filled. */
    std::shared_ptr<zornic::MediaPlaylist> activeBrivoPlaylist() const override;
    void noteItemPlayed(zornic::PersistentID persistentID) override;

    /** Remembers how many seconds of an item were heard; none: it begins anew. Read back at once, stored in
       the background. Any thread. */
    void setBookmark(zornic::PersistentID persistentID, std::optional<double> time);

    /** Told of what keeps the library from being stored: of what there is already, at once, and of what
       follows, on any thread. */
    void setTroubleHandler(StorageTroubles::Handler handler) { _troubles.setHandler(std::move(handler)); }

    /** Runs `change` in one transaction of the writing connection, after other writers; whether it was kept.
       Waits some seconds for other programs. Why it was not kept is logged, once for each cause, and told as
       trouble. Lists show it after `noteChange`. Not on the main thread; short, for others wait. */
    bool write(const std::function<void(TrackStore&)>& change) { return write(change, _patience); }
    /** `write` for mixes. */
    bool writeMixes(const std::function<void(MixStore&)>& change);
    /** What `isBrivoEnabled` answers from now on; off at first. Any thread. */
    void setBrivoEnabled(bool isEnabled) { _isBrivoEnabled = isEnabled; }
    /** For reading past the lists; others after the database was replaced. Any thread. */
    std::shared_ptr<Readers> readers() const;
    /** Begins a run of writes that belong together, a scan. Whether anything can be stored. */
    bool beginStoring();
    /** Whether every write since `beginStoring` was kept, and in the same database. A scan that sees it isn't
       so ends: what it has not stored, and what it knows of the database, is worth nothing. Any thread. */
    bool isStoring() const { return _isStoring; }
    /** Makes results old and tells everybody, on the calling thread. */
    void noteChange();
    /** Reads through the whole file, at most once a day. A damaged one is set aside at once, and a new one
       takes its place. Takes long for a large library; not on the main thread. Whether it is sound, as far as
       was looked. */
    bool checkIntegrity();
    /** No write waits for other programs any more: helmo ends. Any thread. */
    void stopWaiting() { _isEnding = true; }

private:
    template <class Row>
    zornic::Dictionary valuesOf(const SqlQuery& query, Row&& values,
                                const std::vector<std::string>& properties) const;
    std::vector<std::filesystem::path> filesWithPicture(std::int64_t picture) const;
    std::vector<std::filesystem::path> pictureOfFolder(std::int64_t folder) const;
    /** What a file's cover is; one that can't be read is noted, and not tried again until the file changes.
     */
    std::shared_ptr<const zornic::ImageSource> readCover(const MusicFile& file, zornic::Size fittingSize,
                                                         double scale) const;

    /** Takes over what `_storage` opened. */
    void useReaders();
    void prepareSortKeys();
    bool areSortKeysCurrent();

    /** Waits so long for other programs. */
    bool write(const std::function<void(TrackStore&)>& change, std::chrono::milliseconds wait);
    /** `write` for any table; `change` commits. */
    bool transact(const std::function<void(Database&, Transaction&)>& change, std::chrono::milliseconds wait);
    /** A small change that nobody waits for. */
    struct Change {
        std::function<void(TrackStore&)> perform;
        bool isSeen = false;
        /** Of a bookmark, the item's: it stores the last one that was set, so that one waiting is enough. */
        zornic::PersistentID bookmarkOf = 0;
    };
    /** Stores `change` in the background; what can't be stored now goes with what comes later. */
    void writeSoon(Change change);
    void writePending();
    void writeFailed(const DatabaseError& error);
    void readFailed(const DatabaseError& error);
    /** Another database takes the place of one that fails, in the background. */
    void replaceSoon(DatabaseError error);
    void replace(const DatabaseError& error);

    const std::shared_ptr<CoverReader> _coverReader;
    const SortKey _sortKey;
    const std::chrono::milliseconds _patience;
    StorageTroubles _troubles;
    std::mutex _writerMutex;
    LibraryStorage _storage;
    TrackCache _trackCache;
    mutable std::mutex _readersMutex;
    std::shared_ptr<Readers> _readers;
    const std::shared_ptr<SharedReading> _reading = std::make_shared<SharedReading>();
    std::atomic<std::uint64_t> _generation{1};
    std::atomic<bool> _isStoring{false}, _isEnding{false}, _isReplacing{false}, _hasPending{false};
    std::atomic<bool> _isBrivoEnabled{false};
    std::mutex _pendingMutex;
    std::vector<Change> _pending;
    Bookmarks _bookmarks;
    /** Writes that nobody waits for. Last: ends first. */
    zornic::SerialQueue _writes{"helmo.library.writes", zornic::QueuePriority::Background};
};

}  // namespace helmo

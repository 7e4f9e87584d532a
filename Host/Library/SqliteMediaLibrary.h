#pragma once

#include <atomic>
#include <filesystem>
#include <mutex>

#include "Host/Library/CoverReader.h"
#include "Host/Library/Readers.h"
#include "Host/Library/SortKey.h"
#include "Host/Library/TrackStore.h"
#include "Host/Library/UnreadableCovers.h"
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
        /** Two-letter code of the driver's language, for articles. */
        std::string language = "en";
    };

    /** Opens or makes the library in `file`, and its folder. A damaged file is set aside beside it under a
       dated name and a new one made. None when even that fails; why is on stderr. */
    static std::shared_ptr<SqliteMediaLibrary> open(const std::filesystem::path& file, Options options);
    static std::shared_ptr<SqliteMediaLibrary> open(const std::filesystem::path& file) {
        return open(file, Options());
    }
    /** Use `open`. Throws. */
    SqliteMediaLibrary(const std::filesystem::path& file, Options options);
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
    std::shared_ptr<const zornic::ImageSource> loadArtwork(const std::string& token, zornic::Size fittingSize,
                                                           double scale) const override;
    void removePlaylist(const zornic::MediaPlaylist& playlist) override;
    void noteItemPlayed(zornic::PersistentID persistentID) override;

    /** Runs `change` in one transaction of the writing connection, after other writers; whether it was kept.
       Lists show it after `noteChange`. Any thread; short, for others wait. */
    bool write(const std::function<void(TrackStore&)>& change);
    /** For reading past the lists. Any thread. */
    std::shared_ptr<Readers> readers() const { return _readers; }
    /** Makes results old and tells everybody, on the calling thread. */
    void noteChange();
    /** Reads through the whole file, at most once a day, and marks a damaged one so that the next `open` sets
       it aside. Takes long for a large library; not on the main thread. Whether it is sound, as far as was
       looked. */
    bool checkIntegrity();

private:
    template <class Row>
    zornic::Dictionary valuesOf(const SqlQuery& query, Row&& values,
                                const std::vector<std::string>& properties) const;
    std::vector<std::filesystem::path> filesWithPicture(std::int64_t picture) const;
    std::vector<std::filesystem::path> pictureOfFolder(std::int64_t folder) const;

    const std::shared_ptr<CoverReader> _coverReader;
    mutable UnreadableCovers _unreadableCovers;
    const SortKey _sortKey;
    mutable std::mutex _writerMutex;
    Database _writer;
    TrackCache _trackCache;
    std::shared_ptr<Readers> _readers;
    std::atomic<std::uint64_t> _generation{1};
    /** Writes that nobody waits for. Last: ends first. */
    zornic::SerialQueue _writes{"helmo.library.writes", zornic::QueuePriority::Background};
};

}  // namespace helmo

#include "Host/Library/SqliteMediaLibrary.h"

#include <algorithm>
#include <charconv>
#include <chrono>

#include "Host/Library/ChapterTable.h"
#include "Host/Library/ItemColumns.h"
#include "Host/Library/PlaylistColumns.h"
#include "Host/Log.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/MediaPlaylist.h"

namespace helmo {

using zornic::Dictionary;
using zornic::PersistentID;

namespace {

constexpr std::int64_t secondsBetweenChecks = 24 * 60 * 60;
/** Small changes that wait for the disk; the oldest go first. */
constexpr std::size_t maximumPendingChanges = 10'000;

std::int64_t numberIn(std::string_view text) {
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::int64_t now() {
    using namespace std::chrono;
    return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace

std::shared_ptr<SqliteMediaLibrary> SqliteMediaLibrary::open(const std::filesystem::path& file,
                                                             Options options) {
    try {
        return zornic::make<SqliteMediaLibrary>(file, std::move(options));
    } catch (const std::exception& error) {
        logLine("library: " + file.string() + " can't be opened: " + error.what());
        return nullptr;
    }
}

SqliteMediaLibrary::SqliteMediaLibrary(const std::filesystem::path& file, Options options)
    : _coverReader(std::move(options.coverReader)),
      _sortKey(std::move(options.language)),
      _patience(options.patience),
      _storage(file, _troubles) {}

SqliteMediaLibrary::~SqliteMediaLibrary() {
    _isEnding = true;
    _troubles.setHandler({});
    writePending();
}

void SqliteMediaLibrary::didMake() {
    MediaLibrary::didMake();
    useReaders();
    prepareSortKeys();
}

std::shared_ptr<Readers> SqliteMediaLibrary::readers() const {
    std::lock_guard lock(_readersMutex);
    return _readers;
}

void SqliteMediaLibrary::useReaders() {
    const auto fresh = _storage.readers();
    fresh->setFailureHandler([weak = zornic::weak(this)](const DatabaseError& error) {
        if (const auto self = weak.lock()) self->readFailed(error);
    });
    std::lock_guard lock(_readersMutex);
    _readers = fresh;
}

bool SqliteMediaLibrary::areSortKeysCurrent() {
    std::lock_guard lock(_writerMutex);
    try {
        return !_storage.writer() ||
               TrackStore(*_storage.writer(), _sortKey, _trackCache).areSortKeysCurrent();
    } catch (const DatabaseError& error) {
        readFailed(error);
        return true;
    }
}

void SqliteMediaLibrary::prepareSortKeys() {
    if (areSortKeysCurrent()) return;
    const auto renew = [](TrackStore& store) { store.renewSortKeys(); };
    // A new library has nothing to sort; in an old one a million keys take a while.
    if (!hasSongs() && write(renew, std::chrono::milliseconds(0))) return;
    writeSoon({renew, true});
}

bool SqliteMediaLibrary::hasSongs() const {
    return readers()->read(false, [](Database& database) {
        return database.integer({"SELECT EXISTS (SELECT 1 FROM section_count WHERE tracks > 0)", {}}) != 0;
    });
}

std::shared_ptr<zornic::MediaItem> SqliteMediaLibrary::itemWithPersistentID(PersistentID persistentID,
                                                                            bool verifyExistence) const {
    if (persistentID == 0) return nullptr;
    const auto library = std::static_pointer_cast<const MediaLibrary>(shared_from_this());
    Dictionary values;
    if (verifyExistence) {
        values = valuesOfItem(persistentID, {zornic::MediaItemProperty::PersistentID});
        if (values.empty()) return nullptr;
    } else {
        values = _reading->representatives.values(persistentID, _generation, *readers());
    }
    return zornic::make<zornic::MediaItem>(std::const_pointer_cast<MediaLibrary>(library), persistentID,
                                           std::move(values));
}

std::shared_ptr<const zornic::MediaQueryResult> SqliteMediaLibrary::evaluate(
    const zornic::MediaQueryDescription& description) const {
    const auto library = std::static_pointer_cast<const MediaLibrary>(shared_from_this());
    return std::make_shared<const SqliteQueryResult>(std::const_pointer_cast<MediaLibrary>(library),
                                                     readers(), _reading, _generation, description);
}

template <class Row>
Dictionary SqliteMediaLibrary::valuesOf(const SqlQuery& query, Row&& values,
                                        const std::vector<std::string>& properties) const {
    const auto all = readers()->read(Dictionary(), [&](Database& database) {
        auto row = database.prepare(query);
        return row.step() ? values(row) : Dictionary();
    });
    Dictionary wanted;
    for (const auto& property : properties)
        if (const auto& value = zornic::valueForKey(all, property)) wanted[property] = value;
    return wanted;
}

Dictionary SqliteMediaLibrary::valuesOfItem(PersistentID persistentID,
                                            const std::vector<std::string>& properties) const {
    static const std::string sql = "SELECT " + ItemColumns::columns() + " FROM " + ItemColumns::tables() +
                                   " WHERE t.pid = ? AND t.present = 1";
    const auto values = [&](const Statement& row) {
        auto stored = ItemColumns::values(row);
        _bookmarks.apply(persistentID, stored);
        return stored;
    };
    return valuesOf({sql, {static_cast<std::int64_t>(persistentID)}}, values, properties);
}

Dictionary SqliteMediaLibrary::valuesOfPlaylist(PersistentID persistentID,
                                                const std::vector<std::string>& properties) const {
    static const std::string sql =
        "SELECT " + PlaylistColumns::columns() + " FROM playlist p WHERE p.pid = ? AND p.present = 1";
    return valuesOf({sql, {static_cast<std::int64_t>(persistentID)}}, PlaylistColumns::values, properties);
}

std::vector<zornic::MediaChapter> SqliteMediaLibrary::chaptersOfItem(PersistentID persistentID,
                                                                     zornic::MediaChapterType type) const {
    return readers()->read(std::vector<zornic::MediaChapter>(), [&](Database& database) {
        return ChapterTable::ofItem(database, persistentID, type);
    });
}

std::vector<std::filesystem::path> SqliteMediaLibrary::filesWithPicture(std::int64_t picture) const {
    constexpr int filesTried = 4;  // the same picture is in every track of an album
    return readers()->read(std::vector<std::filesystem::path>(), [&](Database& database) {
        std::vector<std::filesystem::path> found;
        auto rows =
            database.prepare({"SELECT f.path, t.file_name FROM track t JOIN folder f ON f.id = t.folder_id "
                              "WHERE t.present = 1 AND t.picture = ? AND t.picture <> 0 LIMIT ?",
                              {picture, std::int64_t{filesTried}}});
        while (rows.step()) found.push_back(std::filesystem::path(rows.text(0)) / rows.text(1));
        return found;
    });
}

std::vector<std::filesystem::path> SqliteMediaLibrary::pictureOfFolder(std::int64_t folder) const {
    return readers()->read(std::vector<std::filesystem::path>(), [&](Database& database) {
        std::vector<std::filesystem::path> found;
        auto row =
            database.prepare({"SELECT path, picture FROM folder WHERE id = ? AND picture <> ''", {folder}});
        if (row.step()) found.push_back(std::filesystem::path(row.text(0)) / row.text(1));
        return found;
    });
}

std::shared_ptr<const zornic::ImageSource> SqliteMediaLibrary::loadArtwork(const std::string& token,
                                                                           zornic::Size fittingSize,
                                                                           double scale) const {
    constexpr std::string_view embedded = "embedded:", file = "file:";
    std::vector<std::filesystem::path> files;
    if (token.starts_with(embedded)) files = filesWithPicture(numberIn(token.substr(embedded.size())));
    if (token.starts_with(file)) files = pictureOfFolder(numberIn(token.substr(file.size())));
    // What is wrong with a picture is wrong with it in every file: only the first one that is there counts.
    for (const auto& path : files)
        if (const auto stamp = FileStamp::of(path))
            return readCover({path.parent_path(), path.filename().string(), stamp->size, stamp->mtime},
                             fittingSize, scale);
    return nullptr;
}

std::shared_ptr<const zornic::ImageSource> SqliteMediaLibrary::readCover(const MusicFile& file,
                                                                         zornic::Size fittingSize,
                                                                         double scale) const {
    const bool isUnreadable = readers()->read(
        false, [&](Database& database) { return TrackStore::isUnreadablePicture(database, file); });
    if (!_coverReader || isUnreadable) return nullptr;
    const CoverReading reading = _coverReader->cover(file.path(), fittingSize, scale);
    if (!reading.problem.empty()) {
        logLine("cover: " + file.path().string() + ": " + reading.problem);
        const auto self = std::static_pointer_cast<const SqliteMediaLibrary>(shared_from_this());
        std::const_pointer_cast<SqliteMediaLibrary>(self)->writeSoon(
            {[file, reason = reading.problem](TrackStore& store) {
                store.noteUnreadablePicture(file, reason);
            }});
    }
    return reading.image;
}

std::vector<std::string> SqliteMediaLibrary::representativeArtistsOfPlaylist(
    PersistentID persistentID) const {
    return readers()->read(std::vector<std::string>(), [persistentID](Database& database) {
        return MixStore::representativeArtists(database, static_cast<std::int64_t>(persistentID));
    });
}

std::shared_ptr<zornic::MediaPlaylist> SqliteMediaLibrary::activeBrivoPlaylist() const {
    const auto id =
        _isBrivoEnabled ? readers()->read(std::int64_t{0}, MixStore::activePlaylist) : std::int64_t{0};
    if (id == 0) return nullptr;
    const auto library = std::static_pointer_cast<const MediaLibrary>(shared_from_this());
    return zornic::make<zornic::MediaPlaylist>(static_cast<PersistentID>(id),
                                               std::const_pointer_cast<MediaLibrary>(library));
}

void SqliteMediaLibrary::removePlaylist(const zornic::MediaPlaylist& playlist) {
    const auto id = static_cast<std::int64_t>(playlist.persistentID());
    writeSoon({[id](TrackStore& store) { store.playlists().remove(id); }, true});
}

void SqliteMediaLibrary::noteItemPlayed(PersistentID persistentID) {
    const auto id = static_cast<std::int64_t>(persistentID);
    writeSoon({[id](TrackStore& store) { store.notePlayed(id); }});
}

void SqliteMediaLibrary::setBookmark(PersistentID persistentID, std::optional<double> time) {
    _bookmarks.set(persistentID, {time});
    const auto store = [this, persistentID](TrackStore& tracks) {  // a change never outlives the library
        if (const auto last = _bookmarks.of(persistentID))
            tracks.setBookmark(static_cast<std::int64_t>(persistentID), last->time);
    };
    writeSoon({store, false, persistentID});
}

void SqliteMediaLibrary::writeSoon(Change change) {
    {
        std::lock_guard lock(_pendingMutex);
        if (change.bookmarkOf != 0)
            std::erase_if(_pending,
                          [&](const Change& known) { return known.bookmarkOf == change.bookmarkOf; });
        if (_pending.size() >= maximumPendingChanges) _pending.erase(_pending.begin());
        _pending.push_back(std::move(change));
        _hasPending = true;
    }
    _writes.async([weak = zornic::weak(this)] {
        if (const auto self = weak.lock()) self->writePending();
    });
}

void SqliteMediaLibrary::writePending() {
    std::vector<Change> changes;
    {
        std::lock_guard lock(_pendingMutex);
        _hasPending = false;
        changes.swap(_pending);
    }
    if (changes.empty()) return;
    const bool isStored = write([&](TrackStore& store) {
        for (const Change& change : changes) change.perform(store);
    });
    if (!isStored) {
        std::lock_guard lock(_pendingMutex);
        _pending.insert(_pending.begin(), changes.begin(), changes.end());
        _hasPending = true;
    } else if (!_isEnding && std::ranges::any_of(changes, &Change::isSeen)) {
        noteChange();
    }
}

bool SqliteMediaLibrary::write(const std::function<void(TrackStore&)>& change,
                               std::chrono::milliseconds wait) {
    return transact(
        [&](Database& database, Transaction& transaction) {
            TrackStore store(database, _sortKey, _trackCache);
            change(store);
            store.commit(transaction);
        },
        wait);
}

bool SqliteMediaLibrary::writeMixes(const std::function<void(MixStore&)>& change) {
    return transact(
        [&](Database& database, Transaction& transaction) {
            MixStore store(database, _sortKey);
            change(store);
            transaction.commit();
        },
        _patience);
}

bool SqliteMediaLibrary::transact(const std::function<void(Database&, Transaction&)>& change,
                                  std::chrono::milliseconds wait) {
    const auto giveUp = std::chrono::steady_clock::now() + wait;
    for (bool wasBegun = false;;) {
        try {
            std::lock_guard lock(_writerMutex);
            if (!_storage.writer()) return _isStoring = false;
            Transaction transaction(*_storage.writer());
            wasBegun = true;
            change(*_storage.writer(), transaction);
            break;
        } catch (const DatabaseError& error) {
            const bool isBusy = error.kind() == DatabaseError::Kind::Busy && !wasBegun;
            if (isBusy && !_isEnding && std::chrono::steady_clock::now() < giveUp) continue;
            writeFailed(error);
            return false;
        }
    }
    if (_hasPending && !_writes.isCurrent() && !_isEnding)
        _writes.async([weak = zornic::weak(this)] {
            if (const auto self = weak.lock()) self->writePending();
        });
    return true;
}

void SqliteMediaLibrary::writeFailed(const DatabaseError& error) {
    using Kind = DatabaseError::Kind;
    _isStoring = false;
    if (error.isDamage()) return replaceSoon(error);
    _troubles.log("library: " + _storage.file().string() + " can't be written: " + error.what());
    _troubles.add(error.kind() == Kind::NoRoom     ? StorageTrouble::NoRoom
                  : error.kind() == Kind::ReadOnly ? StorageTrouble::ReadOnly
                  : error.kind() == Kind::Busy     ? StorageTrouble::Busy
                                                   : StorageTrouble::Failing);
}

void SqliteMediaLibrary::readFailed(const DatabaseError& error) {
    const bool isLost = error.isDamage() || error.kind() == DatabaseError::Kind::Disk;
    if (isLost) return replaceSoon(error);
    _troubles.log("library: " + _storage.file().string() + " can't be read: " + error.what());
}

void SqliteMediaLibrary::replaceSoon(DatabaseError error) {
    _isStoring = false;
    if (_isEnding || _isReplacing.exchange(true)) return;
    _writes.async([weak = zornic::weak(this), error = std::move(error)] {
        if (const auto self = weak.lock()) self->replace(error);
    });
}

void SqliteMediaLibrary::replace(const DatabaseError& error) {
    try {
        std::lock_guard lock(_writerMutex);
        if (error.isDamage())
            _storage.replace(error.what());
        else
            _storage.moveElsewhere(error.what());
        _trackCache.clear();
        useReaders();
        _isReplacing = false;
    } catch (const DatabaseError& failure) {
        return _troubles.log(std::string("library: there is none any more: ") + failure.what());
    }
    prepareSortKeys();
    noteChange();
}

bool SqliteMediaLibrary::beginStoring() {
    std::lock_guard lock(_writerMutex);
    return _isStoring = _storage.writer() && !_isReplacing;
}

void SqliteMediaLibrary::noteChange() {
    ++_generation;
    zornic::NotificationCenter::defaultCenter().post(zornic::MediaLibraryDidChangeNotification,
                                                     shared_from_this());
}

bool SqliteMediaLibrary::checkIntegrity() {
    const auto last = readers()->readLong(std::int64_t{0}, [](Database& database) {
        return database.integer({"SELECT CAST(value AS INTEGER) FROM meta WHERE key = 'checked'", {}});
    });
    if (now() - last < secondsBetweenChecks) return true;
    const auto problem = readers()->readLong(std::string(), [](Database& database) {
        auto row = database.prepare({"PRAGMA quick_check(1)", {}});
        return row.step() ? row.text(0) : std::string();
    });
    if (problem.empty()) return true;  // it couldn't be read, which was said
    if (problem != "ok") {
        replaceSoon(DatabaseError(DatabaseError::damageCode, problem));
        return false;
    }
    transact(
        [](Database& database, Transaction& transaction) {
            database.run({"INSERT OR REPLACE INTO meta VALUES ('checked', ?)", {std::to_string(now())}});
            transaction.commit();
        },
        _patience);
    return true;
}

}  // namespace helmo

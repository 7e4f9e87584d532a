#include "Host/Library/SqliteMediaLibrary.h"

#include <charconv>
#include <chrono>

#include "Host/Library/DatabaseFile.h"
#include "Host/Library/ItemColumns.h"
#include "Host/Library/PlaylistColumns.h"
#include "Host/Library/Schema.h"
#include "Host/Library/SqliteQueryResult.h"
#include "Host/Log.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/MediaPlaylist.h"

namespace helmo {

using zornic::Dictionary;
using zornic::PersistentID;

namespace {

constexpr std::int64_t secondsBetweenChecks = 24 * 60 * 60;

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
        if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path());
        try {
            return zornic::make<SqliteMediaLibrary>(file, options);
        } catch (const DatabaseError& error) {
            if (!error.isDamage()) throw;
            const auto aside = setAside(file);
            logLine("library: " + file.string() + " is damaged (" + error.what() + "); kept as " +
                    aside.string() + ", a new one is made");
            return zornic::make<SqliteMediaLibrary>(file, options);
        }
    } catch (const std::exception& error) {
        logLine("library: " + file.string() + " can't be opened: " + error.what());
        return nullptr;
    }
}

SqliteMediaLibrary::SqliteMediaLibrary(const std::filesystem::path& file, Options options)
    : _coverReader(std::move(options.coverReader)),
      _sortKey(std::move(options.language)),
      _writer(file, Database::Access::ReadWrite) {
    Schema::prepare(_writer);
    probe(_writer);
    _readers = std::make_shared<Readers>(file);
}

void SqliteMediaLibrary::didMake() {
    MediaLibrary::didMake();
    bool isCurrent = false;
    write([&](TrackStore& store) { isCurrent = store.areSortKeysCurrent(); });
    if (isCurrent) return;
    // A new library has nothing to sort; in an old one a million keys take a while.
    if (!hasSongs()) {
        write([](TrackStore& store) { store.renewSortKeys(); });
        return;
    }
    _writes.async([weak = zornic::weak(this)] {
        const auto self = weak.lock();
        if (self && self->write([](TrackStore& store) { store.renewSortKeys(); })) self->noteChange();
    });
}

bool SqliteMediaLibrary::hasSongs() const {
    return _readers->read(false, [](Database& database) {
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
    }
    return zornic::make<zornic::MediaItem>(std::const_pointer_cast<MediaLibrary>(library), persistentID,
                                           std::move(values));
}

std::shared_ptr<const zornic::MediaQueryResult> SqliteMediaLibrary::evaluate(
    const zornic::MediaQueryDescription& description) const {
    const auto library = std::static_pointer_cast<const MediaLibrary>(shared_from_this());
    return std::make_shared<const SqliteQueryResult>(std::const_pointer_cast<MediaLibrary>(library), _readers,
                                                     description);
}

template <class Row>
Dictionary SqliteMediaLibrary::valuesOf(const SqlQuery& query, Row&& values,
                                        const std::vector<std::string>& properties) const {
    const auto all = _readers->read(Dictionary(), [&](Database& database) {
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
    return valuesOf({sql, {static_cast<std::int64_t>(persistentID)}}, ItemColumns::values, properties);
}

Dictionary SqliteMediaLibrary::valuesOfPlaylist(PersistentID persistentID,
                                                const std::vector<std::string>& properties) const {
    static const std::string sql =
        "SELECT " + PlaylistColumns::columns() + " FROM playlist p WHERE p.pid = ? AND p.present = 1";
    return valuesOf({sql, {static_cast<std::int64_t>(persistentID)}}, PlaylistColumns::values, properties);
}

std::vector<std::filesystem::path> SqliteMediaLibrary::filesWithPicture(std::int64_t picture) const {
    constexpr int filesTried = 4;  // the same picture is in every track of an album
    return _readers->read(std::vector<std::filesystem::path>(), [&](Database& database) {
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
    return _readers->read(std::vector<std::filesystem::path>(), [&](Database& database) {
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
    for (const auto& path : files) {
        const auto stamp = FileStamp::of(path);
        if (!stamp) continue;
        // What is wrong with a picture is wrong with it in every file.
        if (!_coverReader || _unreadableCovers.contains(path, *stamp)) return nullptr;
        const CoverReading reading = _coverReader->cover(path, fittingSize, scale);
        if (!reading.problem.empty()) {
            _unreadableCovers.insert(path, *stamp);
            logLine("cover: " + path.string() + ": " + reading.problem);
        }
        return reading.image;
    }
    return nullptr;
}

void SqliteMediaLibrary::removePlaylist(const zornic::MediaPlaylist& playlist) {
    const auto id = static_cast<std::int64_t>(playlist.persistentID());
    if (write([id](TrackStore& store) { store.removePlaylist(id); })) noteChange();
}

void SqliteMediaLibrary::noteItemPlayed(PersistentID persistentID) {
    _writes.async([weak = zornic::weak(this), persistentID] {
        const auto self = weak.lock();
        if (!self) return;
        self->write([&](TrackStore& store) { store.notePlayed(static_cast<std::int64_t>(persistentID)); });
    });
}

bool SqliteMediaLibrary::write(const std::function<void(TrackStore&)>& change) {
    try {
        std::lock_guard lock(_writerMutex);
        Transaction transaction(_writer);
        TrackStore store(_writer, _sortKey, _trackCache);
        change(store);
        store.commit(transaction);
        return true;
    } catch (const DatabaseError& error) {
        logLine(std::string("library: writing the database failed: ") + error.what());
        return false;
    }
}

void SqliteMediaLibrary::noteChange() {
    ++_generation;
    zornic::NotificationCenter::defaultCenter().post(zornic::MediaLibraryDidChangeNotification,
                                                     shared_from_this());
}

bool SqliteMediaLibrary::checkIntegrity() {
    const auto last = _readers->readLong(std::int64_t{0}, [](Database& database) {
        return database.integer({"SELECT CAST(value AS INTEGER) FROM meta WHERE key = 'checked'", {}});
    });
    if (now() - last < secondsBetweenChecks) return true;
    const auto problem = _readers->readLong(std::string("unreadable"), [](Database& database) {
        auto row = database.prepare({"PRAGMA quick_check(1)", {}});
        return row.step() ? row.text(0) : std::string("no answer");
    });
    const bool isSound = problem == "ok";
    if (!isSound) logLine("library: the database is damaged and is made anew at the next start: " + problem);
    try {
        std::lock_guard lock(_writerMutex);
        _writer.run({"INSERT OR REPLACE INTO meta VALUES (?, ?)",
                     {isSound ? "checked" : "damage", isSound ? std::to_string(now()) : problem}});
    } catch (const DatabaseError& error) {
        logLine(std::string("library: writing the database failed: ") + error.what());
    }
    return isSound;
}

}  // namespace helmo

#include "Benchmarks/Floors/ScanFloor.h"

#include <dirent.h>
#include <fcntl.h>
#include <fileref.h>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <tpropertymap.h>
#include <unistd.h>
#include <unordered_map>

#include <sqlite3.h>

#include "Benchmarks/Measuring.h"

namespace helmo::benchmarks {

namespace {

using Visit = std::function<void(const std::string& path, const struct stat&)>;

/** Each music file of a folder and of those inside. */
void walk(const std::string& folder, const Visit& visit) {
    DIR* listing = ::opendir(folder.c_str());
    if (!listing) return;
    while (const dirent* entry = ::readdir(listing)) {
        if (entry->d_name[0] == '.') continue;
        const std::string path = folder + '/' + entry->d_name;
        if (entry->d_type == DT_DIR) {
            walk(path, visit);
            continue;
        }
        struct stat status {};
        if (path.ends_with(".jpg") || ::fstatat(::dirfd(listing), entry->d_name, &status, 0) != 0) continue;
        visit(path, status);
    }
    ::closedir(listing);
}

std::int64_t timeOf(const struct stat& status) {
    return static_cast<std::int64_t>(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
}

/** A connection that ends the benchmark when anything fails. */
class Sqlite {
public:
    explicit Sqlite(const std::filesystem::path& file) {
        check(sqlite3_open(file.c_str(), &_handle));
        run("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL");
    }
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;
    ~Sqlite() {
        sqlite3_finalize(_statement);
        sqlite3_close(_handle);
    }
    void run(const char* sql) { check(sqlite3_exec(_handle, sql, nullptr, nullptr, nullptr)); }
    sqlite3_stmt* prepare(const char* sql) {
        check(sqlite3_prepare_v2(_handle, sql, -1, &_statement, nullptr));
        return _statement;
    }

private:
    static void check(int code) {
        if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errstr(code));
    }
    sqlite3* _handle = nullptr;
    sqlite3_stmt* _statement = nullptr;
};

/** Binds what a file says to the marks behind the first three. */
void bindTags(sqlite3_stmt* insert, const std::string& path) {
    const TagLib::FileRef file(path.c_str(), true, TagLib::AudioProperties::Average);
    if (file.isNull()) return;
    const TagLib::PropertyMap map = file.file()->properties();
    int mark = 4;
    for (const char* name : {"TITLE", "TITLESORT", "ARTIST", "ARTISTSORT", "ALBUM", "ALBUMSORT",
                             "ALBUMARTIST", "ALBUMARTISTSORT", "COMPOSER", "COMPOSERSORT", "GENRE",
                             "TRACKNUMBER", "DISCNUMBER", "DATE", "COMPILATION"}) {
        const auto found = map.find(name);
        if (found != map.end()) {
            const std::string text = found->second.front().to8Bit(true);
            sqlite3_bind_text(insert, mark, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
        }
        ++mark;
    }
    if (const auto* audio = file.audioProperties())
        sqlite3_bind_int(insert, mark, audio->lengthInMilliseconds());
}

}  // namespace

double scanFloor(const std::filesystem::path& music, const std::filesystem::path& file) {
    return milliseconds([&] {
        Sqlite database(file);
        database.run(
            "CREATE TABLE track (id INTEGER PRIMARY KEY, path TEXT, size INTEGER, mtime INTEGER, title, "
            "sort_title, artist, sort_artist, album, sort_album, album_artist, sort_album_artist, composer, "
            "sort_composer, genre, number, disc, date, compilation, duration); BEGIN");
        sqlite3_stmt* insert = database.prepare(
            "INSERT INTO track VALUES (NULL, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
            "?, ?, ?, ?)");
        walk(music, [&](const std::string& path, const struct stat& status) {
            sqlite3_reset(insert);
            sqlite3_clear_bindings(insert);
            sqlite3_bind_text(insert, 1, path.data(), static_cast<int>(path.size()), SQLITE_TRANSIENT);
            sqlite3_bind_int64(insert, 2, status.st_size);
            sqlite3_bind_int64(insert, 3, timeOf(status));
            bindTags(insert, path);
            if (sqlite3_step(insert) != SQLITE_DONE) throw std::runtime_error("a row can't be stored");
        });
        sqlite3_reset(insert);
        database.run("COMMIT");
    });
}

double rescanFloor(const std::filesystem::path& music, const std::filesystem::path& file) {
    return milliseconds([&] {
        Sqlite database(file);
        struct Known {
            std::int64_t size, mtime;
        };
        std::unordered_map<std::string, Known> known;
        sqlite3_stmt* rows = database.prepare("SELECT path, size, mtime FROM track");
        while (sqlite3_step(rows) == SQLITE_ROW)
            known[reinterpret_cast<const char*>(sqlite3_column_text(rows, 0))] = {
                sqlite3_column_int64(rows, 1), sqlite3_column_int64(rows, 2)};
        std::size_t same = 0;
        walk(music, [&](const std::string& path, const struct stat& status) {
            const auto found = known.find(path);
            same += found != known.end() && found->second.size == status.st_size &&
                    found->second.mtime == timeOf(status);
        });
        if (same != known.size()) throw std::runtime_error("the music changed while it was measured");
    });
}

}  // namespace helmo::benchmarks

#include "Benchmarks/Floors/MillionSongsRows.h"

#include <stdexcept>

#include <sqlite3.h>

namespace helmo::benchmarks {

namespace {

std::string text(sqlite3_stmt* row, int column) {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
    return bytes ? std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(row, column)))
                 : std::string();
}

}  // namespace

MillionSongsRows::MillionSongsRows(const std::filesystem::path& database) {
    if (sqlite3_open_v2(database.c_str(), &_database, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
        throw std::runtime_error(database.string() + " can't be opened");
    _count = prepared("SELECT COUNT(*) FROM track");
    _key = prepared("SELECT title_key FROM track WHERE present = 1 ORDER BY title_key, id LIMIT 1 OFFSET ?");
    _rows = prepared(
        "SELECT t.title, a.name || ' ' || b.name FROM track t JOIN collection a ON a.id = t.artist_id "
        "JOIN collection b ON b.id = t.album_id WHERE t.present = 1 AND t.title_key >= ? "
        "ORDER BY t.title_key, t.id LIMIT ?");
}

MillionSongsRows::~MillionSongsRows() {
    for (auto* statement : {_count, _key, _rows}) sqlite3_finalize(statement);
    sqlite3_close(_database);
}

sqlite3_stmt* MillionSongsRows::prepared(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(_database, sql, -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(_database));
    return statement;
}

std::int64_t MillionSongsRows::count() {
    sqlite3_step(_count);
    const auto count = sqlite3_column_int64(_count, 0);
    sqlite3_reset(_count);
    return count;
}

std::string MillionSongsRows::keyAt(std::int64_t index) {
    sqlite3_bind_int64(_key, 1, index);
    const std::string key = sqlite3_step(_key) == SQLITE_ROW ? text(_key, 0) : std::string();
    sqlite3_reset(_key);
    return key;
}

MillionSongsRows::Rows MillionSongsRows::rowsFrom(const std::string& key, int count) {
    sqlite3_bind_blob(_rows, 1, key.data(), static_cast<int>(key.size()), SQLITE_STATIC);
    sqlite3_bind_int(_rows, 2, count);
    Rows rows;
    while (sqlite3_step(_rows) == SQLITE_ROW) rows.push_back({text(_rows, 0), text(_rows, 1)});
    sqlite3_reset(_rows);
    return rows;
}

}  // namespace helmo::benchmarks

#include "Benchmarks/Floors/ListRows.h"

#include <stdexcept>

#include <sqlite3.h>

namespace helmo::benchmarks {

ListRows::ListRows(const std::filesystem::path& database, const std::string& count, const std::string& rows) {
    if (sqlite3_open_v2(database.c_str(), &_database, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
        throw std::runtime_error(database.string() + " can't be opened");
    _count = prepared(count);
    _rows = prepared(rows);
}

ListRows::~ListRows() {
    for (auto* statement : {_count, _rows}) sqlite3_finalize(statement);
    sqlite3_close(_database);
}

sqlite3_stmt* ListRows::prepared(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(_database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(_database));
    return statement;
}

std::int64_t ListRows::count() {
    sqlite3_step(_count);
    const auto count = sqlite3_column_int64(_count, 0);
    sqlite3_reset(_count);
    return count;
}

ListRows::Texts ListRows::read(int limit) {
    sqlite3_bind_int(_rows, 1, limit);
    Texts texts;
    while (sqlite3_step(_rows) == SQLITE_ROW)
        for (int column = 0; column < sqlite3_column_count(_rows); ++column) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(_rows, column));
            texts.emplace_back(text ? text : "");
        }
    sqlite3_reset(_rows);
    return texts;
}

}  // namespace helmo::benchmarks

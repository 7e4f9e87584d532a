#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace helmo::benchmarks {

/** What a list has to ask of SQLite at least: how long it is, and what a screen of its rows shows, by
   statements that are prepared beforehand. */
class ListRows {
public:
    using Texts = std::vector<std::string>;

    /** `rows`: SELECT ... LIMIT ?. Throws. */
    ListRows(const std::filesystem::path& database, const std::string& count,
             const std::string& rows = "SELECT 1 LIMIT ?");
    ListRows(const ListRows&) = delete;
    ListRows& operator=(const ListRows&) = delete;
    ~ListRows();

    std::int64_t count();
    /** The columns of the first `limit` rows, one row after the other. */
    Texts read(int limit);

private:
    sqlite3_stmt* prepared(const std::string& sql);

    sqlite3* _database = nullptr;
    sqlite3_stmt *_count, *_rows;
};

}  // namespace helmo::benchmarks

#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace helmo::benchmarks {

/** What a list of songs has to ask of SQLite at least, by statements that are prepared beforehand. */
class MillionSongsRows {
public:
    struct Row {
        std::string title, detail;
    };
    using Rows = std::vector<Row>;

    explicit MillionSongsRows(const std::filesystem::path& database);
    MillionSongsRows(const MillionSongsRows&) = delete;
    MillionSongsRows& operator=(const MillionSongsRows&) = delete;
    ~MillionSongsRows();

    std::int64_t count();
    /** The sort key of the song at a place of the list; slow. */
    std::string keyAt(std::int64_t index);
    /** `count` rows from a sort key on. */
    Rows rowsFrom(const std::string& key, int count);

private:
    sqlite3_stmt* prepared(const char* sql);

    sqlite3* _database = nullptr;
    sqlite3_stmt *_count, *_key, *_rows;
};

}  // namespace helmo::benchmarks

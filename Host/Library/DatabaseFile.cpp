#include "Host/Library/DatabaseFile.h"

#include <algorithm>
#include <ctime>

namespace helmo {

namespace {

std::string timeStamp() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    char text[32];
    return {text, std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &parts)};
}

}  // namespace

void probe(Database& database) {
    std::vector<std::string> tables;
    auto names = database.prepare(
        {"SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite_%'", {}});
    while (names.step()) tables.push_back(names.text(0));
    if (std::ranges::find(tables, "track") == tables.end())
        throw DatabaseError(DatabaseError::damageCode, "it holds no music library");
    for (const auto& table : tables) database.prepare({"SELECT * FROM " + table + " LIMIT 1", {}}).step();
}

std::filesystem::path setAside(const std::filesystem::path& file) {
    std::filesystem::path target = file;
    target += ".damaged-" + timeStamp();
    for (int more = 2; std::filesystem::exists(target); ++more) {
        target = file;
        target += ".damaged-" + timeStamp() + "-" + std::to_string(more);
    }
    std::filesystem::rename(file, target);
    for (const char* suffix : {"-wal", "-shm"}) {
        std::filesystem::path part = file, partTarget = target;
        part += suffix;
        partTarget += suffix;
        if (std::filesystem::exists(part)) std::filesystem::rename(part, partTarget);
    }
    return target;
}

}  // namespace helmo

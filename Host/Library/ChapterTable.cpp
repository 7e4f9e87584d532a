#include "Host/Library/ChapterTable.h"

namespace helmo {

namespace {

double seconds(std::chrono::milliseconds time) { return std::chrono::duration<double>(time).count(); }

std::int64_t chaptersOfEarlierParts(Database& database, const SqlValue& item, std::int64_t type) {
    return database.integer(
        {"SELECT COUNT(*) FROM track t JOIN collection a ON a.id = t.album_id AND a.name <> '' "
         "JOIN track p ON p.album_id = t.album_id AND p.media_type = t.media_type AND p.present = 1 AND "
         "(p.disc_number, p.track_number, p.id) < (t.disc_number, t.track_number, t.id) "
         "JOIN chapter c ON c.track_id = p.id AND c.type = ? WHERE t.pid = ?",
         {type, item}});
}

}  // namespace

void ChapterTable::make(Database& database) {
    database.execute(
        "CREATE TABLE chapter ("
        "track_id INTEGER NOT NULL REFERENCES track (id) ON DELETE CASCADE, type INTEGER NOT NULL,"
        "position INTEGER NOT NULL, start REAL NOT NULL, duration REAL NOT NULL, title TEXT NOT NULL,"
        "PRIMARY KEY (track_id, type, position)) WITHOUT ROWID");
}

void ChapterTable::store(Database& database, std::int64_t track, const std::vector<TrackChapter>& chapters,
                         bool isNew) {
    if (!isNew) database.run({"DELETE FROM chapter WHERE track_id = ?", {track}});
    constexpr auto type = static_cast<std::int64_t>(zornic::MediaChapterType::Chapter);
    std::int64_t position = 0;
    for (const TrackChapter& chapter : chapters)
        database.run(
            {"INSERT INTO chapter (track_id, type, position, start, duration, title) "
             "VALUES (?, ?, ?, ?, ?, ?)",
             {track, type, position++, seconds(chapter.start), seconds(chapter.duration), chapter.title}});
}

std::vector<zornic::MediaChapter> ChapterTable::ofItem(Database& database, zornic::PersistentID item,
                                                       zornic::MediaChapterType type) {
    std::vector<zornic::MediaChapter> chapters;
    const SqlValue id = static_cast<std::int64_t>(item);
    const auto kind = static_cast<std::int64_t>(type);
    auto rows = database.prepare(
        {"SELECT c.start, c.duration, c.title FROM track t JOIN chapter c ON c.track_id = t.id "
         "WHERE t.pid = ? AND t.present = 1 AND c.type = ? ORDER BY c.position",
         {id, kind}});
    while (rows.step())
        chapters.push_back(
            {0, zornic::Seconds(rows.number(0)), zornic::Seconds(rows.number(1)), rows.text(2)});
    if (chapters.empty()) return chapters;
    auto index = static_cast<std::uint64_t>(chaptersOfEarlierParts(database, id, kind));
    for (auto& chapter : chapters) chapter.indexInChaptersWithSameType = index++;
    return chapters;
}

}  // namespace helmo

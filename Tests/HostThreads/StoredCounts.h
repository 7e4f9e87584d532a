#pragma once

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "Host/Library/Database.h"
#include "Host/Library/Schema.h"

namespace helmo {

inline std::string column(Database& database, const std::string& sql) {
    std::string text;
    auto rows = database.prepare({sql, {}});
    while (rows.step()) text += rows.text(0) + "\n";
    return text;
}

/** The stored counts are those of the rows, and every index is there. */
inline void expectEverythingCounted(const std::filesystem::path& file) {
    Database database(file, Database::Access::ReadOnly);
    const char* keys[] = {"title_key", "artist_key", "album_artist_key", "album_key"};
    for (int order = 0; order < 4; ++order) {
        const std::string counted =
            std::string("substr(") + keys[order] + ", 1, " + std::to_string(Schema::countedBytes) + ")";
        EXPECT_EQ(column(database,
                         "SELECT hex(section) || media_type || ' ' || tracks FROM section_count WHERE "
                         "tracks <> 0 AND ordering = " +
                             std::to_string(order) + " ORDER BY section, media_type"),
                  column(database, "SELECT hex(k) || m || ' ' || COUNT(*) FROM (SELECT " + counted +
                                       " AS k, media_type AS m FROM track WHERE present = 1) "
                                       "GROUP BY k, m ORDER BY k, m"))
            << keys[order];
    }
    for (const std::string kind : {"artist", "album_artist", "album"})
        EXPECT_EQ(column(database, "SELECT t.title FROM track t JOIN collection c ON c.id = t." + kind +
                                       "_id WHERE t.present = 1 AND t." + kind + "_key <> c.sort_key"),
                  "")
            << "sorted as its " << kind << " once was";
    std::string memberships;
    for (const char* id :
         {"artist_id", "album_id", "album_artist_id", "genre_id", "composer_id", "podcast_id"})
        memberships += (memberships.empty() ? "SELECT " : " UNION ALL SELECT ") + std::string(id) +
                       " AS c, media_type AS m FROM track WHERE present = 1 AND " + id + " NOT NULL";
    EXPECT_EQ(column(database,
                     "SELECT collection_id || ' ' || media_type || ' ' || tracks FROM collection_count "
                     "WHERE tracks <> 0 ORDER BY collection_id, media_type"),
              column(database, "SELECT c || ' ' || m || ' ' || COUNT(*) FROM (" + memberships +
                                   ") GROUP BY c, m ORDER BY c, m"));
    const std::string counted = ", 1, " + std::to_string(Schema::countedBytes) + "))";
    EXPECT_EQ(
        column(database,
               "SELECT kind || ' ' || ordering || ' ' || media_types || ' ' || hex(section) || ' ' || "
               "collections FROM collection_section WHERE collections <> 0 ORDER BY 1"),
        column(database, "WITH c AS (SELECT *, (SELECT SUM(DISTINCT m) FROM (" + memberships +
                             ") WHERE c = collection.id) AS types FROM collection) "
                             "SELECT kind || ' 0 ' || types || ' ' || hex(substr(sort_key" +
                             counted +
                             " || ' ' || COUNT(*) AS line FROM c WHERE types GROUP BY kind, types, "
                             "substr(sort_key, 1, 6) UNION ALL SELECT kind || ' 1 ' || types || ' ' || "
                             "hex(substr(owner_key" +
                             counted +
                             " || ' ' || COUNT(*) FROM c WHERE types AND kind = 1 GROUP BY kind, types, "
                             "substr(owner_key, 1, 6) ORDER BY line"));
    EXPECT_EQ(Schema::missingIndices(database).size(), 0u);
    EXPECT_EQ(column(database, "PRAGMA integrity_check"), "ok\n");
}

}  // namespace helmo

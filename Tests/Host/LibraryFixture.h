#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Host/Library/SqliteMediaLibrary.h"
#include "Host/TemporaryFolder.h"
#include "Platform/Media/MediaItem.h"
#include "Platform/Media/MediaPlaylist.h"
#include "Platform/Media/MediaQuery.h"

namespace helmo {

/** A library in a folder of its own, with tracks put in directly. */
class LibraryFixture : public testing::Test {
protected:
    LibraryFixture() { _library = SqliteMediaLibrary::open(databaseFile()); }
    ~LibraryFixture() override {
        _library = nullptr;
        zornic::BackgroundWork::waitUntilIdle(std::chrono::seconds(10));
    }

    std::filesystem::path databaseFile() const { return _folder / "data" / "library.db"; }
    std::filesystem::path music() const { return _folder / "music"; }

    static TrackTags tags(const std::string& title, const std::string& artist = "",
                          const std::string& album = "", int number = 0) {
        TrackTags tags;
        tags.title = title;
        tags.artist = artist;
        tags.albumTitle = album;
        tags.trackNumber = number;
        return tags;
    }
    void add(const std::vector<TrackTags>& tracks) {
        ASSERT_TRUE(_library->write([&](TrackStore& store) {
            for (const TrackTags& track : tracks) {
                const std::string name = std::to_string(++_files) + ".mp3";
                store.store({"/nowhere", name, _files, _files}, track);
            }
        }));
        _library->noteChange();
    }
    std::shared_ptr<zornic::MediaQuery> query(zornic::MediaGrouping grouping = zornic::MediaGrouping::Title,
                                              std::vector<zornic::MediaPredicate> predicates = {},
                                              std::vector<std::string> ordering = {}) const {
        return zornic::make<zornic::MediaQuery>(
            zornic::MediaQueryDescription{std::move(predicates), grouping, std::move(ordering), true, {}},
            _library);
    }
    /** One text of every entity of a list. */
    static std::vector<std::string> texts(const zornic::MediaEntityList& list, const char* property) {
        std::vector<std::string> result;
        for (std::uint64_t at = 0; at < list.count(); ++at) {
            const auto entity = list.entityAtIndex(at);
            result.push_back(entity ? entity->valueForProperty(property).asText() : "(gone)");
        }
        return result;
    }
    static std::vector<std::string> titles(const zornic::MediaQuery& query) {
        return texts(*query.items(), zornic::MediaItemProperty::Title);
    }
    static std::shared_ptr<zornic::MediaItem> item(const zornic::MediaQuery& query, std::uint64_t index) {
        return std::dynamic_pointer_cast<zornic::MediaItem>(query.items()->entityAtIndex(index));
    }

    const TemporaryFolder _temporary;
    const std::filesystem::path _folder = _temporary.path();
    std::shared_ptr<SqliteMediaLibrary> _library;
    std::int64_t _files = 0;
};

}  // namespace helmo

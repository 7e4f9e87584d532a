#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Host/Library/Readers.h"

namespace helmo {

/** What the database knows of one folder. */
struct KnownFolder {
    struct File {
        std::string name;
        std::int64_t size = 0;
        std::int64_t mtime = 0;
        /** The track's row; 0 for a file that is remembered as no track. */
        std::int64_t track = 0;
        bool isPresent = false;
    };

    /** The folder's row; 0 when it is new. */
    std::int64_t id = 0;
    std::string picture;
    std::int64_t pictureStamp = 0;
    /** Sorted by name, as bytes. */
    std::vector<File> tracks, unreadable;

    /** None when the database can't be read. */
    static std::unique_ptr<const KnownFolder> read(Readers& readers, const std::filesystem::path& folder);
};

}  // namespace helmo

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Host/Library/FolderWalk.h"
#include "Host/Library/TrackStore.h"

namespace helmo {

/** A folder that is being scanned. */
struct ScannedFolder {
    std::filesystem::path path, root;
    std::size_t medium = 0;
    /** 0 when it is none of a disc. */
    int disc = 0;
};

/** Changes that a scan gathers, to be stored in one transaction. */
class ScanBatch {
public:
    struct Picture {
        std::shared_ptr<const ScannedFolder> folder;
        std::string fileName;
        std::int64_t stamp = 0;
    };
    struct Presence {
        std::int64_t track = 0, folder = 0;
        bool isPresent = false;
    };
    struct Forgotten {
        std::int64_t folder = 0;
        std::string fileName;
    };
    struct File {
        std::shared_ptr<const ScannedFolder> folder;
        FoundFile file;
        /** The track that is known at its place; 0 for none. */
        std::int64_t known = 0;
        /** Whether something is remembered of the file as it was that no longer holds. */
        bool wasUnreadable = false;
        TagReading reading;
    };

    std::vector<Picture> pictures;
    std::vector<Presence> presences;
    std::vector<Forgotten> forgotten;
    std::vector<File> files;

    std::size_t size() const { return pictures.size() + presences.size() + forgotten.size() + files.size(); }
    void clear() { *this = ScanBatch(); }
    /** Stores everything; the rows of the folders that it is about, with their media. `mayHaveMoved`: whether
       new files may be tracks that vanished elsewhere. Throws. */
    std::vector<std::pair<std::int64_t, std::size_t>> store(TrackStore& store, bool mayHaveMoved) const;
};

}  // namespace helmo

#pragma once

#include <memory>
#include <vector>

#include "Host/Library/FolderWalk.h"
#include "Host/Library/KnownFolder.h"
#include "Host/Library/ScanBatch.h"

namespace helmo {

/** What is new in a folder. */
struct FolderComparison {
    struct Unread {
        FoundFile file;
        std::int64_t known = 0;
        bool wasUnreadable = false;
    };
    /** Files that have to be read. */
    std::vector<Unread> unread;
    std::vector<ScanBatch::Presence> presences;
    std::vector<ScanBatch::Forgotten> forgotten;

    /** Compares a folder's music with what is known of it. */
    FolderComparison(const std::vector<FoundFile>& music, const KnownFolder& known);
};

}  // namespace helmo

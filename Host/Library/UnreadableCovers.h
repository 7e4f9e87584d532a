#pragma once

#include <filesystem>
#include <mutex>
#include <string>
#include <unordered_map>

#include "Host/Library/MediaFiles.h"

namespace helmo {

/** Files whose pictures could not be read, with their size and time: until they change it is not tried again.
   Kept as long as helmo runs. Any thread. */
class UnreadableCovers {
public:
    bool contains(const std::filesystem::path& file, const FileStamp& stamp) const;
    void insert(const std::filesystem::path& file, const FileStamp& stamp);

private:
    mutable std::mutex _mutex;
    std::unordered_map<std::string, FileStamp> _files;
};

}  // namespace helmo

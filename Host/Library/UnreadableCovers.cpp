#include "Host/Library/UnreadableCovers.h"

namespace helmo {

bool UnreadableCovers::contains(const std::filesystem::path& file, const FileStamp& stamp) const {
    std::lock_guard lock(_mutex);
    const auto found = _files.find(file.string());
    return found != _files.end() && found->second.size == stamp.size && found->second.mtime == stamp.mtime;
}

void UnreadableCovers::insert(const std::filesystem::path& file, const FileStamp& stamp) {
    constexpr std::size_t limit = 10'000;
    std::lock_guard lock(_mutex);
    if (_files.size() >= limit) _files.clear();
    _files[file.string()] = stamp;
}

}  // namespace helmo

#include "Host/Library/FolderWalk.h"

#include <algorithm>

#include "Host/Library/MediaFiles.h"
#include "Host/Log.h"

namespace helmo {

namespace {

/** Deeper than any music is filed; a file system that never ends is damaged. */
constexpr std::ptrdiff_t maximumDepth = 64;

}  // namespace

bool FolderWalk::isNew(const std::filesystem::path& folder) {
    const auto stamp = FileStamp::of(folder);
    if (!stamp) {
        logLine("scan: " + folder.string() + ": the folder isn't there or can't be reached");
        return false;
    }
    return _visited.emplace(stamp->device, stamp->inode).second;
}

void FolderWalk::read(FolderContents& folder) {
    std::error_code error;
    std::filesystem::directory_iterator entry(folder.path, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::string name = entry->path().filename().string();
        if (name.starts_with('.')) continue;
        std::error_code unknownKind;
        const bool isFolder = entry->is_directory(unknownKind);
        if (!unknownKind) (isFolder ? folder.folders : folder.files).push_back(std::move(name));
    }
    if (error) logLine("scan: " + folder.path.string() + ": " + error.message());
    std::ranges::sort(folder.files);
    std::ranges::sort(folder.folders);
}

void FolderWalk::run(const std::filesystem::path& root,
                     const std::function<bool(const FolderContents&)>& visit) {
    const auto depthOf = [](const std::filesystem::path& path) {
        return std::distance(path.begin(), path.end());
    };
    const auto deepest = depthOf(root) + maximumDepth;
    std::vector<std::filesystem::path> waiting{root};
    while (!waiting.empty()) {
        FolderContents folder{std::move(waiting.back()), {}, {}};
        waiting.pop_back();
        if (!isNew(folder.path)) continue;
        read(folder);
        if (!visit(folder)) return;
        if (depthOf(folder.path) >= deepest) {
            logLine("scan: " + folder.path.string() + ": too deep, folders inside are left out");
            continue;
        }
        for (auto name = folder.folders.rbegin(); name != folder.folders.rend(); ++name)
            waiting.push_back(folder.path / *name);
    }
}

}  // namespace helmo

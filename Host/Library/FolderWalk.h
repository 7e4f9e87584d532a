#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace helmo {

/** What lies in one folder, sorted by name, without what is hidden. */
struct FolderContents {
    std::filesystem::path path;
    std::vector<std::string> files;
    std::vector<std::string> folders;
};

/** Visits a folder and all folders inside, each folder of the disk once, whatever links lead to it. What
   can't be read is logged and passed over. */
class FolderWalk {
public:
    /** Calls `visit` for each folder from `root` down, parents first, until it answers false. */
    void run(const std::filesystem::path& root, const std::function<bool(const FolderContents&)>& visit);

private:
    bool isNew(const std::filesystem::path& folder);
    static void read(FolderContents& folder);

    std::set<std::pair<std::uint64_t, std::uint64_t>> _visited;
};

}  // namespace helmo

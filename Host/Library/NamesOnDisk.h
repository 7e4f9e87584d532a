#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace helmo {

/** Finds what paths that were written on another system mean: names on disk may differ from theirs in letter
   case and in how accents are composed. A folder is listed once, so it serves for as long as a scan. One
   thread. */
class NamesOnDisk {
public:
    /** `path`, which is in `root`, with the names below that as they are on disk; as it is given when nothing
       there is called so. */
    std::string pathOnDisk(const std::string& path, const std::filesystem::path& root);

private:
    struct Folder {
        std::set<std::string, std::less<>> names;
        /** Names by what all their spellings have in common; made when a name is first missed. */
        std::map<std::string, std::string> bySpelling;
    };

    std::optional<std::string> folderOnDisk(std::string_view path, const std::string& root);
    std::optional<std::string> nameOnDisk(const std::string& folder, std::string_view name);
    Folder& listed(const std::string& folder);

    std::map<std::string, Folder> _folders;
    std::size_t _count = 0;
    /** Entries of a list mostly follow others of their folder. */
    std::string _lastFolder;
    std::optional<std::string> _lastOnDisk;
};

}  // namespace helmo

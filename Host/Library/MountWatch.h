#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "Host/Library/ScanScope.h"
#include "Host/Reader/Descriptor.h"

namespace helmo {

/** Hears of media that are plugged in and pulled out: what is mounted comes and goes where the music is, and
   nothing happens in any folder. One thread. */
class MountWatch {
public:
    /** `table`: the system's list of what is mounted, for this process. */
    explicit MountWatch(std::vector<std::filesystem::path> roots,
                        const std::filesystem::path& table = "/proc/self/mountinfo");

    /** Has an exceptional condition when something was mounted or unmounted; negative without a table. */
    int descriptor() const { return _table.number(); }
    /** What is to be scanned of the roots since the last time. Does not wait. */
    ScanScope takeChanges();

private:
    /** What is mounted: its number and its place, and from where. */
    using Mounts = std::map<std::pair<std::string, std::filesystem::path>, std::string>;

    Mounts read() const;
    /** What of the roots lies at a place where something is mounted, or inside. */
    ScanScope partOfRoots(const std::filesystem::path& place) const;

    const std::vector<std::filesystem::path> _roots;
    const Descriptor _table;
    Mounts _mounts;
};

}  // namespace helmo

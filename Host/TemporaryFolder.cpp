#include "Host/TemporaryFolder.h"

#include <cstdlib>
#include <string>

namespace helmo {

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const char* session = std::getenv("XDG_RUNTIME_DIR");
    // Where a disk is full or read-only, what lies in memory may still do.
    for (const std::filesystem::path& parent :
         {std::filesystem::temp_directory_path(error), std::filesystem::path("/tmp"),
          std::filesystem::path(session ? session : ""), std::filesystem::path("/dev/shm")}) {
        std::string name = (parent / "helmo-XXXXXX").string();
        if (parent.empty() || !mkdtemp(name.data())) continue;
        _path = name;
        return;
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    if (!_path.empty()) std::filesystem::remove_all(_path, error);
}

}  // namespace helmo

#include "Host/TemporaryFolder.h"

#include <cstdlib>
#include <string>

namespace helmo {

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const auto parent = std::filesystem::temp_directory_path(error);
    std::string name = ((error ? std::filesystem::path("/tmp") : parent) / "helmo-XXXXXX").string();
    if (mkdtemp(name.data())) _path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    if (!_path.empty()) std::filesystem::remove_all(_path, error);
}

}  // namespace helmo

#pragma once

#include <filesystem>

namespace helmo {

/** A fresh folder that goes, with all that is in it, when this does. */
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    /** Empty when none could be made. */
    const std::filesystem::path& path() const { return _path; }

private:
    std::filesystem::path _path;
};

}  // namespace helmo

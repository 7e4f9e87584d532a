#pragma once

#include <filesystem>
#include <string_view>

namespace helmo::demo {

/**
 * A hidden folder beside the one that is to be made, locked against a second run. It takes the other's place
 * in one step when complete and is removed if it never is; what a killed run left is removed by the next.
 */
class StagingFolder {
public:
    /** Throws std::filesystem::filesystem_error, or std::runtime_error if another run is at work. */
    explicit StagingFolder(std::filesystem::path target);
    ~StagingFolder();
    StagingFolder(const StagingFolder&) = delete;
    StagingFolder& operator=(const StagingFolder&) = delete;

    const std::filesystem::path& path() const { return _path; }
    /** Puts the folder where the target is, replacing it. */
    void moveToTarget();

private:
    std::filesystem::path _target;
    std::filesystem::path _path;
    int _lock = -1;
};

}  // namespace helmo::demo

#include "Tools/DemoLibrary/StagingFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace helmo::demo {

namespace fs = std::filesystem;

namespace {

fs::path siblingOf(const fs::path& target, const char* ending) {
    fs::path name(".");
    name += target.filename();
    name += ending;
    return target.parent_path() / name;
}

}  // namespace

StagingFolder::StagingFolder(fs::path target)
    : _target(std::move(target)), _path(siblingOf(_target, ".partial")) {
    fs::create_directories(_path);
    _lock = open(_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (_lock < 0) {
        throw fs::filesystem_error("can't open", _path, std::error_code(errno, std::generic_category()));
    }
    if (flock(_lock, LOCK_EX | LOCK_NB) != 0) {
        close(_lock);
        throw std::runtime_error(_target.string() + ": another run is making this library");
    }
    for (const auto& leftover : fs::directory_iterator(_path)) fs::remove_all(leftover.path());
}

StagingFolder::~StagingFolder() {
    std::error_code ignored;
    if (!_path.empty()) fs::remove_all(_path, ignored);
    close(_lock);
}

void StagingFolder::moveToTarget() {
    const fs::path old = siblingOf(_target, ".old");
    fs::remove_all(old);
    const bool isReplacing = fs::exists(_target);
    if (isReplacing) fs::rename(_target, old);
    try {
        fs::rename(_path, _target);
    } catch (const fs::filesystem_error&) {
        std::error_code ignored;
        if (isReplacing) fs::rename(old, _target, ignored);
        throw;
    }
    _path.clear();
    fs::remove_all(old);
}

}  // namespace helmo::demo

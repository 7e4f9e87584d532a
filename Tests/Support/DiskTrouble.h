#pragma once

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

/** Disks as they are at their worst, for tests. */
namespace helmo::DiskTrouble {

/** Writes beyond `bytes` of any file fail in this process, and in those that it starts, while this lives. */
class LimitedFiles {
public:
    explicit LimitedFiles(rlim_t bytes) : _before(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &_limit);
        const rlimit limited{bytes, _limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~LimitedFiles() {
        ::setrlimit(RLIMIT_FSIZE, &_limit);
        std::signal(SIGXFSZ, _before);
    }
    LimitedFiles(const LimitedFiles&) = delete;
    LimitedFiles& operator=(const LimitedFiles&) = delete;

private:
    void (*const _before)(int);
    rlimit _limit{};
};

/** A file system of its own at a folder, seen by this process and those that it starts. Needs the right to
    mount. */
class SmallDisk {
public:
    SmallDisk(std::filesystem::path folder, int kilobytes) : _folder(std::move(folder)) {
        std::filesystem::create_directories(_folder);
        const std::string options = "size=" + std::to_string(kilobytes) + "k";
        _isMounted = ::unshare(CLONE_NEWNS) == 0 &&
                     ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                     ::mount("tmpfs", _folder.c_str(), "tmpfs", 0, options.c_str()) == 0;
    }
    ~SmallDisk() {
        if (_isMounted) ::umount2(_folder.c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isMounted() const { return _isMounted; }
    /** From now on, until the end. */
    bool makeReadOnly() const {
        return ::mount(nullptr, _folder.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }
    /** Leaves room for `kilobytes`. */
    void fill(std::size_t kilobytes) const {
        std::ofstream filler(_folder / "filler", std::ios::binary);
        const std::string block(4096, 'x');
        for (;;) {
            const auto room = std::filesystem::space(_folder).available;
            if (room <= kilobytes * 1024 || !filler.write(block.data(), 4096).flush()) return;
        }
    }
    void makeRoom() const { std::filesystem::remove(_folder / "filler"); }

private:
    const std::filesystem::path _folder;
    bool _isMounted = false;
};

}  // namespace helmo::DiskTrouble

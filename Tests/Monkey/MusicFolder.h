#pragma once

#include <filesystem>

#include "Host/TemporaryFolder.h"

/** A small folder of tagged songs, in several scripts and lengths, that comes and goes song by song. */
class MusicFolder {
public:
    static constexpr unsigned songs = 60;

    /** With all songs but the last few. */
    MusicFolder();
    const std::filesystem::path& path() const { return _folder.path(); }
    /** Takes song `number` away, or puts it there when it is away. */
    void toggle(unsigned number);

private:
    std::filesystem::path file(unsigned number) const;
    void write(unsigned number) const;

    helmo::TemporaryFolder _folder;
};

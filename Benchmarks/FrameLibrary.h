#pragma once

#include <filesystem>

#include "Host/TemporaryFolder.h"

namespace helmo::benchmarks {

/** A library on the disk as it is after a scan: its data folder, and its music, albums of ten songs with a
   cover each. The music files are empty. Goes with this object. */
class FrameLibrary {
public:
    /** Throws when it can't be written. */
    explicit FrameLibrary(int albums);
    std::filesystem::path data() const { return _folder.path() / "data"; }
    std::filesystem::path music() const { return _folder.path() / "music"; }

private:
    TemporaryFolder _folder;
};

}  // namespace helmo::benchmarks

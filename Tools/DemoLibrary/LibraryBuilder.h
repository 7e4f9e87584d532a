#pragma once

#include <atomic>
#include <filesystem>
#include <map>
#include <vector>

#include "Tools/DemoLibrary/Catalogue.h"
#include "Tools/DemoLibrary/CoverPainter.h"

namespace helmo::demo {

/** Makes the library of a catalogue. */
class LibraryBuilder {
public:
    enum class Outcome { Made, AlreadyThere, Cancelled };

    /** Once `isCancelled` becomes true, from a signal handler for instance, the builder stops and cleans up.
     */
    LibraryBuilder(const std::vector<Album>& albums, const std::atomic<bool>& isCancelled);

    /**
     * Fills `target` with the whole library or leaves it as it was. A folder that holds anything but an older
     * demo library is refused. Throws std::exception with a line that names the file and the reason.
     */
    Outcome build(const std::filesystem::path& target);

    /** True if the folder holds a finished library of this version. */
    static bool isFinished(const std::filesystem::path& folder);

private:
    struct Job {
        const Album* album;
        std::size_t track;
        const Bytes* picture;
    };

    void chooseFormats();
    void makeCovers(const std::filesystem::path& root);
    void makeTracks(const std::filesystem::path& root);
    void makePlaylists(const std::filesystem::path& root) const;
    void makeTrack(const Job& job, const std::filesystem::path& root) const;

    const std::vector<Album>& _albums;
    const std::atomic<bool>& _isCancelled;
    /** What is written instead of a format whose encoder is not installed. */
    std::map<Format, Format> _formats;
    std::vector<Bytes> _pictures;
};

}  // namespace helmo::demo

#include "Tools/DemoLibrary/LibraryBuilder.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <functional>
#include <iostream>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#include "Tools/DemoLibrary/AudioEncoder.h"
#include "Tools/DemoLibrary/Composer.h"
#include "Tools/DemoLibrary/FileNames.h"
#include "Tools/DemoLibrary/Playlists.h"
#include "Tools/DemoLibrary/StagingFolder.h"
#include "Tools/DemoLibrary/Synthesizer.h"
#include "Tools/DemoLibrary/TagWriter.h"

namespace helmo::demo {

namespace fs = std::filesystem;

namespace {

constexpr const char* stampName = ".demo-library";

void writeFile(const fs::path& file, std::string_view contents) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    stream.close();
    if (!stream) throw std::runtime_error(file.string() + ": can't be written");
}

/** The same piece for the same title, whatever stands before it in the catalogue. */
std::uint64_t seedOf(std::string_view album, std::string_view title) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const std::string_view text : {album, title}) {
        for (const char byte : text) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
    }
    return hash;
}

/** Calls `work` for 0 to count - 1 from as many threads as there are cores; rethrows the first failure. */
void forEachInParallel(std::size_t count, const std::atomic<bool>& isCancelled,
                       const std::function<void(std::size_t)>& work) {
    std::atomic<std::size_t> next = 0;
    std::exception_ptr failure;
    std::mutex mutex;
    const auto run = [&] {
        for (std::size_t i = next++; i < count && !isCancelled; i = next++) {
            try {
                work(i);
            } catch (...) {
                const std::lock_guard lock(mutex);
                if (!failure) failure = std::current_exception();
                next = count;
            }
        }
    };
    {
        std::vector<std::jthread> threads;
        const unsigned int cores = std::clamp(std::thread::hardware_concurrency(), 1U, 16U);
        for (unsigned int i = 0; i < cores; ++i) threads.emplace_back(run);
    }
    if (failure) std::rethrow_exception(failure);
}

}  // namespace

LibraryBuilder::LibraryBuilder(const std::vector<Album>& albums, const std::atomic<bool>& isCancelled)
    : _albums(albums), _isCancelled(isCancelled) {}

bool LibraryBuilder::isFinished(const fs::path& folder) {
    std::ifstream stream(folder / stampName);
    int version = 0;
    return stream >> version && version == catalogueVersion;
}

LibraryBuilder::Outcome LibraryBuilder::build(const fs::path& target) {
    if (isFinished(target)) return Outcome::AlreadyThere;
    if (fs::exists(target)) {
        if (!fs::is_directory(target)) throw std::runtime_error(target.string() + ": is not a folder");
        if (!fs::is_empty(target) && !fs::exists(target / stampName)) {
            throw std::runtime_error(target.string() + ": holds other files; name a new or empty folder");
        }
    }
    chooseFormats();
    StagingFolder staging(target);
    makeCovers(staging.path());
    makeTracks(staging.path());
    makePlaylists(staging.path());
    if (_isCancelled) return Outcome::Cancelled;
    writeFile(staging.path() / stampName, std::to_string(catalogueVersion) + "\n");
    staging.moveToTarget();
    return Outcome::Made;
}

void LibraryBuilder::chooseFormats() {
    for (const Album& album : _albums) {
        if (_formats.contains(album.format)) continue;
        const auto missing = AudioEncoder::missingElement(album.format);
        Format chosen = album.format;
        if (missing) {
            chosen = AudioEncoder::missingElement(Format::Flac) ? Format::Vorbis : Format::Flac;
            if (const auto alsoMissing = AudioEncoder::missingElement(chosen)) {
                throw std::runtime_error("no encoder is installed: neither " + *missing + " nor " +
                                         *alsoMissing);
            }
            std::cerr << "make-demo-library: " << *missing << " is not installed, writing "
                      << AudioEncoder::extensionOf(chosen) << " instead of "
                      << AudioEncoder::extensionOf(album.format) << '\n';
        }
        _formats[album.format] = chosen;
    }
}

void LibraryBuilder::makeCovers(const fs::path& root) {
    _pictures.assign(_albums.size(), {});
    forEachInParallel(_albums.size(), _isCancelled, [&](std::size_t i) {
        const Album& album = _albums[i];
        const fs::path folder = root / FileNames::folderOf(album);
        fs::create_directories(folder);
        const auto save = [&](const char* name, const Bytes& bytes) {
            writeFile(folder / name, {bytes.data(), bytes.size()});
        };
        switch (album.cover.place) {
            case CoverPlace::None:
                break;
            case CoverPlace::Embedded:
                _pictures[i] = CoverPainter::jpeg(album.cover);
                break;
            case CoverPlace::CoverJpeg:
                save("cover.jpg", CoverPainter::jpeg(album.cover));
                break;
            case CoverPlace::FolderPng:
                save("folder.png", CoverPainter::png(album.cover));
                break;
        }
    });
}

void LibraryBuilder::makeTracks(const fs::path& root) {
    std::vector<Job> jobs;
    for (std::size_t i = 0; i < _albums.size(); ++i) {
        for (std::size_t track = 0; track < _albums[i].tracks.size(); ++track) {
            jobs.push_back({&_albums[i], track, &_pictures[i]});
        }
    }
    // The longest first, so that no thread is left alone with a long one at the end.
    std::ranges::stable_sort(jobs, std::ranges::greater{},
                             [](const Job& job) { return job.album->tracks[job.track].seconds; });
    forEachInParallel(jobs.size(), _isCancelled, [&](std::size_t i) { makeTrack(jobs[i], root); });
}

void LibraryBuilder::makePlaylists(const fs::path& root) const {
    const auto pathOf = [this](const std::string& title, std::size_t track) {
        const auto album = std::ranges::find(_albums, title, &Album::title);
        if (album == _albums.end() || track >= album->tracks.size())
            throw std::runtime_error("a playlist names a track that is none: " + title);
        return FileNames::fileOf(*album, track, _formats.at(album->format));
    };
    for (const Playlist& playlist : playlists()) {
        fs::create_directories((root / playlist.file()).parent_path());
        writeFile(root / playlist.file(), playlist.contents(pathOf));
    }
}

void LibraryBuilder::makeTrack(const Job& job, const fs::path& root) const {
    const Album& album = *job.album;
    const Track& track = album.tracks[job.track];
    const Format format = _formats.at(album.format);
    const fs::path file = root / FileNames::fileOf(album, job.track, format);
    try {
        Composer composer(album.style, track.mood, seedOf(album.title, track.title));
        AudioEncoder::write(Synthesizer::render(composer.compose(track.seconds)), format, file);
        TagWriter::write(album, job.track, *job.picture, file);
    } catch (const std::exception& error) {
        throw std::runtime_error(file.string() + ": " + error.what());
    }
}

}  // namespace helmo::demo

#include <atomic>
#include <csignal>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string_view>

#include <gst/gst.h>

#include "Tools/DemoLibrary/AudioEncoder.h"
#include "Tools/DemoLibrary/Catalogue.h"
#include "Tools/DemoLibrary/LibraryBuilder.h"

namespace {

using namespace helmo::demo;

std::atomic<bool> isCancelled = false;

void cancel(int) { isCancelled = true; }

void listCatalogue() {
    std::size_t count = 0;
    int seconds = 0;
    for (const Album& album : catalogue()) {
        std::cout << album.artist << " – " << album.title << " (" << album.genre << ", " << album.year << ", "
                  << AudioEncoder::extensionOf(album.format) << ")\n";
        for (std::size_t i = 0; i < album.tracks.size(); ++i) {
            const Track& track = album.tracks[i];
            char number[32];
            std::snprintf(number, sizeof number, "  %d-%02d  %d:%02d  ", track.disc, album.numberOfTrack(i),
                          track.seconds / 60, track.seconds % 60);
            std::cout << number << track.title;
            if (!track.artist.empty()) std::cout << " – " << track.artist;
            std::cout << (track.isExplicit ? " [explicit]\n" : "\n");
            ++count;
            seconds += track.seconds;
        }
    }
    std::cout << catalogue().size() << " albums, " << count << " tracks, " << seconds / 60 << " minutes\n";
}

std::filesystem::path folderNamed(const char* argument) {
    auto folder = std::filesystem::absolute(argument).lexically_normal();
    return folder.has_filename() ? folder : folder.parent_path();
}

int makeLibrary(const char* argument) {
    const auto folder = folderNamed(argument);
    if (LibraryBuilder::isFinished(folder)) return 0;
    std::signal(SIGINT, cancel);
    std::signal(SIGTERM, cancel);
    gst_init(nullptr, nullptr);
    const auto outcome = LibraryBuilder(catalogue(), isCancelled).build(folder);
    if (outcome != LibraryBuilder::Outcome::Cancelled) return 0;
    std::cerr << "make-demo-library: " << folder.string() << ": interrupted, nothing was written\n";
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view argument = argc == 2 ? argv[1] : "";
    if (argument == "--list") {
        listCatalogue();
        return 0;
    }
    if (argument.empty() || argument.starts_with('-')) {
        std::cerr << "usage: make-demo-library OUTPUT_DIR | --list\n";
        return 1;
    }
    try {
        return makeLibrary(argv[1]);
    } catch (const std::filesystem::filesystem_error& error) {
        std::cerr << "make-demo-library: " << error.path1().string() << ": " << error.code().message()
                  << '\n';
        return 1;
    } catch (const std::exception& error) {
        std::cerr << "make-demo-library: " << error.what() << '\n';
        return 1;
    }
}

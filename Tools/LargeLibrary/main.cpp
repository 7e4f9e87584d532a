#include <cstdio>
#include <exception>

#include <CLI/CLI.hpp>

#include "Tools/LargeLibrary/LargeLibrary.h"

using namespace helmo::large;

int main(int argumentCount, char** arguments) {
    CLI::App app(
        "Makes a data folder for helmo with the library of a very large collection, without its music.",
        "make-large-library");
    std::string folder;
    LargeLibrarySize size;
    app.add_option("FOLDER", folder, "Where to make it; start helmo with --data FOLDER")->required();
    app.add_option("--tracks", size.tracks, "How many tracks")->check(CLI::Range(1, 100'000'000));
    app.add_option("--playlists", size.playlists, "How many playlists")->check(CLI::Range(0, 100'000));
    CLI11_PARSE(app, argumentCount, arguments);
    try {
        makeLargeLibrary(folder, size);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make-large-library: %s\n", error.what());
        return 1;
    }
    return 0;
}

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "Tests/Journeys/JourneyFixture.h"

namespace {

/** A file of the generated library as its list has it. */
struct ListedFile {
    std::string path, kind, outcome;
};

class BrokenLibraryTest : public JourneyFixture {
protected:
    BrokenLibraryTest() {
        // A sanitizer that looks behind every allocation would let many frames take longer than a file may.
        setenv("ASAN_OPTIONS", "fast_unwind_on_malloc=1:detect_leaks=0", true);
        const std::string command =
            std::string(MAKE_BROKEN_LIBRARY) + " '" + _folder.string() + "' --good 60 --broken 108";
        if (std::system(command.c_str()) != 0) std::abort();
        std::ifstream list(_folder / "manifest.tsv");
        for (std::string line; std::getline(list, line);) {
            std::istringstream fields(line);
            ListedFile file;
            std::getline(fields, file.path, '\t');
            std::getline(fields, file.kind, '\t');
            std::getline(fields, file.outcome);
            _files.push_back(file);
        }
    }
    ~BrokenLibraryTest() override {
        _before ? setenv("ASAN_OPTIONS", _before->c_str(), true) : unsetenv("ASAN_OPTIONS");
    }
    void startOnBrokenLibrary() {
        _helmo.reset();
        _helmo = std::make_unique<HelmoProcess>(
            std::vector<std::string>{"--data", (_home / "data").string(), "--music", _folder.string()},
            _home);
        openSongs();
    }
    std::ptrdiff_t linesNaming(const std::string& text) {
        return std::ranges::count_if(_helmo->log(),
                                     [&](const auto& line) { return line.find(text) != std::string::npos; });
    }
    std::size_t songCount() { return perform({{"do", "rows"}})["count"].get<std::size_t>() - 1; }

    const std::optional<std::string> _before = [] {
        const char* const options = std::getenv("ASAN_OPTIONS");
        return options ? std::optional<std::string>(options) : std::nullopt;
    }();
    const std::filesystem::path _folder = _home / "broken";
    std::vector<ListedFile> _files;
};

TEST_F(BrokenLibraryTest, EachBrokenFileIsNamedOnceAndAllOthersAreThere) {
    startOnBrokenLibrary();
    const auto isTrack = [](const ListedFile& file) { return file.outcome != "left out"; };
    EXPECT_EQ(songCount(), static_cast<std::size_t>(std::ranges::count_if(_files, isTrack)));
    for (const ListedFile& file : _files) {
        const auto lines = linesNaming((_folder / file.path).string());
        if (file.outcome != "kept") {
            EXPECT_EQ(lines, 1) << file.path << ": " << file.kind;
        }
        if (file.kind == "good") {
            EXPECT_EQ(lines, 0) << file.path;
        }
    }
    // All of it on the display, with what covers there are.
    for (int swipe = 0; swipe < 20; ++swipe) {
        perform({{"do", "drag"}, {"from", {400, 400}}, {"to", {400, 60}}, {"seconds", 0.1}});
        advance(1);
    }
    EXPECT_EQ(perform({{"do", "player"}})["state"], "stopped");

    startOnBrokenLibrary();
    EXPECT_EQ(songCount(), static_cast<std::size_t>(std::ranges::count_if(_files, isTrack)));
    EXPECT_EQ(linesNaming("Broken"), 0) << "read again though nothing changed";
}

}  // namespace

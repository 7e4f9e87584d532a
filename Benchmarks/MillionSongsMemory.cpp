#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "Benchmarks/MillionSongsLibrary.h"
#include "Benchmarks/Suite.h"

namespace helmo::benchmarks {

namespace fs = std::filesystem;

namespace {

/** Shows the list, goes about in it by the index and with the finger, and asks for statistics. */
void writeCommands(const fs::path& file) {
    std::ofstream commands(file);
    commands << R"({"do":"advance","seconds":1})" << '\n';
    for (const int y : {60, 150, 240, 330, 420, 100, 300})
        commands << R"({"do":"tap","x":786,"y":)" << y << "}\n";
    for (int drag = 0; drag < 5; ++drag)
        commands << R"({"do":"drag","from":[400,440],"to":[400,60],"seconds":0.1})" << '\n';
    commands << R"({"do":"rows"})" << '\n'
             << R"({"do":"advance","seconds":1})" << '\n'
             << R"({"do":"stats"})" << '\n';
}

/** Kilobytes that helmo itself tells, with the list of songs on the screen and sound ready. */
double residentKilobytes(const fs::path& folder) {
    const fs::path commands = folder / "commands", answers = folder / "answers";
    writeCommands(commands);
    const auto quoted = [](const fs::path& path) { return " '" + path.string() + "'"; };
    const std::string call = quoted(HELMO_PROGRAM) + " --headless --realtime --screen 800x480 --settings" +
                             quoted(folder / "settings-of-its-own.toml") + " --data" + quoted(folder) +
                             " --music" + quoted(folder) + " <" + quoted(commands) + " >" + quoted(answers);
    if (std::system(call.c_str()) != 0) throw std::runtime_error("helmo doesn't run");
    std::ifstream lines(answers);
    double rows = 0, kilobytes = 0;
    for (std::string line; std::getline(lines, line);) {
        const auto answer = nlohmann::json::parse(line, nullptr, false);
        if (!answer.is_object()) continue;
        rows = answer.value("count", rows);
        kilobytes = answer.value("rss_kb", kilobytes);
    }
    if (rows < 1'000'000) throw std::runtime_error("helmo doesn't show the list of songs");
    return kilobytes;
}

}  // namespace

Figures measureMillionSongsMemory() {
    constexpr double limit = 64;
    return {Figure::plain("songs_1m_rss_mb", limit, residentKilobytes(millionSongsFolder()) / 1024, 0, "MB")};
}

}  // namespace helmo::benchmarks

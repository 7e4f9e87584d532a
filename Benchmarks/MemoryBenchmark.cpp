#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "Benchmarks/MillionSongsFolder.h"
#include "Benchmarks/Suite.h"
#include "Host/TemporaryFolder.h"

namespace helmo::benchmarks {

namespace fs = std::filesystem;

namespace {

using Tabs = std::vector<std::string>;

/** Shows the lists one after the other, goes about in each by the index and with the finger, and asks for
   statistics. */
void writeCommands(const fs::path& file, const Tabs& tabs) {
    std::ofstream commands(file);
    for (const std::string& tab : tabs) {
        commands << R"({"do":"tap","text":")" << tab << "\"}\n"
                 << R"({"do":"advance","seconds":1})" << '\n';
        for (const int y : {60, 150, 240, 330, 420, 100, 300})
            commands << R"({"do":"tap","x":786,"y":)" << y << "}\n";
        for (int drag = 0; drag < 5; ++drag)
            commands << R"({"do":"drag","from":[400,440],"to":[400,60],"seconds":0.1})" << '\n';
        commands << R"({"do":"rows"})" << '\n';
    }
    commands << R"({"do":"advance","seconds":1})" << '\n' << R"({"do":"stats"})" << '\n';
}

/** Megabytes that helmo itself tells, with the lists shown and sound ready; `rows`: of the longest list. */
double residentMegabytes(const fs::path& folder, const Tabs& tabs, double rows) {
    const TemporaryFolder own;
    const fs::path commands = own.path() / "commands", answers = own.path() / "answers";
    writeCommands(commands, tabs);
    const auto quoted = [](const fs::path& path) { return " '" + path.string() + "'"; };
    const std::string call = quoted(HELMO_PROGRAM) + " --headless --realtime --screen 800x480 --settings" +
                             quoted(own.path() / "settings.toml") + " --data" + quoted(folder) + " --music" +
                             quoted(folder) + " <" + quoted(commands) + " >" + quoted(answers);
    if (std::system(call.c_str()) != 0) throw std::runtime_error("helmo doesn't run");
    std::ifstream lines(answers);
    double shown = 0, kilobytes = 0;
    for (std::string line; std::getline(lines, line);) {
        const auto answer = nlohmann::json::parse(line, nullptr, false);
        if (!answer.is_object()) continue;
        shown = std::max(shown, answer.value("count", 0.0));
        kilobytes = answer.value("rss_kb", kilobytes);
    }
    if (shown < rows) throw std::runtime_error("helmo doesn't show the lists");
    return kilobytes / 1024;
}

/** Of the libraries alone, each of which has done something. */
double floorMegabytes() {
    const auto close = [](FILE* stream) { pclose(stream); };
    const std::unique_ptr<FILE, decltype(close)> answer(
        popen("'" HELMO_MEMORY_PROGRAM "' '" HELMO_RESOURCES "/Images/HelmoPlayButton.svg'", "r"), close);
    double megabytes = 0;
    if (!answer || std::fscanf(answer.get(), "%lf", &megabytes) != 1)
        throw std::runtime_error("the libraries alone can't be measured");
    return megabytes;
}

Figure measured(const char* name, double limit, const fs::path& folder, const Tabs& tabs, double rows) {
    return Figure::plain(name, limit, residentMegabytes(folder, tabs, rows), floorMegabytes(), "MB");
}

}  // namespace

Figures measureMemory() {
    const Tabs all{"Songs", "Albums", "Artists"};
    return {measured("songs_1m_rss_mb", 64, millionSongsFolder(), {"Songs"}, 960'000),
            measured("rss_1m_mb", 64, millionSongsFolder(), all, 960'000),
            measured("rss_10k_mb", 40, tenThousandSongsFolder(), all, 8'000)};
}

}  // namespace helmo::benchmarks

#include "Host/Settings/CommandLine.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace helmo {

namespace {

constexpr int wrongUse = 2;

std::string checkScreen(const std::string& text) {
    return ScreenSize::fromText(text) ? "" : "\"" + text + "\" is no screen: expected " + ScreenSize::form;
}

std::string checkMode(const std::string& text) {
    return interactionModeFromText(text) ? ""
                                         : "\"" + text + "\" is no mode: expected touch, lowtouch or knob";
}

std::string checkPath(const std::string& text) { return text.empty() ? "the path is empty" : ""; }

struct Texts {
    std::vector<std::string> folders, moreFolders;
    std::string screen, mode, data, settings, resources, demo;
};

void describe(CLI::App& app, CommandLine& line, Texts& texts, const std::string& version) {
    app.set_version_flag("--version", "helmo " + version, "Show the version");
    app.set_help_flag("--help", "Show this help");
    app.add_option("folders", texts.folders, "Music folders")->type_name("DIR")->check(checkPath);
    app.add_option("--music", texts.moreFolders, "A music folder; may be given several times")
        ->type_name("DIR")
        ->type_size(1)
        ->allow_extra_args(false)
        ->check(checkPath);
    auto* headless =
        app.add_flag("--headless", line.headless,
                     "No window and no sound: commands from standard input, answers to standard output");
    app.add_flag("--realtime", line.realtime, "With --headless: a real clock and playback in real time")
        ->needs(headless);
    app.add_option("--screen", texts.screen, "Size in points, and pixels a point: 1280x720@1.5")
        ->type_name("SIZE")
        ->check(checkScreen);
    app.add_option("--mode", texts.mode, "How the display is worked: touch, lowtouch or knob")
        ->type_name("MODE")
        ->check(checkMode);
    app.add_flag("--fullscreen", line.fullscreen, "Fill the display");
    app.add_option("--data", texts.data, "Keep library and settings in this folder")
        ->type_name("DIR")
        ->check(checkPath);
    app.add_option("--settings", texts.settings, "Read and write this settings file")
        ->type_name("FILE")
        ->check(checkPath);
    app.add_option("--resources", texts.resources, "Take texts and images from this folder")
        ->type_name("DIR")
        ->check(checkPath);
    app.add_option("--demo", texts.demo, "Play this folder when no music folder is given or found")
        ->type_name("DIR")
        ->check(checkPath);
}

std::optional<std::filesystem::path> pathFrom(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional<std::filesystem::path>(text);
}

}  // namespace

std::variant<CommandLine, CommandLine::Exit> CommandLine::parse(const std::vector<std::string>& arguments,
                                                                const std::string& version) {
    CLI::App app("The music interface of a car's display.", "helmo");
    CommandLine line;
    Texts texts;
    try {
        describe(app, line, texts, version);
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForVersion& call) {
        return Exit{0, std::string(call.what()) + "\n"};
    } catch (const CLI::CallForHelp&) {
        return Exit{0, app.help()};
    } catch (const CLI::Error& error) {
        return Exit{wrongUse, "helmo: " + std::string(error.what()) + "\nTry \"helmo --help\".\n"};
    }
    for (const auto* folders : {&texts.folders, &texts.moreFolders})
        line.musicFolders.insert(line.musicFolders.end(), folders->begin(), folders->end());
    line.screen = ScreenSize::fromText(texts.screen);
    line.mode = interactionModeFromText(texts.mode);
    line.data = pathFrom(texts.data);
    line.settings = pathFrom(texts.settings);
    line.resources = pathFrom(texts.resources);
    line.demo = pathFrom(texts.demo);
    return line;
}

}  // namespace helmo

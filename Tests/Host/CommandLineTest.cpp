#include "Host/Settings/CommandLine.h"

namespace helmo {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

CommandLine::Exit exitFor(const std::vector<std::string>& arguments) {
    const auto result = CommandLine::parse(arguments, "1.2.3");
    const auto* exit = std::get_if<CommandLine::Exit>(&result);
    return exit ? *exit : CommandLine::Exit{-1, "it starts"};
}

TEST(CommandLineTest, TakesEveryOption) {
    const auto result = CommandLine::parse(
        {"/a", "--headless", "--realtime", "--music", "/b", "/c", "--screen", "800x480@1.5", "--mode", "knob",
         "--fullscreen", "--data", "d", "--settings=s.toml", "--resources", "r", "--music", "/e"},
        "");
    ASSERT_TRUE(std::holds_alternative<CommandLine>(result)) << std::get<CommandLine::Exit>(result).text;
    const auto& line = std::get<CommandLine>(result);
    EXPECT_THAT(line.musicFolders, ElementsAre("/a", "/c", "/b", "/e"));
    EXPECT_TRUE(line.headless && line.realtime && line.fullscreen);
    EXPECT_EQ(line.screen, (ScreenSize{800, 480, 1.5}));
    EXPECT_EQ(line.mode, InteractionMode::Knob);
    EXPECT_EQ(line.data, "d");
    EXPECT_EQ(line.settings, "s.toml");
    EXPECT_EQ(line.resources, "r");

    const auto plain = std::get<CommandLine>(CommandLine::parse({}, ""));
    EXPECT_FALSE(plain.screen || plain.mode || plain.data || plain.settings || plain.headless);
}

TEST(CommandLineTest, WrongUseEndsWithASentenceAndStatus2) {
    for (const auto& [arguments, named] : std::vector<std::pair<std::vector<std::string>, std::string>>{
             {{"--fast"}, "--fast"},
             {{"--screen"}, "--screen"},
             {{"--screen", "1280"}, "\"1280\" is no screen: expected WIDTHxHEIGHT"},
             {{"--screen", "199x720"}, "199x720"},
             {{"--screen", "1280x8193"}, "1280x8193"},
             {{"--screen", "1280x720@0.4"}, "0.4"},
             {{"--screen", "1280x720@4.1"}, "4.1"},
             {{"--screen", "1280x720@nan"}, "nan"},
             {{"--screen", "1280x720@"}, "1280x720@"},
             {{"--screen", "1280x720 "}, "1280x720 "},
             {{"--screen", "1e3x720"}, "1e3x720"},
             {{"--mode", "3"}, "\"3\" is no mode: expected touch, lowtouch or knob"},
             {{"--realtime"}, "--headless"},
             {{"--data", ""}, "empty"},
             {{"--music"}, "--music"}}) {
        const auto exit = exitFor(arguments);
        EXPECT_EQ(exit.status, 2) << arguments.front();
        EXPECT_THAT(exit.text, HasSubstr(named));
        EXPECT_TRUE(exit.text.starts_with("helmo: ")) << exit.text;
    }
}

TEST(CommandLineTest, VersionAndHelpEndWell) {
    EXPECT_EQ(exitFor({"--version"}).text, "helmo 1.2.3\n");
    EXPECT_EQ(exitFor({"--version"}).status, 0);
    EXPECT_EQ(exitFor({"--help"}).status, 0);
    EXPECT_THAT(exitFor({"--help"}).text, HasSubstr("--realtime"));
}

}  // namespace
}  // namespace helmo

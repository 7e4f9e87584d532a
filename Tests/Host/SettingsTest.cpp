#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>

#include "Host/Settings/IcuLocaleServices.h"
#include "Host/Settings/Settings.h"
#include "Host/Settings/XdgPaths.h"
#include "Host/TemporaryFolder.h"

namespace helmo {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using zornic::DateStyle;
using zornic::NumberStyle;
using zornic::Ordering;

class SettingsTest : public testing::Test {
protected:
    SettingsTest() { std::filesystem::create_directories(file.parent_path()); }

    void write(const std::string& text) { std::ofstream(file, std::ios::binary) << text; }
    static std::string content(const std::filesystem::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::vector<std::string> problems() {
        std::vector<std::string> lines;
        for (const auto& problem : readSettings(file).problems) {
            auto line = problem.text();
            EXPECT_THAT(line, StartsWith(file.string()));
            lines.push_back(line.substr(file.string().size()));
        }
        return lines;
    }
    /** Sets what `change` does to the values, and waits until it is written. */
    void change(const std::function<void(SettingsValues&)>& change) {
        Settings settings(file, [this](const std::string& line) {
            std::lock_guard lock(mutex);
            log += line + "\n";
        });
        auto values = settings.values();
        change(values);
        settings.setValues(values);
    }

    const TemporaryFolder temporary;
    const std::filesystem::path folder = temporary.path(), file = folder / "helmo" / "settings.toml";
    std::mutex mutex;
    std::string log;
};

TEST_F(SettingsTest, WrongValuesAreNamedAndEverythingElseHolds) {
    write(
        "# my car\n"
        "music_folders = [\"/srv/music\", 7, \"Music\"]\n"
        "tabs = [\"songs\", \"sogns\", \"albums\", \"songs\"]\n"
        "sort_by_artist = \"yes\"\n"
        "colour = \"red\"\n"
        "repeat = 3\n"
        "screen = \"100x100\"\n"
        "shuffle = 1\n"
        "mode = 2\n"
        "fullscreen = true\n"
        "cover_cache_mb = 0\n");
    const auto values = readSettings(file).values;
    EXPECT_EQ(values.musicFolders, std::vector<std::filesystem::path>{"/srv/music"});
    EXPECT_THAT(values.tabs, ElementsAre("songs", "albums"));
    EXPECT_EQ(values.shuffleType, 1);
    EXPECT_EQ(values.mode, InteractionMode::Knob);
    EXPECT_TRUE(values.fullscreen);
    EXPECT_FALSE(values.sortByArtist);
    EXPECT_EQ(values.repeatType, 0);
    EXPECT_EQ(values.screen, ScreenSize());
    EXPECT_THAT(
        problems(),
        ElementsAre(":2: music_folders: found 7, expected the absolute path of a folder",
                    HasSubstr("found \"Music\""), StartsWith(":3: tabs: found \"sogns\", expected a tab"),
                    StartsWith(":3: tabs: found \"songs\""),
                    ":4: sort_by_artist: found \"yes\", expected true or false",
                    ":5: \"colour\" is not a setting", StartsWith(":6: repeat: found 3, expected"),
                    StartsWith(":7: screen: found \"100x100\", expected WIDTHxHEIGHT"),
                    ":11: cover_cache_mb: found 0, expected a whole number from 1 to 1024"));

    write("\"two\\nlines\" = 1\nmode = t\x17\n");
    EXPECT_THAT(problems(), ElementsAre(":1: \"two lines\" is not a setting", StartsWith(":2: ")));
    EXPECT_THAT(problems().back(), Not(HasSubstr("\x17"))) << "a problem is one line of a log";

    write("tabs = []\nmusic_folders = \"/srv\"\n");
    EXPECT_EQ(readSettings(file).values, SettingsValues());
    EXPECT_EQ(problems().size(), 2u);
}

TEST_F(SettingsTest, BrokenFileGivesWhatStandsBeforeTheSlipAndIsKept) {
    for (const std::string broken : {"shuffle = 1\nrepeat = = 2\nfullscreen = true\n",
                                     "shuffle = 1\n\nlanguage = \"\"\"de\nfullscreen = true\nrepeat = 1\n"}) {
        write(broken);
        log.clear();
        const auto values = readSettings(file).values;
        EXPECT_EQ(values.shuffleType, 1);
        EXPECT_EQ(values.repeatType, 0);
        EXPECT_FALSE(values.fullscreen);
        ASSERT_EQ(problems().size(), 1u);

        change([](SettingsValues& changed) { changed.repeatType = 2; });
        EXPECT_EQ(readSettings(file).values.shuffleType, 1);
        EXPECT_EQ(readSettings(file).values.repeatType, 2);
        EXPECT_TRUE(problems().empty());
        EXPECT_THAT(log, HasSubstr("settings.toml.broken-"));
        bool isKept = false;
        for (const auto& entry : std::filesystem::directory_iterator(file.parent_path()))
            isKept = isKept || (entry.path() != file && content(entry.path()) == broken);
        EXPECT_TRUE(isKept) << broken;
    }
    write(std::string("shuffle = 1\nlanguage = \"\xff\"\n") + '\0');
    EXPECT_EQ(problems().size(), 1u);
    write(std::string(5000, '[') + "\n" + std::string(2 << 20, 'a'));
    EXPECT_EQ(problems().size(), 1u);
}

TEST_F(SettingsTest, SavingChangesOnlyWhatChangedAndKeepsCommentsAndStrangeSettings) {
    write(
        "# Für die Fahrt\n"
        "tabs = [ # the short list\n"
        "  \"songs\", \"albums\" ] # ü, then nothing\n"
        "colour = 'rot' # später\n"
        "mode='knob'# at the wheel\n"
        "\n"
        "[radio]\n"
        "shuffle = 7\n");
    change([](SettingsValues& values) {
        values.mode = InteractionMode::LowTouch;
        values.tabs = {"artists"};
        values.shuffleType = 1;
    });
    EXPECT_EQ(content(file),
              "# Für die Fahrt\n"
              "tabs = [\"artists\"] # ü, then nothing\n"
              "colour = 'rot' # später\n"
              "mode=\"lowtouch\"# at the wheel\n"
              "shuffle = 1\n"
              "\n"
              "[radio]\n"
              "shuffle = 7\n");

    // A setting in a shape that can't be edited in place costs the comments, never another setting.
    write("# lost\ncolour = 1\n[mode]\nfast = true\n");
    change([](SettingsValues& values) { values.mode = InteractionMode::Knob; });
    EXPECT_THAT(content(file), AllOf(HasSubstr("colour = 1"), Not(HasSubstr("fast"))));
    EXPECT_EQ(readSettings(file).values.mode, InteractionMode::Knob);

    // Edited by hand while helmo runs: that stays as well.
    Settings settings(file);
    write("repeat = 1\nlanguage = \"de\"");
    auto values = settings.values();
    for (int type : {1, 0, 2}) {
        values.repeatType = type;
        settings.setValues(values);
    }
    settings.finishWriting();
    EXPECT_EQ(content(file), "repeat = 2\nlanguage = \"de\"");
}

TEST_F(SettingsTest, NewFileHoldsEverySettingAndReadsBackTheSame) {
    SettingsValues values;
    values.musicFolders = {"/srv/\"quoted\" \\ größer", "/b"};
    values.tabs = {"radio", "songs"};
    values.sortByArtist = values.groupByAlbumArtist = values.fullscreen = true;
    values.brivo = false;
    values.shuffleType = 1;
    values.repeatType = 2;
    values.screen = {800, 480, 1.25};
    values.mode = InteractionMode::Knob;
    values.language = "pt-BR";
    values.coverCacheMegabytes = 8;
    std::filesystem::remove_all(file.parent_path());
    change([&](SettingsValues& all) { all = values; });
    EXPECT_EQ(log, "");
    EXPECT_EQ(readSettings(file).values, values);
    EXPECT_TRUE(problems().empty());

    // A link leads to the file that is kept elsewhere; nothing else is left lying about.
    const auto target = folder / "dotfiles.toml";
    std::filesystem::rename(file, target);
    std::filesystem::create_symlink(target, file);
    change([](SettingsValues& all) { all.language = ""; });
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_EQ(readSettings(target).values.language, "");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file.parent_path()), {}), 1);
}

TEST_F(SettingsTest, FailedWriteIsReportedAndMadeUpForLater) {
    std::filesystem::remove_all(file.parent_path());
    std::ofstream(file.parent_path()) << "in the way";
    Settings settings(file, [this](const std::string& line) { log += line; });
    auto values = settings.values();
    values.repeatType = 1;
    settings.setValues(values);
    settings.finishWriting();
    EXPECT_THAT(log, HasSubstr("can't be written"));
    std::filesystem::remove(file.parent_path());
    std::filesystem::create_directories(file.parent_path());
    write("repeat = 0\n");
    values.shuffleType = 1;
    settings.setValues(values);
    settings.finishWriting();
    EXPECT_EQ(content(file), "repeat = 1\nshuffle = 1\n");
}

TEST_F(SettingsTest, FoldersFollowTheDesktop) {
    std::map<std::string, std::string> variables{{"HOME", (folder / "home").string()}};
    const auto environment = [&](const std::string& name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
    EXPECT_EQ(XdgPaths(environment).config(), folder / "home/.config/helmo");
    EXPECT_EQ(XdgPaths(environment).music(), folder / "home/Music");
    variables["XDG_DATA_HOME"] = "/data";
    variables["XDG_CACHE_HOME"] = "relative";
    variables["XDG_CONFIG_HOME"] = folder.string();
    EXPECT_EQ(XdgPaths(environment).data(), "/data/helmo");
    EXPECT_EQ(XdgPaths(environment).cache(), folder / "home/.cache/helmo");
    const auto music = [&](const std::string& value) {
        std::ofstream(folder / "user-dirs.dirs")
            << "# music\nXDG_VIDEOS_DIR=\"/v\"\nXDG_MUSIC_DIR=" << value << "\n";
        return XdgPaths(environment).music();
    };
    EXPECT_EQ(music("\"$HOME/Meine \\\"Musik\\\"\""), folder / "home/Meine \"Musik\"");
    EXPECT_EQ(music("\"/srv/music\""), "/srv/music");
    EXPECT_EQ(music("\"$HOME/\""), folder / "home/Music");
    EXPECT_EQ(music("broken"), folder / "home/Music");
}

TEST(IcuLocaleServicesTest, FollowsLanguageAndZone) {
    const IcuLocaleServices german("de", "Europe/Berlin"), turkish("tr", "UTC"),
        english("en-US", "America/New_York");
    EXPECT_EQ(german.lowercased("ÄRGER ΣΑΣ"), "ärger σας");
    EXPECT_EQ(turkish.lowercased("IŞIK"), "ışık");
    EXPECT_EQ(german.caseInsensitiveCompare("STRASSE", "Straße"), Ordering::Same);
    EXPECT_EQ(german.caseInsensitiveCompare("a", "B"), Ordering::Ascending);
    EXPECT_EQ(german.caseInsensitiveCompare("b", "A"), Ordering::Descending);
    EXPECT_EQ(german.formattedNumber(1234567.5, NumberStyle::Decimal), "1.234.567,5");
    EXPECT_EQ(english.formattedNumber(1234.4, NumberStyle::None), "1234");
    EXPECT_EQ(english.formattedNumber(0.25, NumberStyle::Percent), "25%");
    const zornic::Date newYear{std::chrono::sys_days{std::chrono::year{2024} / 1 / 1} +
                               std::chrono::minutes(30)};
    EXPECT_EQ(german.formattedDate(newYear, DateStyle::Medium, DateStyle::None), "01.01.2024");
    EXPECT_EQ(english.formattedDate(newYear, DateStyle::Long, DateStyle::None), "December 31, 2023");
    EXPECT_EQ(german.formattedDate(newYear, DateStyle::None, DateStyle::Short), "01:30");
    EXPECT_EQ(german.formattedDate(newYear, DateStyle::None, DateStyle::None), "");
    EXPECT_EQ(german.yearOf(newYear), 2024);
    EXPECT_EQ(english.yearOf(newYear), 2023);
    EXPECT_EQ(german.timeZoneName(), "Europe/Berlin");
    EXPECT_EQ(IcuLocaleServices("de", "Nowhere/City").timeZoneName(), "UTC");
}

TEST(IcuLocaleServicesTest, LanguagesComeFromTheEnvironmentInOrder) {
    std::map<std::string, std::string> variables;
    const auto languages = [&] {
        return preferredLanguages([&](const std::string& name) { return std::optional(variables[name]); });
    };
    EXPECT_THAT(languages(), ElementsAre());
    variables = {{"LANG", "de_AT.UTF-8@euro"}};
    EXPECT_THAT(languages(), ElementsAre("de-AT", "de"));
    variables["LANGUAGE"] = "pt_BR:fr:de";
    EXPECT_THAT(languages(), ElementsAre("pt-BR", "pt", "fr", "de", "de-AT"));
    variables["LC_ALL"] = "C.UTF-8";
    EXPECT_THAT(languages(), ElementsAre());
}

}  // namespace
}  // namespace helmo

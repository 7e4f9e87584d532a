#include <cstdlib>
#include <fstream>

#include <taglib/id3v2tag.h>
#include <taglib/tpropertymap.h>
#include <taglib/wavfile.h>

#include "Tests/Journeys/JourneyFixture.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

const std::string nowPlayingScreen = "ZRNMusicNowPlayingViewController";
const std::string detailScreen = "ZRNAlbumsDetailViewController";

/** A driver who looks into everything that he owns, on a touch display or with nothing but the knob. */
class LibraryWalkTest : public JourneyFixture, public testing::WithParamInterface<const char*> {
protected:
    bool hasKnob() const { return GetParam() == std::string("knob"); }
    void choose(const std::string& text) {
        if (!hasKnob()) return tap(text);
        turn(-100);
        turnTo(text);
        press();
    }
    void leave() {
        if (!hasKnob()) return back();
        turn(-100);
        ASSERT_EQ(focused().value("image", ""), "ToolkitBackChevron");
        press();
    }
    Json list() { return perform({{"do", "rows"}}); }
    /** What the front list's row of that title says. */
    Json row(const std::string& title) {
        const Json rows = list()["rows"];
        for (const Json& row : rows)
            if (row["title"] == title) return row;
        ADD_FAILURE() << "no row " << title << " on " << frontScreen();
        return Json::object();
    }
    std::string frontTitle() { return perform({{"do", "screens"}})["stack"].back()["title"]; }
    void expectList(const std::string& title, const Texts& expected) {
        Texts found;
        const Json rows = list()["rows"];
        for (const Json& row : rows) found.push_back(row["title"]);
        EXPECT_EQ(frontTitle(), title);
        EXPECT_THAT(found, ElementsAreArray(expected)) << "on " << title;
    }
    /** Plays a row of the front list and comes back to it. */
    void play(const std::string& title, const std::string& song, int count) {
        choose(title);
        ASSERT_EQ(frontScreen(), nowPlayingScreen) << title;
        const Json playing = player();
        EXPECT_EQ(playing["item"]["title"], song);
        EXPECT_EQ(playing["state"], "playing");
        EXPECT_EQ(playing["count"], count) << "what follows " << song;
        leave();
    }

    void makeLibrary() {
        fs::remove_all(_music);
        song("Ann/First/1.wav", {"Dawn", "Ann", "First", "1", "Folk", "Bach"});
        song("Ann/First/2.wav", {"Dusk", "Ann", "First", "2", "Folk", "Bach"});
        song("Ann/Second/1.wav", {"Noon", "Ann", "Second", "1", "Folk", ""});
        song("Ben/Third/1.wav", {"Rain", "Ben", "Third", "1", "Jazz", ""});
        song("Hits/1.wav", {"Ash", "Cora", "Hits", "1", "Folk", "", "1"});
        song("Hits/2.wav", {"Elm", "Dan", "Hits", "2", "Pop", "", "1"});
        for (const char* part : {"01 - Harbour.wav", "02 - Sea.wav"})
            song("Audiobooks/Saga/" + fs::path(part).string(), {});
        write("Mix.m3u8", "Ben/Third/1.wav\nnot there yet.wav\nAnn/First/1.wav\n");
        write("Empty.m3u", "not there yet.wav\n");
        write("Playlists/Trips/Road.m3u", "../../Ann/Second/1.wav\n");
    }

private:
    void write(const std::string& file, const std::string& text) {
        fs::create_directories((_music / file).parent_path());
        std::ofstream(_music / file) << text;
    }
    /** Title, artist, album, number, genre, composer, compilation. */
    void song(const std::string& file, const Texts& values) {
        fs::create_directories((_music / file).parent_path());
        addSong(file, 20);
        if (values.empty()) return;
        static constexpr const char* names[] = {"TITLE", "ARTIST",   "ALBUM",      "TRACKNUMBER",
                                                "GENRE", "COMPOSER", "COMPILATION"};
        TagLib::PropertyMap properties;
        for (std::size_t at = 0; at < values.size(); ++at)
            if (!values[at].empty()) properties[names[at]] = TagLib::StringList(TagLib::String(values[at]));
        TagLib::RIFF::WAV::File wave((_music / file).c_str());
        wave.ID3v2Tag()->setProperties(properties);
        ASSERT_TRUE(wave.save());
    }
};

TEST_P(LibraryWalkTest, EveryCategoryLeadsToItsSongs) {
    makeLibrary();
    start({"--mode", GetParam()});
    Texts tabs;
    const Json all = perform({{"do", "tabs"}})["tabs"];
    for (const Json& tab : all) tabs.push_back(tab["title"]);
    EXPECT_THAT(tabs, ElementsAre("Artists", "Albums", "Songs", "Playlists", "Genres", "Compilations",
                                  "Composers", "Audiobooks", "Brivo"));

    expectList("", {"Ann", "Ben", "Cora", "Dan"});
    EXPECT_THAT(list()["index"], ElementsAre("A", "B", "C", "D"));
    choose("Ann");
    expectList("Ann", {"Shuffle", "Dawn", "Dusk", "Noon"});
    for (const char* header : {"First", "Second"}) EXPECT_TRUE(isOnDisplay(header));
    play("Dusk", "Dusk", 3);
    EXPECT_EQ(row("Dusk")["playing"], true);
    EXPECT_EQ(row("Dawn")["playing"], false);
    leave();
    EXPECT_EQ(row("Ann")["playing"], true);
    choose("Ben");
    expectList("Ben", {"Rain"});
    leave();

    choose("Albums");
    expectList("Albums", {"First", "Hits", "Second", "Third"});
    EXPECT_EQ(row("First")["detail"], "Ann");
    choose("First");
    EXPECT_EQ(frontScreen(), detailScreen);
    expectList("First", {"Dawn", "Dusk"});
    play("Dawn", "Dawn", 2);
    leave();

    choose("Songs");
    expectList("Songs", {"Shuffle", "Ash", "Dawn", "Dusk", "Elm", "Noon", "Rain"});
    EXPECT_EQ(row("Rain")["detail"], "Ben Third");
    play("Rain", "Rain", 6);

    choose("Playlists");
    expectList("Playlists", {"Empty", "Mix", "Trips"});
    EXPECT_EQ(row("Trips")["accessory"], "disclosure");
    choose("Mix");
    expectList("Mix", {"Shuffle", "Rain", "Dawn"});
    EXPECT_THAT(list()["index"], IsEmpty()) << "a playlist is in its own order";
    play("Dawn", "Dawn", 2);
    leave();
    choose("Trips");
    expectList("Trips", {"Road"});
    choose("Road");
    play("Noon", "Noon", 1);
    leave();
    leave();
    choose("Empty");
    EXPECT_EQ(frontTitle(), "Empty");
    EXPECT_TRUE(isOnDisplay("Nothing here yet"));
    leave();

    choose("Genres");
    expectList("Genres", {"Folk", "Jazz", "Pop"});
    choose("Folk");
    EXPECT_TRUE(isOnDisplay("Folk")) << "in the bar, for the list is every artist's";
    expectList("", {"Shuffle", "Ann", "Cora"});
    choose("Cora");
    expectList("Cora", {"Ash"});
    leave();
    leave();
    choose("Jazz");
    EXPECT_EQ(frontScreen(), detailScreen) << "the only artist's albums at once";
    expectList("Ben", {"Rain"});
    play("Rain", "Rain", 1);
    leave();

    choose("Compilations");
    expectList("Compilations", {"Hits"});
    EXPECT_EQ(row("Hits")["accessory"], "disclosure");
    choose("Hits");
    expectList("Hits", {"Ash", "Elm"});
    play("Elm", "Elm", 2);
    leave();

    choose("Composers");
    expectList("Composers", {"Bach"});
    choose("Bach");
    expectList("Bach", {"Dawn", "Dusk"});
    leave();

    // The button of what plays has taken their room in the bar.
    choose("More");
    choose("Audiobooks");
    expectList("Audiobooks", {"Saga"});
    choose("Saga");
    expectList("Saga", {"Part 1 of 2", "Part 2 of 2"});
    play("Part 2 of 2", "Sea", 2);
    expectList("Saga", {"Part 1 of 2", "Part 2 of 2"});
}

INSTANTIATE_TEST_SUITE_P(Modes, LibraryWalkTest, testing::Values("touch", "lowtouch", "knob"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace

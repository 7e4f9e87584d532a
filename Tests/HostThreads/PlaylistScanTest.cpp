#include "Tests/HostThreads/ScanFixture.h"

namespace helmo {
namespace {

namespace Playlist = zornic::MediaPlaylistProperty;
using zornic::MediaGrouping;
using zornic::MediaPredicate;

class PlaylistScanTest : public ScanFixture<NameReader> {
protected:
    /** A line of the log about what is in the music folder. */
    std::string said(const std::string& place, const std::string& what) const {
        return "scan: " + (music() / place).string() + ": " + what + "\n";
    }
    std::shared_ptr<zornic::MediaPlaylist> list(const std::string& name) const {
        const auto lists = query(MediaGrouping::Playlist, {MediaPredicate::property(Playlist::Name, name)});
        return std::dynamic_pointer_cast<zornic::MediaPlaylist>(lists->collections()->entityAtIndex(0));
    }
    Texts songs(const std::string& name) const {
        const auto found = list(name);
        return found ? titles(*found->itemsQuery()) : Texts{"(no list)"};
    }
    /** What the driver sees in a folder, or at the top. */
    Texts level(const std::string& folder = {}) const {
        const auto parent = folder.empty() ? zornic::PersistentID{0} : list(folder)->persistentID();
        return texts(
            *query(MediaGrouping::Playlist, {MediaPredicate::property(Playlist::ParentPersistentID, parent),
                                             MediaPredicate::property(Playlist::IsHidden, false)})
                 ->collections(),
            Playlist::Name);
    }
};

std::string utf16(const std::string& ascii, bool isBigEndian) {
    std::string text = isBigEndian ? "\xfe\xff" : "\xff\xfe";
    for (const char letter : ascii)
        text += isBigEndian ? std::string(1, '\0') + letter : letter + std::string(1, '\0');
    return text;
}

TEST_F(PlaylistScanTest, EveryKindOfFileAndWayToNameASongIsUnderstood) {
    for (const char* name : {"a/Ärger.mp3", "a/100% two.mp3", "a/three.mp3"}) write(name);
    const std::string folder = music().string();
    const Texts all{"Ärger", "100% two", "three"};
    write("a/drive.m3u",
          "\xef\xbb\xbf#EXTM3U\r\n#PLAYLIST:On the Road\r\n#EXTINF:1,x\r\nthree.mp3\r\n"
          "\xc3\x84rger.mp3\n http://example.org/x.mp3\n..\\a\\three.mp3\r" +
              folder + "/a/100% two.mp3\nfile://" + folder + "/a/100%25%20two.mp3");
    write("latin1.m3u", "a/\xc4rger.mp3\na/100% two.mp3\nfile:///C:/a/three.mp3\n");
    write("drives.M3U8",
          "D:\\music\\a\\\xc3\x84rger.mp3\n\\a\\100% two.mp3\ne:/a/three.mp3\n\\\\pc\\a\\x.mp3\n");
    write("case.m3u", "A/THREE.mp3\na\\A\xcc\x88rger.MP3\na/four.mp3\n");
    write("little.m3u", utf16("a/three.mp3\r\n", false));
    write("big.m3u", utf16("#PLAYLIST:Big\na/three.mp3", true));
    write("pls.pls",
          "[other]\nFile9=a/three.mp3\n[Playlist]\nX-GNOME-Title=Numbers\nFile10=a/three.mp3\n"
          "file2 = a/100% two.mp3\nTitle2=x\nFile1=a/\xc3\x84rger.mp3\nFile3=http://a.b/c.mp3\n");
    write("x.xspf",
          "<?xml version='1.0'?><playlist xmlns='http://xspf.org/ns/0/'><title>X &amp; Y</title>"
          "<trackList><track><title>no</title><location>a/%C3%84rger.mp3</location></track><track>"
          "<location>http://a.b/c.mp3</location><location> a/100%25%20two.mp3\n</location></track>"
          "<track><location>urn:x</location></track><track><location><![CDATA[file://" +
              folder + "]]>/a/three.mp3</location></track></trackList></playlist>");
    write("old.xspf",
          "<playlist><trackList><track><location>a/\xc4rger.mp3</location></track></trackList></playlist>");
    write("named.xspf",
          "<?xml version='1.0' encoding='windows-1252'?><playlist><trackList><track><location>a/three.mp3"
          "</location></track></trackList></playlist>");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(level(), (Texts{"Big", "case", "drives", "latin1", "little", "named", "Numbers", "old",
                              "On the Road", "X & Y"}));
    EXPECT_EQ(songs("On the Road"), (Texts{"three", "Ärger", "three", "100% two", "100% two"}));
    for (const char* name : {"latin1", "drives", "Numbers", "X & Y"}) EXPECT_EQ(songs(name), all) << name;
    for (const char* name : {"little", "Big", "named"}) EXPECT_EQ(songs(name), Texts{"three"}) << name;
    EXPECT_EQ(songs("old"), Texts{"Ärger"});
    EXPECT_EQ(songs("case"), (Texts{"three", "Ärger"})) << "as other systems spell what is there";
    _library->removePlaylist(*list("old"));
    ASSERT_TRUE(zornic::BackgroundWork::waitUntilIdle(std::chrono::seconds(10)));
    EXPECT_TRUE(list("old")) << "what is a file is not the driver's to delete here";
}

TEST_F(PlaylistScanTest, MissingSongsAreGapsThatFillWithoutReadingAgain) {
    write("a/one.mp3");
    const auto file = write("list.m3u", "a/late.mp3\na/one.mp3\nb/moved.mp3\na/late.mp3\n");
    write("gone.m3u", "c/never.mp3\n");
    scan();
    EXPECT_EQ(songs("list"), Texts{"one"});
    EXPECT_EQ(list("gone")->itemsQuery()->_countOfItems(), 0u);
    // Other contents that nobody sees: size and time are the same.
    const auto time = fs::last_write_time(file);
    const std::string others(fs::file_size(file), '#');
    std::ofstream(file, std::ios::binary) << others;
    fs::last_write_time(file, time);
    write("a/late.mp3");
    const auto elsewhere = write("a/moved.mp3");
    scan();
    EXPECT_EQ(songs("list"), (Texts{"late", "one", "late"}));
    fs::create_directories(music() / "b");
    fs::rename(elsewhere, music() / "b/moved.mp3");
    fs::rename(music() / "a", _folder / "away");
    scan();
    EXPECT_EQ(songs("list"), Texts{"moved"});
    fs::rename(_folder / "away", music() / "a");
    scan();
    EXPECT_EQ(songs("list"), (Texts{"late", "one", "moved", "late"}));
}

TEST_F(PlaylistScanTest, AListKeepsItsIdentityWhenItIsRenamedOrItsMediumIsElsewhere) {
    for (const char* place : {"x/one.mp3", "x/two.mp3"}) write(place);
    write("x/Lists/a.m3u", "../one.mp3\n");
    write("x/Lists/b.m3u", "../two.mp3\n");
    scan();
    const auto identities = [&](const Texts& names) {
        std::vector<zornic::PersistentID> ids;
        for (const auto& name : names) ids.push_back(list(name) ? list(name)->persistentID() : 0);
        return ids;
    };
    const auto before = identities({"a", "b", "Lists"});
    scan();
    EXPECT_EQ(identities({"a", "b", "Lists"}), before);
    fs::rename(music() / "x/Lists/a.m3u", music() / "x/Lists/c.m3u");
    scan();
    EXPECT_EQ(identities({"c", "b", "Lists"}), before);
    EXPECT_EQ(list("a"), nullptr);
    fs::rename(music() / "x", music() / "y");
    scan();
    EXPECT_EQ(identities({"c", "b", "Lists"}), before);
    EXPECT_EQ(level("Lists"), (Texts{"b", "c"}));
    EXPECT_EQ(songs("c"), Texts{"one"});
    // A dot hides it, and taking the dot away shows the same list.
    fs::rename(music() / "y/Lists/c.m3u", music() / "y/Lists/.c.m3u");
    write("y/Lists/._c.m3u", "not a list");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(level("Lists"), Texts{"b"});
    EXPECT_EQ(level(), Texts{"Lists"});
    EXPECT_TRUE(list("c")->isHidden());
    EXPECT_EQ(identities({"c"}), std::vector{before[0]});
    fs::remove_all(music() / "y");
    scan();
    EXPECT_EQ(level(), Texts{});
}

TEST_F(PlaylistScanTest, DirectoriesForPlaylistsAreFolders) {
    write("Artist/Album/song.mp3");
    for (const char* place : {"top", "Artist/best", "Artist/Album/album", "Lists/road", "Lists/deep/er/sea",
                              "Artist/Only Lists/own", "Artist/PLAYLISTS/plain", "Artist/PLAYLISTS/Rock/rock",
                              "Artist/PLAYLISTS/Rock/Hard/Rock/stone"})
        write(std::string(place) + ".m3u", (music() / "Artist/Album/song.mp3").string());
    write("Artist/PLAYLISTS/Rock/riff.mp3");
    scan();
    EXPECT_EQ(level(), (Texts{"album", "best", "Lists", "Only Lists", "plain", "Rock", "top"}));
    EXPECT_EQ(level("Lists"), (Texts{"er", "road"}));
    EXPECT_EQ(level("er"), Texts{"sea"});
    EXPECT_EQ(level("Only Lists"), Texts{"own"});
    EXPECT_EQ(level("Rock"), (Texts{"Hard", "rock"}));
    EXPECT_EQ(level("Hard"), Texts{"Rock"});
    EXPECT_EQ(songs("Lists"), (Texts{"song", "song"}));
    EXPECT_TRUE(list("Lists")->isFolder());
    EXPECT_FALSE(list("Lists")->isDeletable());
    // Music makes it a place of music; without lists there is no folder.
    write("Lists/new.mp3");
    fs::remove(music() / "Artist/Only Lists/own.m3u");
    scan();
    EXPECT_EQ(level(), (Texts{"album", "best", "er", "plain", "road", "Rock", "top"}));
    EXPECT_EQ(songs("Lists"), Texts{"(no list)"});
}

TEST_F(PlaylistScanTest, ListsInListsStandInTheirPlaceAndCirclesAreCut) {
    for (const char* place : {"1.mp3", "2.mp3", "3.mp3"}) write(place);
    write("self.m3u", "1.mp3\nself.m3u\n2.mp3\n");
    write("all.m3u", "1.mp3\nsub/part.pls\n3.mp3\ngone.m3u\n");
    write("sub/part.pls", "[playlist]\nFile1=../2.mp3\nFile2=../all.m3u\n");
    for (int at = 0; at < 10; ++at)
        write("d" + std::to_string(at) + ".m3u", "d" + std::to_string(at + 1) + ".m3u\n1.mp3\n");
    std::string many;
    for (int at = 0; at < 102; ++at) many += "self.m3u\n";
    write("many.m3u", many + "3.mp3\n");
    std::string log = scan();
    EXPECT_NE(log.find(said("self.m3u:2", "the playlist names itself")), std::string::npos) << log;
    EXPECT_NE(log.find(said("sub/part.pls:3", "playlists name each other in a circle")), std::string::npos);
    EXPECT_NE(log.find(said("d7.m3u:1", "playlists name others more than 8 deep")), std::string::npos);
    EXPECT_NE(
        log.find(said("many.m3u:101", "too many playlists are named, the rest is left out (and 1 more)")),
        std::string::npos);
    EXPECT_EQ(songs("self"), (Texts{"1", "2"}));
    EXPECT_EQ(songs("all"), (Texts{"1", "2", "3"}));
    EXPECT_EQ(songs("part"), (Texts{"2", "1", "3"}));
    EXPECT_EQ(songs("d0").size(), 8u);
    EXPECT_EQ(songs("many").size(), 201u);
    write("sub/part.pls", "[playlist]\nFile1=../3.mp3\n");
    write("gone.m3u", "2.mp3");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(songs("all"), (Texts{"1", "3", "3", "2"}));
}

TEST_F(PlaylistScanTest, WhatIsOutOfTheMusicFoldersIsRefused) {
    write("in.mp3");
    write("lists/out.m3u",
          "../../other/x.mp3\n../in.mp3\n/etc/x.mp3\nfile:///%2e%2e/x.mp3\n"
          "C:\\..\\..\\x.mp3\n" +
              music().string() + "more/x.mp3\n../../music/in.mp3\n");
    fs::create_directories(_folder / "other");
    std::ofstream(_folder / "other/x.mp3") << "sound";
    EXPECT_EQ(scan(), said("lists/out.m3u:1", "the entry leads out of the music folders (and 4 more)"));
    EXPECT_EQ(songs("out"), (Texts{"in", "in"}));
    // Another music folder, and it is in.
    scan({music(), _folder / "other"});
    EXPECT_EQ(songs("out"), (Texts{"x", "in", "in"}));
    EXPECT_EQ(scan({music(), _folder / "other"}), "");
}

TEST_F(PlaylistScanTest, WhatIsTooLongOrNoListIsLeftOutInALineEach) {
    write("a.mp3");
    const std::string line = "a.mp3\n";
    std::string endless;
    for (int at = 0; at < 1'000'000; ++at) endless += line;
    write("endless.m3u", endless);
    write("long.m3u", std::string(5000, 'x') + ".mp3\n" + line + std::string(20'000'000, '#'));
    std::string rubbish = line;
    for (int at = 0; at < 100'000; ++at) rubbish += static_cast<char>(at * 7919 >> 3);
    write("rubbish.m3u", rubbish);
    write("empty.pls", "");
    write("wrong.pls", "[playlist]\nFileOne=a.mp3\nFile1=a.mp3\nFile99999999999=a.mp3\nFile2=notes.txt\n");
    const std::string track = "<track><location>a.mp3</location></track>";
    std::string bomb = "<!DOCTYPE x [<!ENTITY e0 'ha'>\n";
    for (int at = 1; at < 40; ++at) {
        const auto below = "&e" + std::to_string(at - 1) + ";";
        bomb += "<!ENTITY e" + std::to_string(at) + " '" + below + below + "'>\n";
    }
    write("bomb.xspf", bomb + "]>\n<playlist><title>&e39;</title></playlist>");
    write("cut.xspf", "<playlist>\n<trackList>" + track + "\n<track><loc");
    std::string nested;
    for (int at = 0; at < 100'000; ++at) nested += "<a>";
    write("deep.xspf", "<playlist>" + nested);
    write("tag.xspf", "<playlist><trackList>" + track + "<b " + std::string(2'000'000, 'c'));
    std::map<std::string, int> lines;
    std::istringstream log(scan());
    for (std::string said; std::getline(log, said); ++lines[said.substr(said.rfind('/') + 1)]) {
    }
    const std::map<std::string, int> expected{
        {"endless.m3u:100001: more than 100,000 entries, the rest is left out", 1},
        {"long.m3u:3: larger than 16 MB, the rest is left out", 1},
        {"long.m3u:1: the line is longer than 4096 bytes (and 1 more)", 1},
        {"wrong.pls:2: the entry has no number (and 1 more)", 1},
        {"wrong.pls:5: the entry is no music file", 1},
        {"bomb.xspf:1: it has a document type, the rest is left out", 1},
        {"cut.xspf:3: no sound XML, the rest is left out: unclosed token", 1},
        {"deep.xspf:1: elements are more than 32 deep, the rest is left out", 1},
        {"tag.xspf:1: a tag is too long, the rest is left out", 1}};
    std::erase_if(lines, [](const auto& entry) { return entry.first.starts_with("rubbish.m3u:"); });
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(list("endless")->itemsQuery()->_countOfItems(), 100'000u);
    for (const char* name : {"long", "rubbish", "wrong", "cut", "tag"})
        EXPECT_EQ(songs(name), Texts{"a"}) << name;
    for (const char* name : {"empty", "bomb", "deep"}) EXPECT_EQ(songs(name), Texts{}) << name;
}

TEST_F(PlaylistScanTest, AListThatCantBeReadStaysAsItWas) {
    write("a.mp3");
    const auto file = write("list.m3u", "a.mp3\n");
    scan();
    fs::remove(file);
    fs::create_symlink("/proc/self/mem", file);
    EXPECT_EQ(scan(), said("list.m3u:1", "Input/output error"));
    EXPECT_EQ(songs("list"), Texts{"a"});
    fs::remove(file);
    write("list.m3u", "a.mp3\na.mp3\n");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(songs("list"), (Texts{"a", "a"}));
}

}  // namespace
}  // namespace helmo

#include <sstream>

#include "Host/Library/TagText.h"
#include "Tests/HostThreads/ScanFixture.h"
#include "Tests/HostThreads/StoredCounts.h"

namespace helmo {
namespace {

namespace Item = zornic::MediaItemProperty;
namespace Collection = zornic::MediaCollectionProperty;
using zornic::MediaGrouping;
using zornic::MediaPredicate;
using Tags = std::map<std::string, std::string>;

/** Reads files of lines "NAME=value". */
class LineReader final : public TagReader {
public:
    TagReading read(const fs::path& file) override {
        Tags tags;
        std::ifstream stream(file);
        for (std::string line; std::getline(stream, line);)
            tags[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
        TagReading reading;
        reading.tags.title = tags["title"];
        reading.tags.artist = tags["artist"];
        reading.tags.albumTitle = tags["album"];
        reading.tags.albumArtist = tags["by"];
        reading.tags.isCompilation = !tags["compilation"].empty();
        reading.tags.trackNumber = firstNumber(tags["track"]);
        reading.tags.discNumber = firstNumber(tags["disc"]);
        reading.tags.discCount = numberBehindSlash(tags["disc"]);
        reading.tags.duration = tags["seconds"].empty() ? 60 : std::stod(tags["seconds"]);
        return reading;
    }
};

class AlbumIdentity : public ScanFixture<LineReader> {
protected:
    void song(const fs::path& name, Tags tags) {
        tags.emplace("title", name.stem());
        std::string text;
        for (const auto& [key, value] : tags) text += key + '=' + value + '\n';
        write(name, text);
    }
    /** Scans, and counts all that there is then; what was logged. */
    std::string scan() {
        const auto log = ScanFixture::scan();
        expectEverythingCounted(databaseFile());
        return log;
    }
    std::uint64_t id(const std::string& title, const char* property = Item::PersistentID) const {
        const auto found = named(title);
        return found ? found->valueForProperty(property).asUnsigned() : 0;
    }
    std::uint64_t album(const std::string& title) const { return id(title, Item::AlbumPersistentID); }
    /** "Title (album artist): tracks" of every album, a compilation with a star. */
    Texts albums() const {
        Texts result;
        const auto list = query(MediaGrouping::Album)->collections();
        for (std::uint64_t at = 0; at < list->count(); ++at) {
            const auto collection =
                std::dynamic_pointer_cast<zornic::MediaItemCollection>(list->entityAtIndex(at));
            const auto first = collection->representativeItem();
            std::string text = first->albumTitle() + " (" + first->albumArtist() + ")" +
                               (first->valueForProperty(Item::IsCompilation).asInteger() != 0 ? "*:" : ":");
            for (const std::string& title : titles(*collection->itemsQuery())) text += " " + title;
            result.push_back(std::move(text));
        }
        return result;
    }
};

TEST_F(AlbumIdentity, DiscsAreOneAlbumAndAlbumsOfOneTitleAreTwo) {
    song("Ann/Night/CD1/b.mp3", {{"artist", "Ann"}, {"album", "Night"}, {"track", "1"}});
    song("Ann/Night/CD 2/a.mp3", {{"artist", "Ann"}, {"album", "Night"}, {"track", "1"}, {"disc", "1/1"}});
    song("Day (Disc 1)/d.mp3", {{"artist", "Ann"}, {"album", "Day (Disc 1)"}, {"track", "1"}});
    song("Day (Disc 2)/c.mp3", {{"artist", "Bob"}, {"album", "Day [disc 2]"}, {"by", "Ann"}});
    song("x/CD1/e.mp3", {{"artist", "Cid"}, {"album", "Hits"}, {"compilation", "1"}});
    song("x/CD2/f.mp3", {{"artist", "Dan"}, {"album", "Hits"}, {"compilation", "1"}});
    song("y/g.mp3", {{"artist", "Eve"}, {"album", "hits"}, {"by", "Various Artists"}});
    song("z/h.mp3", {{"artist", "Eve"}, {"album", "Hits"}, {"by", "Various Artists"}});
    song("h/i.mp3", {{"artist", "Eve"}, {"album", "Hits"}});
    song("u/j.mp3", {{"artist", "Eve"}});
    song("v/k.mp3", {{"artist", "Eve"}, {"compilation", "1"}});
    song("v/l.mp3", {{"artist", "Fay"}});
    song("v/Best Vol. 2/m.mp3", {{"artist", "Fay"}, {"album", "Best Vol. 2"}, {"track", "1"}});
    for (const std::string at : {"1", "2", "3"})  // two whole albums in one folder
        for (const std::string name : {"Gil", "Hal"})
            song("flat/" + name + at + ".mp3", {{"artist", name}, {"album", "Gold"}, {"track", at}});
    EXPECT_EQ(scan(), "");
    auto found = albums();
    std::ranges::sort(found);
    EXPECT_EQ(found, (Texts{" (Eve): j k", " (Fay): l", "Best Vol. 2 (Fay): m", "Day (Ann): d c",
                            "Gold (Gil): Gil1 Gil2 Gil3", "Gold (Hal): Hal1 Hal2 Hal3", "Hits ()*: e f",
                            "Hits (Eve): i", "Hits (Various Artists)*: h", "Night (Ann): b a",
                            "hits (Various Artists)*: g"}));
    EXPECT_EQ(named("a")->valueForProperty(Item::DiscNumber), zornic::Value(2));
    EXPECT_EQ(named("m")->valueForProperty(Item::DiscNumber), zornic::Value(0));
}

TEST_F(AlbumIdentity, ManyArtistsMakeACompilationAndTheLastOneHasItBack) {
    const auto part = [&](const std::string& title, const std::string& artist) {
        song("party/CD" + title.substr(1) + "/" + title + ".mp3", {{"artist", artist}, {"album", "Party"}});
    };
    part("a1", "Ann");
    part("b1", "Ann feat. Bob");
    part("c2", "Ann & Cid");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(albums(), Texts{"Party (Ann): a1 b1 c2"});
    const auto identity = album("a1");
    part("d1", "Bob");
    part("e2", "Cid");
    scan();
    EXPECT_EQ(albums(), Texts{"Party (Ann): a1 b1 d1 c2 e2"}) << "more than half of it is hers";
    part("f2", "Dan");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(albums(), Texts{"Party ()*: a1 b1 d1 c2 e2 f2"});
    EXPECT_EQ(album("f2"), identity);
    fs::rename(music() / "party/CD2", _folder / "away");  // and comes back
    fs::remove(music() / "party/CD1/d1.mp3");
    scan();
    EXPECT_EQ(albums(), Texts{"Party (Ann): a1 b1"});
    fs::rename(_folder / "away", music() / "party/CD2");
    scan();
    EXPECT_EQ(albums(), Texts{"Party (Ann): a1 b1 c2 e2 f2"});
    part("g1", "Eve");
    scan();
    EXPECT_EQ(albums(), Texts{"Party ()*: a1 b1 g1 c2 e2 f2"});
    for (const char* gone : {"CD1/g1.mp3", "CD2/e2.mp3", "CD2/f2.mp3"}) fs::remove(music() / "party" / gone);
    scan();
    EXPECT_EQ(albums(), Texts{"Party (Ann): a1 b1 c2"});
    EXPECT_EQ(album("c2"), identity);
    EXPECT_EQ(query(MediaGrouping::AlbumArtist)->_countOfCollections(), 1u);
    // More files than are stored at once, in an order that tells late what it is.
    for (int at = 10; at < 50; ++at)
        song("big/" + std::to_string(at) + ".mp3", {{"artist", "Artist " + std::to_string(at / 12)},
                                                    {"album", "Big"},
                                                    {"track", std::to_string(at)}});
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(query(MediaGrouping::Album)->_countOfCollections(), 2u);
    EXPECT_EQ(named("10")->valueForProperty(Item::IsCompilation), zornic::Value(1));
    EXPECT_EQ(album("10"), album("49"));
}

TEST_F(AlbumIdentity, AFileThatContradictsItsAlbumStaysInItAndTheOwnerIsTold) {
    for (const std::string at : {"1", "2", "3"}) {
        song("sun/s" + at + ".mp3", {{"artist", "Ann"}, {"album", "Sun"}, {"by", "Ann"}, {"track", at}});
        song("mix/m" + at + ".mp3", {{"artist", "M" + at}, {"album", "Mix"}, {"compilation", "1"}});
        song("rain/r" + at + ".mp3", {{"artist", "Ann"}, {"album", "Rain"}});
    }
    song("sun/s4.mp3", {{"artist", "Bob"}, {"album", "Sun"}, {"track", "4"}});
    song("sun/s5.mp3", {{"artist", "ann ft. Bob"}, {"album", "SUN"}, {"track", "5"}});
    song("mix/m4.mp3", {{"artist", "M4"}, {"album", "Mix"}});
    song("rain/r4.mp3", {{"artist", "Ann"}, {"album", "Rain"}, {"compilation", "1"}});
    const std::string log = scan();
    EXPECT_EQ(albums(),
              (Texts{"Mix ()*: m1 m2 m3 m4", "Rain (Ann): r1 r2 r3 r4", "Sun (Ann): s1 s2 s3 s4 s5"}));
    for (const char* part : {"/sun: album", "1 of 5 files names no album artist and is put to those of Ann",
                             "/mix: album \"Mix\": 3 of 4", "/rain: album", "not taken for one"})
        EXPECT_NE(log.find(part), std::string::npos) << part << " in " << log;
    EXPECT_EQ(std::ranges::count(log, '\n'), 3) << log;
    EXPECT_EQ(scan(), "");
    fs::remove(music() / "sun/s1.mp3");
    fs::remove(music() / "sun/s2.mp3");
    fs::remove(music() / "sun/s3.mp3");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(albums().back(), "Sun (Bob): s4");
}

TEST_F(AlbumIdentity, ATrackIsKnownAgainWhereverItsFileWent) {
    const Tags sea{{"artist", "Ann"}, {"album", "Sea"}, {"track", "7"}, {"seconds", "200.4"}};
    song("old/sea.mp3", sea);
    Tags other = sea;
    other["seconds"] = "100";
    scan();
    const auto identity = id("sea");
    _library->noteItemPlayed(identity);
    fs::remove(music() / "old/sea.mp3");
    Tags anew = sea;
    anew["title"] = "SEA";
    anew["seconds"] = "202";
    anew["comment"] = "encoded anew";
    song("new/07 sea.flac", anew);
    scan();
    EXPECT_EQ(id("SEA"), identity);
    EXPECT_EQ(named("SEA")->valueForProperty(Item::PlayCount), zornic::Value(1));
    EXPECT_EQ(query()->_countOfItems(), 1u);
    // Another recording is another track, and so is a copy while both are there.
    other["title"] = "SEA";
    song("live/sea.mp3", other);
    song("copy/sea.mp3", anew);
    scan();
    EXPECT_EQ(query()->_countOfItems(), 3u);
    const auto order = texts(*query()->items(), Item::Location);
    const auto at = [&](const char* name) {
        for (std::uint64_t row = 0; row < 3; ++row)
            if (const auto found = item(*query(), row);
                found && found->valueForProperty(Item::Location).asText() == (music() / name).string())
                return found->persistentID();
        return zornic::PersistentID(0);
    };
    const auto copy = at("copy/sea.mp3");
    EXPECT_EQ(at("new/07 sea.flac"), identity);
    fs::rename(music() / "new", _folder / "away");  // each in turn is taken away and comes back
    scan();
    EXPECT_EQ(at("copy/sea.mp3"), copy);
    fs::rename(_folder / "away", music() / "new");
    fs::rename(music() / "copy", _folder / "away");
    scan();
    EXPECT_EQ(at("new/07 sea.flac"), identity);
    fs::rename(_folder / "away", music() / "copy");
    scan();
    EXPECT_EQ(texts(*query()->items(), Item::Location), order);
    EXPECT_EQ(at("copy/sea.mp3"), copy);
    // Both go, and one comes again: the elder.
    fs::remove_all(music() / "copy");
    fs::remove_all(music() / "new");
    song("again/sea.ogg", anew);
    scan();
    EXPECT_EQ(at("again/sea.ogg"), identity);
}

TEST_F(AlbumIdentity, AnAlbumStaysTheSameAlbum) {
    const auto file = [](int at) { return std::to_string(at) + ".mp3"; };
    for (int at = 10; at < 50; ++at)
        song("mix/" + file(at), {{"artist", "A" + std::to_string(at)}, {"album", "Mix"}});
    song("else/x.mp3", {{"artist", "Ann"}, {"album", "Mix"}, {"compilation", "1"}});
    scan();
    const auto identity = album("10"), other = album("x");
    EXPECT_NE(identity, other);
    fs::rename(music() / "mix", music() / "renamed");
    scan();
    EXPECT_EQ(album("10"), identity);
    EXPECT_EQ(album("49"), identity);
    EXPECT_EQ(album("x"), other);
    fs::rename(music() / "renamed", music() / "mix");
    scan();
    EXPECT_EQ(album("30"), identity);
    for (int at = 30; at < 50; ++at) fs::remove(music() / "mix" / file(at));
    scan();
    for (int at = 10; at < 30; ++at)
        song("mix/" + file(at), {{"artist", "A" + std::to_string(at)}, {"album", "Mixed"}, {"by", "DJ"}});
    scan();
    EXPECT_EQ(albums().size(), 2u);
    EXPECT_EQ(album("10"), identity) << "called something else, and somebody's now";
    EXPECT_EQ(named("10")->albumArtist(), "DJ");
    // The same album on another medium is no other one.
    song("usb/copy.mp3", {{"artist", "A99"}, {"album", "Mixed"}, {"by", "DJ"}});
    scan();
    EXPECT_EQ(album("copy"), identity);
    for (int at = 10; at < 30; ++at)
        song("mix/" + file(at), {{"artist", "A"}, {"album", "Split"}, {"by", "DJ"}});
    scan();
    EXPECT_EQ(album("copy"), identity);
    EXPECT_NE(album("10"), identity);
}

TEST_F(AlbumIdentity, ALibraryOfTheFirstVersionIsTakenOverWithItsTracksAndAlbums) {
    _library = nullptr;
    fs::remove_all(databaseFile().parent_path());
    fs::create_directories(databaseFile().parent_path());
    {
        std::ifstream dump(ZORNIC_TESTS "/HostThreads/library-version-1.sql");
        std::stringstream sql;
        sql << dump.rdbuf();
        Database database(databaseFile(), Database::Access::ReadWrite);
        database.execute(sql.str());
        database.run({"UPDATE folder SET path = ?", {(music() / "Ann/Sun").string()}});
    }
    const fs::path folder = "Ann/Sun";
    for (const std::string name : {"One", "Three"})
        song(folder / (name + ".mp3"), {{"artist", "Ann"}, {"album", "Sun"}});
    _library = SqliteMediaLibrary::open(databaseFile());
    ASSERT_TRUE(_library);
    idle();  // keys are renewed
    expectEverythingCounted(databaseFile());
    EXPECT_EQ(titles(*query()), (Texts{"One", "Three"}));
    EXPECT_EQ(Database(databaseFile(), Database::Access::ReadOnly)
                  .integer({"SELECT COUNT(*) FROM track WHERE size <> -1", {}}),
              0)
        << "all files are read again";
    song(folder / "Four.mp3", {{"artist", "Bob"}, {"album", "Sun"}});
    song(folder / "Five.mp3", {{"artist", "Cid"}, {"album", "Sun"}});
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(id("One"), 2001u);
    EXPECT_EQ(named("One")->valueForProperty(Item::PlayCount), zornic::Value(7));
    EXPECT_EQ(albums(), Texts{"Sun ()*: One Three Five Four"});
    EXPECT_EQ(album("One"), 1003u);
}

TEST(LibraryDates, AreNoneWhereTheTagsHoldNoDate) {
    const auto day = [](const char* text) -> std::string {
        const auto date = parsedDate(text);
        if (!date) return "none";
        const std::chrono::year_month_day parts(std::chrono::floor<std::chrono::days>(*date));
        return std::to_string(int(parts.year())) + "-" + std::to_string(unsigned(parts.month())) + "-" +
               std::to_string(unsigned(parts.day()));
    };
    for (const char* text :
         {"", "0", "0000", "0001-01-01", "9999", "99999", "123456", "99999999", "May 2004", "-2004"})
        EXPECT_EQ(day(text), "none") << text;
    for (const auto& [text, date] : std::map<const char*, const char*>{{"2004", "2004-1-1"},
                                                                       {"2004-13-40", "2004-1-1"},
                                                                       {"2004-02-30", "2004-1-1"},
                                                                       {"2004-05", "2004-5-1"},
                                                                       {"20040517", "2004-5-17"},
                                                                       {"2004-05-17T10:00", "2004-5-17"},
                                                                       {"2004/05/17", "2004-1-1"}})
        EXPECT_EQ(day(text), date) << text;
}

}  // namespace
}  // namespace helmo

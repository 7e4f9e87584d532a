#include <attachedpictureframe.h>
#include <flacfile.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <thread>
#include <wavfile.h>

#include "Host/Library/FileNameTags.h"
#include "Host/Library/PictureFinder.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Tests/HostThreads/TaggedScanFixture.h"

namespace helmo {
namespace {

namespace Item = zornic::MediaItemProperty;
namespace Collection = zornic::MediaCollectionProperty;
using zornic::MediaGrouping;

/** Reads "pictures" that know their bytes. */
class BytesReader final : public CoverReader {
public:
    struct Source final : zornic::ImageSource {
        explicit Source(std::string data) : bytes(std::move(data)) {}
        zornic::Size size() const override { return {}; }
        double scale() const override { return 1; }
        std::size_t cost() const override { return bytes.size(); }
        const std::string bytes;
    };
    CoverReading cover(const fs::path& file, zornic::Size, double) override {
        ++reads;
        auto bytes =
            isPictureFile(file.string()) ? fileBytes(file, 1000) : TagLibReader().picture(file).bytes;
        if (bytes == "broken") return {nullptr, "it is broken"};
        return {std::make_shared<Source>(std::move(bytes)), {}};
    }
    int reads = 0;
};

class LibraryScanTest : public TaggedScanFixture {
protected:
    /** A tenth of a second of silence. */
    static std::string wave() { return SoundFiles::wave(std::string(800, '\x80'), 8000); }
    fs::path song(const fs::path& name, const Properties& properties) {
        return tagged<TagLib::RIFF::WAV::File>(name, wave(), properties);
    }
};

TEST_F(LibraryScanTest, ReadsTagsOfEveryKindOfFileAndTakesSoundWithoutAny) {
    song("wave.wav", {{"TITLE", "Wave"},
                      {"ARTIST", "Ann"},
                      {"ALBUM", "Die Sonne"},
                      {"LANGUAGE", "deu"},
                      {"TRACKNUMBER", "3/12"},
                      {"DISCNUMBER", "2/2"},
                      {"DATE", "2004-05-17"},
                      {"COMPOSER", "Bach"},
                      {"GENRE", "Jazz"},
                      {"COMPILATION", "1"},
                      {"STOREADVISORY", "1"}});
    tagged<TagLib::FLAC::File>("flac.flac", SoundFiles::flac(),
                               {{"TITLE", "Flac"}, {"ARTIST", "The Bees"}, {"ARTISTSORT", "Aaa"}});
    tagged<TagLib::MPEG::File>("mpeg.mp3", SoundFiles::mpeg(),
                               {{"TITLE", "Mp\n3\xc2\x85"}, {"GENRE", "Podcast"}, {"ALBUM", "Daily"}});
    write("Some Album/CD 2/04 - Plain.mka", "\x1A\x45\xDF\xA3 no tags");
    write("empty.mp3", "");
    write("notes.txt", "no music");
    write(".hidden/secret.mp3", SoundFiles::mpeg());
    scan();

    EXPECT_EQ(titles(*query()), (Texts{"Flac", "Mp 3", "Plain", "Wave"}));
    const auto wave = named("Wave");
    EXPECT_TRUE(named("Wave")->isExplicit());
    EXPECT_FALSE(named("Flac")->isExplicit());
    EXPECT_EQ(wave->artist() + wave->albumTitle() + wave->composer() + wave->genre(), "AnnDie SonneBachJazz");
    EXPECT_EQ(wave->valueForProperty(Item::SortAlbumTitle), zornic::Value("Sonne")) << "as in its language";
    EXPECT_EQ(wave->albumArtist(), "");  // a compilation
    for (const auto& [property, value] : std::map<const char*, int>{{Item::AlbumTrackNumber, 3},
                                                                    {Item::AlbumTrackCount, 12},
                                                                    {Item::DiscNumber, 2},
                                                                    {Item::Year, 2004},
                                                                    {Item::IsCompilation, 1}})
        EXPECT_EQ(wave->valueForProperty(property), zornic::Value(value)) << property;
    EXPECT_NEAR(wave->playbackDuration(), 0.1, 0.01);
    EXPECT_EQ(wave->valueForProperty(Item::Location).asText(), (music() / "wave.wav").string());
    EXPECT_EQ(named("Flac")->valueForProperty(Item::SortArtist).asText(), "Aaa");
    EXPECT_EQ(named("Flac")->playbackDuration(), 1);
    EXPECT_EQ(named("Mp 3")->mediaType(), zornic::MediaType::Podcast);
    EXPECT_EQ(named("Mp 3")->podcastTitle(), "Daily");
    const auto plain = named("Plain");
    EXPECT_EQ(plain->albumTitle(), "Some Album");
    EXPECT_EQ(plain->valueForProperty(Item::AlbumTrackNumber), zornic::Value(4));
    EXPECT_EQ(plain->valueForProperty(Item::DiscNumber), zornic::Value(2));
}

TEST(LibraryFileNames, GiveUpATrackNumberOnlyWhenItIsOne) {
    const auto parsed = [](const std::string& name) {
        TrackTags tags;
        completeFromFileName(tags, "/m/" + name + ".mp3", "/m");
        return std::tuple(tags.discNumber, tags.trackNumber, tags.title);
    };
    EXPECT_EQ(parsed("03 - Blue"), std::tuple(0, 3, "Blue"));
    EXPECT_EQ(parsed("07. Blue"), std::tuple(0, 7, "Blue"));
    EXPECT_EQ(parsed("12 Blue"), std::tuple(0, 12, "Blue"));
    EXPECT_EQ(parsed("2-05 Blue"), std::tuple(2, 5, "Blue"));
    EXPECT_EQ(parsed("99 Luftballons"), std::tuple(0, 0, "99 Luftballons"));
    EXPECT_EQ(parsed("7 Years"), std::tuple(0, 0, "7 Years"));
    EXPECT_EQ(parsed("1999"), std::tuple(0, 0, "1999"));
    EXPECT_EQ(parsed("05"), std::tuple(0, 0, "05"));
    EXPECT_EQ(parsed("24K"), std::tuple(0, 0, "24K"));
}

TEST_F(LibraryScanTest, ReadsOnlyWhatChangedAndForgetsNothingThatVanishes) {
    const auto one = song("a/one.wav", {{"TITLE", "One"}, {"ARTIST", "Ann"}});
    song("a/two.wav", {{"TITLE", "Two"}, {"ARTIST", "Bob"}});
    scan();
    EXPECT_EQ(_reader->reads, 2);
    const auto identity = named("One")->persistentID();
    _library->noteItemPlayed(identity);
    const auto generation = _library->generation();
    scan();
    EXPECT_EQ(_reader->reads, 2);
    EXPECT_EQ(_library->generation(), generation);  // nothing new, nobody is told

    tagged<TagLib::RIFF::WAV::File>("a/two.wav", wave(), {{"TITLE", "Two, longer"}, {"ARTIST", "Bob"}});
    scan();
    EXPECT_EQ(_reader->reads, 3);
    EXPECT_EQ(titles(*query()), (Texts{"One", "Two, longer"}));

    const auto away = _folder / "away";
    fs::rename(music(), away);  // the medium is taken away
    scan();
    EXPECT_EQ(query()->_countOfItems() + query(MediaGrouping::Artist)->_countOfCollections(), 0u);
    EXPECT_FALSE(_library->itemWithPersistentID(identity, true));
    fs::rename(away, music());
    scan();
    EXPECT_EQ(_reader->reads, 3);
    ASSERT_TRUE(named("One"));
    EXPECT_EQ(named("One")->persistentID(), identity);
    EXPECT_EQ(named("One")->valueForProperty(Item::PlayCount), zornic::Value(1));

    fs::rename(music() / "a", music() / "b");  // a folder is called something else
    scan();
    EXPECT_EQ(titles(*query()), (Texts{"One", "Two, longer"}));
    EXPECT_EQ(named("One")->persistentID(), identity);
    EXPECT_EQ(named("One")->valueForProperty(Item::Location).asText(), (music() / "b/one.wav").string());
    fs::remove(music() / "b/one.wav");
    scan();
    EXPECT_EQ(titles(*query()), Texts{"Two, longer"});
}

TEST_F(LibraryScanTest, PicturesComeFromTheFileOrItsFolderAndEqualOnesShareAToken) {
    const auto covers = std::make_shared<BytesReader>();
    _library = SqliteMediaLibrary::open(databaseFile(), {.coverReader = covers});
    for (const std::string name : {"x/one.mp3", "x/two.mp3"}) {
        const auto path = tagged<TagLib::MPEG::File>(name, SoundFiles::mpeg(), {{"TITLE", name}});
        TagLib::MPEG::File file(path.c_str());
        auto* frame = new TagLib::ID3v2::AttachedPictureFrame;
        frame->setPicture(TagLib::ByteVector("\xFF\xD8\xFFinside"));
        file.ID3v2Tag(true)->addFrame(frame);
        file.save();
    }
    song("y/three.wav", {{"TITLE", "Three"}});
    write("y/Folder.JPG", "folder");
    write("y/COVER.png", "cover");
    song("z/four.wav", {{"TITLE", "Four"}});
    scan();
    const auto token = [&](const std::string& title) {
        return named(title)->valueForProperty(Item::ArtworkToken).asText();
    };
    const auto bytes = [&](const std::string& title) {
        const auto source = _library->loadArtwork(token(title), {36, 36}, 1);
        const auto* loaded = dynamic_cast<const BytesReader::Source*>(source.get());
        return loaded ? loaded->bytes : "(none)";
    };
    EXPECT_EQ(token("x/one.mp3"), token("x/two.mp3"));
    EXPECT_EQ(bytes("x/one.mp3"), "\xFF\xD8\xFFinside");
    EXPECT_EQ(bytes("Three"), "cover");
    EXPECT_EQ(token("Four"), "");
    const auto before = token("Three");
    write("y/COVER.png", "another cover");
    fs::last_write_time(music() / "y/COVER.png", fs::file_time_type::clock::now() + std::chrono::hours(1));
    scan();
    EXPECT_NE(token("Three"), before);  // so that no cache shows the old one
    fs::remove(music() / "x/one.mp3");
    EXPECT_EQ(bytes("x/two.mp3"), "\xFF\xD8\xFFinside");
    EXPECT_FALSE(_library->loadArtwork("embedded:nonsense", {36, 36}, 1));

    write("y/COVER.png", "broken");
    testing::internal::CaptureStderr();
    const int readsBefore = covers->reads;
    EXPECT_EQ(bytes("Three"), "(none)");
    zornic::BackgroundWork::waitUntilIdle(std::chrono::seconds(10));
    EXPECT_EQ(bytes("Three"), "(none)");
    EXPECT_EQ(covers->reads, readsBefore + 1) << "not tried again";
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("y/COVER.png: it is broken"));
    write("y/COVER.png", "whole again");
    EXPECT_EQ(bytes("Three"), "whole again");
}

TEST_F(LibraryScanTest, StopsWhenItsOwnerGoes) {
    struct Stopped final : TagReader {
        std::atomic<int> reads{0};
        TagReading read(const fs::path&) override {
            ++reads;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            return {};
        }
    };
    for (int at = 0; at < 500; ++at) write("b/" + std::to_string(at) + ".mp3", "");
    const auto slow = std::make_shared<Stopped>();
    {
        Scanner scanner(_library, {music()}, slow);
        scanner.start();
        while (slow->reads == 0) std::this_thread::yield();
    }
    EXPECT_LT(slow->reads, 500);
}

TEST_F(LibraryScanTest, ListsAreReadWhileAScanIsRunning) {
    for (int at = 0; at < 120; ++at)
        song(std::to_string(at % 7) + "/" + std::to_string(at) + ".wav",
             {{"TITLE", "T" + std::to_string(at)}, {"ARTIST", "A" + std::to_string(at % 5)}});
    std::atomic<int> changes{0};
    const auto observation = zornic::NotificationCenter::defaultCenter().observe(
        zornic::MediaLibraryDidChangeNotification, _library.get(), [&](const auto&) { ++changes; });
    Scanner scanner(_library, {music()}, _reader);
    std::atomic<bool> isFinished{false};
    scanner.setProgressHandler([&](const ScanProgress& progress) { isFinished = progress.isFinished; });
    scanner.start();
    std::vector<std::jthread> readers;
    for (int reader = 0; reader < 2; ++reader)
        readers.emplace_back([&] {
            const auto songs = query(), artists = query(MediaGrouping::Artist);
            do {
                EXPECT_EQ(std::ranges::count(titles(*songs), "(gone)"), 0);
                texts(*artists->collections(), Collection::ArtistName);
            } while (!isFinished);
        });
    readers.clear();
    EXPECT_GE(changes, 1);
    EXPECT_EQ(query()->_countOfItems(), 120u);
    EXPECT_EQ(query(MediaGrouping::Artist)->_countOfCollections(), 5u);
}

}  // namespace
}  // namespace helmo

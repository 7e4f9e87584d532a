#include <deque>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "Tests/HostThreads/ScanFixture.h"
#include "Tests/HostThreads/StoredCounts.h"

namespace helmo {
namespace {

namespace Item = zornic::MediaItemProperty;

/** Reads "title|artist|album|sort artist"; a file that begins with '!' is broken, and the rest says how. */
class TextReader final : public NameReader {
public:
    TagReading read(const fs::path& file) override {
        ++reads;
        if (onRead) onRead(file);
        std::ifstream stream(file);
        std::string fields[4];
        for (std::string& field : fields) std::getline(stream, field, '|');
        TagReading reading;
        if (!stream.is_open() || fields[0].starts_with('!')) {
            reading.isTrack = false;
            reading.problem = stream.is_open() ? fields[0].substr(1) : "can't be opened";
            return reading;
        }
        reading.tags.title = fields[0];
        reading.tags.artist = fields[1];
        reading.tags.albumTitle = fields[2];
        reading.tags.sortArtist = fields[3];
        if (fields[1] == "Podcaster") reading.tags.mediaType = zornic::MediaType::Podcast;
        return reading;
    }
    std::unique_ptr<TagStream> stream() override {
        return answersLate ? std::make_unique<LateStream>(*this) : TagReader::stream();
    }

    bool answersLate = false;

private:
    /** Has nothing ready before it is waited for. */
    class LateStream final : public TagStream {
    public:
        explicit LateStream(TextReader& reader) : _reader(reader) {}
        void ask(const fs::path& file) override { _files.push_back(file); }
        std::optional<TagReading> take(bool wait) override {
            if (!wait || _files.empty()) return std::nullopt;
            const auto file = _files.front();
            _files.pop_front();
            return _reader.read(file);
        }
        std::size_t pending() const override { return _files.size(); }

    private:
        TextReader& _reader;
        std::deque<fs::path> _files;
    };
};

class ScanRobustness : public ScanFixture<TextReader> {
protected:
    /** Scans, and counts all that there is then; what was logged. */
    std::string scan() {
        const auto log = ScanFixture::scan();
        expectEverythingCounted(databaseFile());
        return log;
    }
    std::int64_t remembered() const {
        return Database(databaseFile(), Database::Access::ReadOnly)
            .integer({"SELECT COUNT(*) FROM unreadable", {}});
    }
};

TEST_F(ScanRobustness, CountsAreTrueAfterEveryKindOfChange) {
    _reader->answersLate = true;
    for (int at = 0; at < 60; ++at)
        write("a" + std::to_string(at % 7) + "/" + std::to_string(at) + ".mp3",
              "T" + std::to_string(at) + "|The A" + std::to_string(at % 5) + "|B" + std::to_string(at % 9));
    write("p/daily.mp3", "Daily|Podcaster|News");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(query()->_countOfItems(), 61u);
    EXPECT_EQ(named("T33")->artist(), "The A3");  // readings are not mixed up
    fs::rename(music() / "a6", _folder / "away");
    EXPECT_EQ(scan(), "");
    write("a0/0.mp3", "Other|Podcaster|B0");  // another kind of media
    write("a1/1.mp3", "Else|The A1|B1|Zz");   // and an artist that moves to another section
    write("a1/new.mp3", "New|The A1|New");
    fs::remove(music() / "a2/2.mp3");
    fs::rename(music() / "a3", music() / "c3");
    fs::remove_all(music() / "a4");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(query()->_countOfItems(), 61u + 1 - 1 - 8 - 8);
    fs::rename(_folder / "away", music() / "a6");
    EXPECT_EQ(scan(), "");
    expectEverythingCounted(databaseFile());
    EXPECT_EQ(named("T3")->valueForProperty(Item::Location).asText(), (music() / "c3/3.mp3").string());
    const auto reads = _reader->reads.load();
    ASSERT_TRUE(_library->write([&](TrackStore& store) {
        const MusicFile file{music() / "z", "twice.mp3", 1, 1};
        store.store(file, tags("Quite new", "Xaver", "Yes"));
        store.store(file, tags("Very new", "Xaver", "Yes"));
        store.renewSortKeys();
    }));
    expectEverythingCounted(databaseFile());
    // What is not kept leaves no trace, neither in the counts nor in what is remembered of rows.
    const auto fail = [&](TrackStore& store) {
        store.store({music() / "z", "other.mp3", 1, 1}, tags("X", "Unheard of", "Y"));
        throw DatabaseError(1, "made to fail");
    };
    testing::internal::CaptureStderr();
    EXPECT_FALSE(_library->write(fail));
    EXPECT_EQ(lines(testing::internal::GetCapturedStderr()), 1);
    write("z/third.mp3", "X|Unheard of|Y");
    EXPECT_EQ(scan(), "");
    ASSERT_TRUE(named("X"));
    EXPECT_EQ(named("X")->artist(), "Unheard of");
    EXPECT_EQ(_reader->reads, reads + 1);
}

TEST_F(ScanRobustness, FilesThatAreNoTracksAreOpenedAgainOnlyWhenTheyChanged) {
    write("a/good.mp3", "Good|Ann");
    write("a/fragile.mp3", "Fragile|Ann");
    write("a/bad.mp3", "!no music in it");
    write("b/bad.mp3", "!no music in it either");
    const auto log = scan();
    EXPECT_EQ(lines(log), 2);
    EXPECT_NE(log.find((music() / "a/bad.mp3").string() + ": no music in it\n"), std::string::npos) << log;
    EXPECT_EQ(titles(*query()), (Texts{"Fragile", "Good"}));
    const auto identity = named("Fragile")->persistentID();
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(_reader->reads, 4);

    write("a/fragile.mp3", "!cut off");
    write("a/bad.mp3", "Mended|Ann");
    fs::remove(music() / "b/bad.mp3");
    write("b/good.mp3", "Beside|Bob");
    EXPECT_EQ(lines(scan()), 1);
    EXPECT_EQ(titles(*query()), (Texts{"Beside", "Good", "Mended"}));
    EXPECT_EQ(remembered(), 1);
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(_reader->reads, 7);
    write("a/fragile.mp3", "Fragile|Ann");
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(named("Fragile")->persistentID(), identity);
    EXPECT_EQ(remembered(), 0);

    const MusicFile file{music() / "a", "good.mp3", 10, 20};
    const auto isRemembered = [&](std::int64_t size) {
        return _library->readers()->read(false, [&](Database& database) {
            return TrackStore::isUnreadablePicture(database, {file.folder, file.name, size, file.mtime});
        });
    };
    EXPECT_FALSE(isRemembered(10));
    _library->write([&](TrackStore& store) { store.noteUnreadablePicture(file, "endless"); });
    EXPECT_TRUE(isRemembered(10));
    EXPECT_FALSE(isRemembered(11));
    EXPECT_EQ(scan(), "");
    EXPECT_TRUE(named("Good"));  // a track all the same
    write("a/good.mp3", "Good|Ann|With another picture");
    EXPECT_EQ(scan(), "");
    EXPECT_FALSE(isRemembered(10));
}

TEST_F(ScanRobustness, HostileFoldersCostOneLineEachAndNothingElse) {
    write("a/good.mp3", "Good");
    write("a/caf\xe9.mp3", "");  // no UTF-8
    fs::create_directories(music() / "album.mp3");
    write("album.mp3/inside.mp3", "Inside");
    ASSERT_EQ(::mkfifo((music() / "a/pipe.mp3").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((music() / "a/pipe.txt").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", music() / "a/endless.flac");
    fs::create_symlink("nowhere", music() / "a/dangling.ogg");
    fs::create_directory_symlink(music() / "a", music() / "album.mp3/loop");
    fs::create_directory_symlink("..", music() / "a/up");
    // Deeper than any program can name.
    const int start = ::open((music()).c_str(), O_RDONLY | O_DIRECTORY);
    int folder = ::dup(start);
    const std::string name(200, 'd');
    for (int depth = 0; depth < 25; ++depth) {
        ASSERT_EQ(::mkdirat(folder, name.c_str(), 0700), 0);
        const int next = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(folder);
        folder = next;
    }
    ::close(folder);
    const bool isRoot = ::geteuid() == 0;  // whom nothing is forbidden
    if (!isRoot) fs::create_directories(music() / "z/forbidden");
    if (!isRoot) fs::permissions(music() / "z/forbidden", fs::perms::none);
    const auto log = scan();
    EXPECT_EQ(lines(log), isRoot ? 4 : 5) << log;
    for (const char* named : {"pipe.mp3: ", "endless.flac: ", "dangling.ogg: ", "ddd: File name too long"})
        EXPECT_NE(log.find(named), std::string::npos) << named << log;
    EXPECT_EQ(titles(*query()), (Texts{"caf\xef\xbf\xbd", "Good", "Inside"}));
    EXPECT_EQ(item(*query(), 0)->valueForProperty(Item::Location).asText(),
              (music() / "a/caf\xe9.mp3").string());
    const auto reads = _reader->reads.load();
    scan();
    EXPECT_EQ(_reader->reads, reads);
    if (!isRoot) fs::permissions(music() / "z/forbidden", fs::perms::owner_all);
    // Nor can the standard library remove it by name.
    EXPECT_EQ(std::system(("rm -rf '" + music().string() + "'").c_str()), 0);
    ::close(start);
}

TEST_F(ScanRobustness, AMediumThatIsTakenAwayIsOneLineAndComesBackWhole) {
    for (int folder = 0; folder < 6; ++folder)
        for (int at = 0; at < 10; ++at)
            write(std::to_string(folder) + "/" + std::to_string(at) + ".mp3", "T" + std::to_string(at));
    const auto away = _folder / "away";
    int left = 33;
    _reader->onRead = [&](const fs::path&) {
        if (--left == 0) fs::rename(music(), away);
    };
    const auto log = scan();
    EXPECT_EQ(lines(log), 1);
    EXPECT_NE(log.find(music().string() + ": taken away during the scan"), std::string::npos) << log;
    EXPECT_EQ(query()->_countOfItems(), 0u);
    EXPECT_EQ(remembered(), 0);
    // Unmounted, its place is an empty folder.
    fs::rename(away, music());
    left = 5;
    _reader->onRead = [&](const fs::path&) {
        if (--left != 0) return;
        fs::rename(music(), away);
        fs::create_directories(music());
    };
    EXPECT_EQ(lines(scan()), 1);
    EXPECT_EQ(query()->_countOfItems(), 0u);
    fs::remove(music());
    fs::rename(away, music());
    _reader->onRead = nullptr;
    const auto reads = _reader->reads.load();
    EXPECT_EQ(scan(), "");
    EXPECT_EQ(query()->_countOfItems(), 60u);
    EXPECT_LT(_reader->reads - reads, 30);  // what was stored is not read again
    EXPECT_EQ(remembered(), 0);
}

TEST_F(ScanRobustness, ALibraryCutOffAtAnyMomentOfItsFirstScanIsCompletedByTheNext) {
    constexpr int count = 240;
    for (int at = 0; at < count; ++at)
        write(std::to_string(at % 20) + "/" + std::to_string(at) + ".mp3",
              "T" + std::to_string(at) + "|A" + std::to_string(at % 30) + "|B" + std::to_string(at % 40));
    // Without a checkpoint the log only grows, and each copy is what a power cut would leave.
    std::vector<fs::path> copies;
    std::atomic<bool> isOver{false};
    std::thread copying([&] {
        while (!isOver) {
            const auto copy = _folder / ("copy" + std::to_string(copies.size()));
            fs::create_directories(copy);
            std::error_code error;
            fs::copy_file(databaseFile(), copy / "library.db", error);
            fs::copy_file(databaseFile().string() + "-wal", copy / "library.db-wal", error);
            copies.push_back(copy);
        }
    });
    EXPECT_EQ(scan(), "");
    isOver = true;
    copying.join();
    std::set<std::uint64_t> found;
    for (std::size_t at = 0; at < copies.size(); at += 1 + copies.size() / 6) {
        _library = SqliteMediaLibrary::open(copies[at] / "library.db");
        ASSERT_TRUE(_library);
        found.insert(query()->_countOfItems());
        EXPECT_EQ(ScanFixture::scan(), "");
        EXPECT_EQ(query()->_countOfItems(), static_cast<std::uint64_t>(count));
        expectEverythingCounted(copies[at] / "library.db");
    }
    EXPECT_GT(found.size(), 1u);
}

}  // namespace
}  // namespace helmo

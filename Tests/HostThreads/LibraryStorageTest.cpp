#include <mutex>
#include <thread>

#include "Tests/HostThreads/ScanFixture.h"
#include "Tests/Support/DiskTrouble.h"

namespace helmo {
namespace {

using namespace std::chrono_literals;
using DiskTrouble::LimitedFiles;
using DiskTrouble::SmallDisk;
using Troubles = std::vector<StorageTrouble>;

class LibraryStorageTest : public ScanFixture<NameReader> {
protected:
    static constexpr std::uint64_t songs = 800;

    void close() {
        _library = nullptr;
        idle();
    }
    /** Opens the library anew, and gathers its troubles. */
    void open(std::chrono::milliseconds patience = 10s) {
        close();
        SqliteMediaLibrary::Options options;
        options.patience = patience;
        _library = SqliteMediaLibrary::open(databaseFile(), options);
        ASSERT_TRUE(_library);
        _troubles.clear();
        _library->setTroubleHandler([this](StorageTrouble trouble) {
            std::lock_guard lock(_mutex);
            if (std::ranges::find(_troubles, trouble) == _troubles.end()) _troubles.push_back(trouble);
        });
    }
    Troubles troubles() {
        std::lock_guard lock(_mutex);
        return _troubles;
    }
    void makeMusic(std::uint64_t count) {
        for (std::uint64_t at = 0; at < count; ++at) {
            const auto folder = music() / std::to_string(at / 100);
            fs::create_directories(folder);
            std::ofstream(folder / (std::to_string(at) + ".mp3")) << at;
        }
    }
    std::uint64_t count() const { return query()->_countOfItems(); }
    /** Every row that can be read. */
    std::size_t readable() const {
        const auto all = titles(*query());
        return all.size() - static_cast<std::size_t>(std::ranges::count(all, "(gone)"));
    }
    void overwrite(const fs::path& file, std::streamoff from, std::size_t bytes) {
        std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
        stream.seekp(from);
        stream << std::string(bytes, '\x5a');
    }
    int setAside() const {
        int kept = 0;
        for (const auto& entry : fs::directory_iterator(databaseFile().parent_path()))
            kept += entry.path().filename().string().starts_with("library.db.damaged-20") &&
                    !entry.path().string().ends_with("-wal") && !entry.path().string().ends_with("-shm");
        return kept;
    }
    std::int64_t playCount(zornic::PersistentID id) const {
        return _library->valuesOfItem(id, {zornic::MediaItemProperty::PlayCount})
            .at(zornic::MediaItemProperty::PlayCount)
            .asInteger();
    }

    std::mutex _mutex;
    Troubles _troubles;
};

TEST_F(LibraryStorageTest, DamageOfAnyKindIsFoundAndTheLibraryIsMadeAnewFromTheMusic) {
    makeMusic(songs);
    scan();
    ASSERT_EQ(count(), songs);
    close();
    const auto size = static_cast<std::streamoff>(fs::file_size(databaseFile()));
    const fs::path sound = _folder / "sound";
    fs::copy_file(databaseFile(), sound);
    struct Damage {
        const char* name;
        std::function<void()> make;
    };
    int kept = 0;
    for (const auto& [name, make] :
         {Damage{"rubbish", [&] { overwrite(databaseFile(), 0, static_cast<std::size_t>(size)); }},
          Damage{"half of it", [&] { fs::resize_file(databaseFile(), fs::file_size(sound) / 2); }},
          Damage{"pages in the middle", [&] { overwrite(databaseFile(), size / 4 & ~4095, 400'000); }},
          Damage{"another program's", [&] {
                     fs::remove(databaseFile());
                     Database other(databaseFile(), Database::Access::ReadWrite);
                     Database(sound, Database::Access::ReadOnly);
                     other.execute("CREATE TABLE x (y); PRAGMA user_version = 1");
                 }}}) {
        SCOPED_TRACE(name);
        fs::copy_file(sound, databaseFile(), fs::copy_options::overwrite_existing);
        make();
        testing::internal::CaptureStderr();
        open();
        for (int look = 0; look < 2; ++look) {  // the first finds what is hidden inside
            readable();
            _library->checkIntegrity();
            idle();
        }
        EXPECT_EQ(troubles(), Troubles{StorageTrouble::Damaged});
        EXPECT_EQ(count(), 0u);
        scanAloud();
        EXPECT_EQ(readable(), songs);
        const auto said = testing::internal::GetCapturedStderr();
        EXPECT_NE(said.find(databaseFile().string() + " is damaged ("), std::string::npos) << said;
        EXPECT_EQ(std::ranges::count(said, '\n'), 1) << said;
        EXPECT_EQ(setAside(), ++kept);
        close();
    }
}

TEST_F(LibraryStorageTest, ALogThatIsRubbishCostsOnlyWhatItHeld) {
    makeMusic(20);
    scan();
    Database(databaseFile(), Database::Access::ReadWrite).execute("PRAGMA wal_checkpoint(TRUNCATE)");
    makeMusic(40);
    scan();
    fs::path log = databaseFile(), copy = _folder / "copy.db";
    log += "-wal";
    fs::copy_file(databaseFile(), copy);
    fs::copy_file(log, _folder / "copy.db-wal");
    close();
    for (const std::streamoff from : {0, 5000}) {
        fs::copy_file(copy, databaseFile(), fs::copy_options::overwrite_existing);
        fs::copy_file(_folder / "copy.db-wal", log, fs::copy_options::overwrite_existing);
        overwrite(log, from, fs::file_size(log) - static_cast<std::size_t>(from));
        open();
        EXPECT_GE(readable(), 20u);
        scan();
        EXPECT_EQ(readable(), 40u);
        EXPECT_EQ(troubles(), Troubles{});
        close();
    }
}

TEST_F(LibraryStorageTest, DamageDuringAScanBringsANewDatabaseAndNoScanMixesBoth) {
    makeMusic(songs);
    scan();
    open();
    const auto generation = _library->generation();
    const auto old = query();
    ASSERT_EQ(old->_countOfItems(), songs);
    fs::remove(music() / "7/700.mp3");
    std::atomic<bool> isDone{false};
    _reader->onRead = [&](const fs::path&) {
        if (isDone.exchange(true)) return;
        const auto size = static_cast<std::streamoff>(fs::file_size(databaseFile()));
        overwrite(databaseFile(), 8192, static_cast<std::size_t>(size) - 8192);
        titles(*query({}, {}, {zornic::MediaItemProperty::Title}));
    };
    std::ofstream(music() / "3/new.mp3") << "new";
    scan();
    idle();
    EXPECT_EQ(troubles(), Troubles{StorageTrouble::Damaged});
    EXPECT_GT(_library->generation(), generation);
    EXPECT_EQ(setAside(), 1);
    titles(*old);  // of a database that is closed by now
    scan();
    EXPECT_EQ(readable(), songs);
    EXPECT_TRUE(_library->isStoring());
}

TEST_F(LibraryStorageTest, AWriteWaitsForOtherProgramsAndNothingIsLostWhenTheyTakeTooLong) {
    makeMusic(30);
    scan();
    const auto played = item(*query(), 3)->persistentID();
    open(300ms);
    Database other(databaseFile(), Database::Access::ReadWrite);
    other.execute("BEGIN IMMEDIATE");
    std::jthread release([&] {
        std::this_thread::sleep_for(100ms);
        other.execute("COMMIT");
    });
    add({tags("Waited for")});
    release.join();
    EXPECT_EQ(readable(), 31u);
    EXPECT_EQ(troubles(), Troubles{});

    other.execute("BEGIN IMMEDIATE");
    makeMusic(60);
    _library->noteItemPlayed(played);
    scan();
    EXPECT_EQ(readable(), 31u) << "lists are read meanwhile";
    EXPECT_EQ(troubles(), Troubles{StorageTrouble::Busy});
    EXPECT_FALSE(_library->isStoring());
    open(300ms);  // also at a start
    EXPECT_EQ(readable(), 31u);
    _library->noteItemPlayed(played);
    idle();
    EXPECT_EQ(troubles(), Troubles{StorageTrouble::Busy});
    other.execute("COMMIT");
    scan();
    EXPECT_EQ(readable(), 60u);
    EXPECT_TRUE(_library->isStoring());
    EXPECT_EQ(playCount(played), 1) << "what waited goes with what follows";
}

TEST_F(LibraryStorageTest, ALockedOrImpossibleFileGivesATemporaryLibraryAndStaysAsItIs) {
    makeMusic(30);
    scan();
    close();
    const auto expectTemporary = [&](StorageTrouble trouble) {
        EXPECT_EQ(troubles(), Troubles{trouble});
        EXPECT_EQ(count(), 0u);
        scan();
        EXPECT_EQ(readable(), 30u);
        close();
    };
    {
        Database other(databaseFile(), Database::Access::ReadWrite);
        other.execute("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE");
        const auto began = std::chrono::steady_clock::now();
        open();
        EXPECT_LT(std::chrono::steady_clock::now() - began, 10s);
        expectTemporary(StorageTrouble::InUse);
    }
    open();
    EXPECT_EQ(readable(), 30u);
    EXPECT_EQ(troubles(), Troubles{});
    close();

    fs::remove_all(databaseFile().parent_path());
    std::ofstream(databaseFile().parent_path()) << "no folder";
    open();
    expectTemporary(StorageTrouble::Elsewhere);
    const LimitedFiles full(0);  // no file anywhere: memory is what is left
    open();
    expectTemporary(StorageTrouble::Elsewhere);
}

TEST_F(LibraryStorageTest, TwoOnTheSameFileBothWorkAlsoWhenOneFindsDamage) {
    makeMusic(songs);
    const auto second = SqliteMediaLibrary::open(databaseFile());
    {
        Scanner one(_library, {music()}, _reader), two(second, {music()}, _reader);
        one.start();
        two.start();
        idle();
    }
    EXPECT_EQ(readable(), songs);
    EXPECT_TRUE(_library->isStoring() && second->isStoring());
    Database(databaseFile(), Database::Access::ReadWrite).execute("PRAGMA wal_checkpoint(TRUNCATE)");
    overwrite(databaseFile(), 8192, 2'000'000);
    for (const auto& each : {_library, second}) {
        each->checkIntegrity();
        titles(*zornic::make<zornic::MediaQuery>(
            zornic::MediaQueryDescription{{}, zornic::MediaGrouping::Title, {}, true, {}}, each));
        idle();
    }
    EXPECT_EQ(setAside(), 1) << "the second takes the new one that the first made";
    scan();
    EXPECT_EQ(readable(), songs);
}

TEST_F(LibraryStorageTest, AFullDiskKeepsWhatIsStoredAndALaterScanAddsTheRest) {
    makeMusic(200);
    scan();
    makeMusic(songs);
    const auto played = item(*query(), 3)->persistentID();
    open();
    testing::internal::CaptureStderr();
    {
        const LimitedFiles full(fs::file_size(databaseFile()) + 300'000);
        scanAloud();
        _library->noteItemPlayed(played);
        idle();
        EXPECT_GE(readable(), 200u);
        EXPECT_LT(readable(), songs);
        EXPECT_FALSE(_library->isStoring());
        EXPECT_EQ(troubles(), Troubles{StorageTrouble::NoRoom});
    }
    const auto said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(said, '\n'), 1) << said;
    scan();
    EXPECT_EQ(readable(), songs);
    EXPECT_EQ(playCount(played), 1);
    EXPECT_TRUE(_library->checkIntegrity());
    EXPECT_EQ(setAside(), 0);
}

TEST_F(LibraryStorageTest, AFullFileSystemStillShowsTheLibrary) {
    close();
    const SmallDisk disk(databaseFile().parent_path(), 2048);
    if (!disk.isMounted()) GTEST_SKIP() << "mounting is not permitted here";
    open();
    makeMusic(50);
    scan();
    makeMusic(songs);
    disk.fill(100);
    scan();
    EXPECT_EQ(troubles(), Troubles{StorageTrouble::NoRoom});
    const auto stored = readable();
    EXPECT_GE(stored, 50u);
    EXPECT_LT(stored, songs);
    disk.makeRoom();
    close();
    ASSERT_FALSE(fs::exists(databaseFile().string() + "-wal"));
    disk.fill(0);
    open();  // not even what lies beside the file while it is open can be made
    EXPECT_EQ(readable(), stored);
    EXPECT_EQ(troubles(), Troubles{StorageTrouble::NoRoom});
}

}  // namespace
}  // namespace helmo

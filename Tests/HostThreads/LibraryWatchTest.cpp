#include <condition_variable>
#include <mutex>
#include <sys/resource.h>
#include <thread>

#include "Host/Library/LibraryWatch.h"
#include "Platform/Foundation/RunLoop.h"
#include "Tests/HostThreads/ScanFixture.h"

namespace helmo {
namespace {

using namespace std::chrono_literals;
using Way = LibraryWatch::Way;

class LibraryWatchTest : public ScanFixture<NameReader> {
protected:
    ~LibraryWatchTest() override {
        _watch = nullptr;
        _scanner = nullptr;
    }
    /** Scans all music and follows it from then on. */
    void start(Way way = Way::Asks, std::vector<fs::path> roots = {}) {
        if (roots.empty()) roots = {music()};
        _scanner = std::make_unique<Scanner>(_library, roots, _reader);
        const auto folders = std::make_shared<FolderWatch>(_scanner->roots());
        _scanner->setWatch(folders);
        _watch = zornic::make<LibraryWatch>(
            folders,
            [this](const ScanScope& scope) {
                note(scope);
                _scanner->scan(scope);
            },
            way);
        _scanner->start();
        idle();
    }
    void note(const ScanScope& scope) {
        ++_scans;
        if (scope.isWhole()) _looked.push_back("everything");
        for (const auto& [folder, isTree] : scope.places())
            _looked.push_back(folder.lexically_proximate(music()).string() + (isTree ? "/*" : ""));
    }
    /** Lets time go by; where it looked meanwhile. */
    Texts looked(zornic::Seconds time = 2s) {
        _looked.clear();
        const auto step = time > 100s ? 10s : 100ms;
        for (const auto end = _clock.now() + zornic::toDuration(time); _clock.now() < end;) {
            _clock.advance(step);
            _loop.runDue();
            idle();
        }
        return _looked;
    }
    fs::path write(const fs::path& name) {
        fs::create_directories((music() / name).parent_path());
        std::ofstream(music() / name) << name;
        return music() / name;
    }
    Texts songs() const { return titles(*query()); }
    std::map<std::string, zornic::PersistentID> identities() const {
        std::map<std::string, zornic::PersistentID> found;
        const auto all = query()->items();
        for (std::uint64_t at = 0; at < all->count(); ++at)
            if (const auto song = all->entityAtIndex(at))
                found[song->valueForProperty(zornic::MediaItemProperty::Title).asText()] =
                    song->persistentID();
        return found;
    }

    zornic::ManualClock _clock;
    zornic::RunLoop _loop{_clock};
    std::unique_ptr<Scanner> _scanner;
    std::shared_ptr<LibraryWatch> _watch;
    Texts _looked;
    int _scans = 0;
};

TEST_F(LibraryWatchTest, OnlyWhatChangedIsLookedThroughAndReadOnceItIsWhole) {
    write("one/A.mp3");
    write("two/B.mp3");
    start();
    ASSERT_EQ(songs(), (Texts{"A", "B"}));
    EXPECT_EQ(looked(), Texts());

    std::ofstream growing(music() / "one/C.mp3");
    growing << "the beginning" << std::flush;
    fs::create_hard_link(write("two/D.mp3"), music() / "one/E.mp3");
    write("two/notes.txt");
    write("one/.hidden/X.mp3");
    EXPECT_EQ(looked(), (Texts{"one", "two"}));
    EXPECT_EQ(songs(), (Texts{"A", "B", "D", "E"})) << "C is still being written";
    growing << " and the end";
    growing.close();
    EXPECT_EQ(looked(), Texts{"one"});
    EXPECT_EQ(songs(), (Texts{"A", "B", "C", "D", "E"}));
    std::ofstream growingOn(music() / "one/G.mp3");
    growingOn << "the beginning" << std::flush;
    EXPECT_EQ(looked(), Texts());
    std::ofstream(_folder / "whole.mp3") << "another one, whole";
    fs::rename(_folder / "whole.mp3", music() / "one/G.mp3");
    EXPECT_EQ(looked(), Texts{"one"});
    EXPECT_EQ(songs(), (Texts{"A", "B", "C", "D", "E", "G"}));

    _reader->reads = 0;
    std::ofstream(music() / "two/B.mp3", std::ios::app) << "changed";
    fs::rename(music() / "two/D.mp3", music() / "two/F.mp3");
    fs::remove(music() / "one/A.mp3");
    EXPECT_EQ(looked(), (Texts{"one", "two"}));
    EXPECT_EQ(songs(), (Texts{"B", "C", "E", "F", "G"}));
    EXPECT_EQ(_reader->reads, 2);
    fs::remove(music() / "two/notes.txt");
    EXPECT_EQ(looked(), Texts());
}

TEST_F(LibraryWatchTest, FoldersComeMoveAndGoWithAllInside) {
    write("one/A.mp3");
    write("one/deep/B.mp3");
    const fs::path other = _folder / "elsewhere";
    fs::create_directories(other / "in");
    std::ofstream(other / "C.mp3") << "C";
    std::ofstream(other / "in/D.mp3") << "D";
    std::ofstream(music() / "mix.m3u") << "one/A.mp3\none/deep/B.mp3\n";
    start();
    const auto before = identities();
    const auto mix = [&] {
        const auto lists = query(zornic::MediaGrouping::Playlist)->collections();
        const auto list = std::dynamic_pointer_cast<zornic::MediaPlaylist>(lists->entityAtIndex(0));
        return list ? titles(*list->itemsQuery()) : Texts();
    };

    fs::rename(other, music() / "one/new");
    EXPECT_EQ(looked(), Texts{"one/new/*"});
    EXPECT_EQ(songs(), (Texts{"A", "B", "C", "D"}));
    write("one/new/in/E.mp3");
    EXPECT_EQ(looked(), Texts{"one/new/in"});
    fs::rename(music() / "one", music() / "renamed");
    EXPECT_EQ(looked(), (Texts{"one/*", "renamed/*"}));
    EXPECT_EQ(songs(), (Texts{"A", "B", "C", "D", "E"}));
    write("renamed/deep/G.mp3");
    EXPECT_EQ(looked(), Texts{"renamed/deep"}) << "it is watched under its new name";

    fs::rename(music() / "renamed", _folder / "away");
    EXPECT_EQ(looked(), Texts{"renamed/*"});
    EXPECT_EQ(songs(), Texts());
    std::ofstream(_folder / "away/H.mp3") << "H";
    EXPECT_EQ(looked(), Texts()) << "what was taken out is watched no more";
    fs::rename(_folder / "away", music() / "renamed");
    looked();
    EXPECT_EQ(songs(), (Texts{"A", "B", "C", "D", "E", "G", "H"}));
    const auto after = identities();
    for (const auto& [title, id] : before) EXPECT_EQ(after.at(title), id) << title;
    fs::rename(music() / "renamed", music() / "one");
    looked();
    EXPECT_EQ(mix(), (Texts{"A", "B"}));
}

TEST_F(LibraryWatchTest, LinksAreFollowedOnceAndLostWithTheLink) {
    write("one/A.mp3");
    const fs::path other = _folder / "elsewhere";
    fs::create_directories(other);
    std::ofstream(other / "B.mp3") << "B";
    start();
    fs::create_directory_symlink(other, music() / "one/link");
    EXPECT_EQ(looked(), Texts{"everything"});
    std::ofstream(other / "C.mp3") << "C";
    EXPECT_EQ(looked(), Texts{"one/link"});
    EXPECT_EQ(songs(), (Texts{"A", "B", "C"}));
    // A folder that comes with a link back to what is known already.
    fs::create_directories(_folder / "new");
    fs::create_directory_symlink(music(), _folder / "new/circle");
    std::ofstream(_folder / "new/D.mp3") << "D";
    fs::rename(_folder / "new", music() / "a new one");
    looked();
    EXPECT_EQ(songs(), (Texts{"A", "B", "C", "D"}));
    fs::remove(music() / "one/link");
    EXPECT_EQ(looked(), Texts{"one/link/*"});
    EXPECT_EQ(songs(), (Texts{"A", "D"}));
}

TEST_F(LibraryWatchTest, ARootThatIsNotThereIsWaitedFor) {
    const fs::path root = _folder / "media/driver/stick";
    start(Way::Asks, {music(), root});
    EXPECT_EQ(songs(), Texts());
    fs::create_directories(root.parent_path());
    looked();
    fs::create_directories(root);
    std::ofstream(root / "A.mp3") << "A";
    looked();
    EXPECT_EQ(songs(), Texts{"A"});
    for (int time = 0; time < 2; ++time) {
        fs::rename(root, _folder / "pulled out");
        looked();
        EXPECT_EQ(songs(), Texts());
        fs::rename(_folder / "pulled out", root);
        looked();
        EXPECT_EQ(songs(), Texts{"A"});
    }
    write("B.mp3");
    looked();
    EXPECT_EQ(songs(), (Texts{"A", "B"}));
}

TEST_F(LibraryWatchTest, ChangesWithoutEndAreFollowedEveryFewSeconds) {
    write("A.mp3");
    start();
    const auto changeFor = [&](int halves) {
        for (int half = 0; half < halves; ++half) {
            write("N" + std::to_string(half) + ".mp3");
            looked(0.5s);
        }
    };
    changeFor(8);
    EXPECT_EQ(_scans, 0) << "it may be in the middle of something";
    changeFor(8);
    EXPECT_EQ(_scans, 1);
    looked();
    EXPECT_EQ(_scans, 2);
    EXPECT_EQ(songs().size(), 9u);
}

TEST_F(LibraryWatchTest, WhatCouldNotBeHeardOfIsFoundNevertheless) {
    write("A.mp3");
    std::ofstream(music() / "other.mp3") << "B";
    start();
    // More than the system keeps for whoever does not listen.
    for (int time = 0; time < 9'000; ++time)
        for (const char* name : {"A.mp3", "other.mp3"}) std::ofstream(music() / name, std::ios::app).flush();
    write("late/C.mp3");
    EXPECT_EQ(looked(), Texts{"everything"});
    EXPECT_EQ(songs(), (Texts{"A", "C", "other"}));

    rlimit before{};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{3, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    auto deaf = std::make_shared<FolderWatch>(std::vector{music()});
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_FALSE(deaf->isComplete());
    _watch = zornic::make<LibraryWatch>(
        deaf, [this](const ScanScope& scope) { _scanner->scan(scope); }, Way::Asks);
    deaf->add(music());
    write("D.mp3");
    looked(10s);
    looked(301s);
    EXPECT_EQ(songs(), (Texts{"A", "C", "D", "other"}));
}

TEST_F(LibraryWatchTest, MediaAreFoundInTheTableOfWhatIsMounted) {
    const fs::path table = _folder / "table";
    fs::create_directories(music() / "my stick");
    const std::string system = "1 0 8:1 / / rw shared:1 - ext4 /dev/sda1 rw\nnonsense\n";
    const auto mount = [&](const fs::path& place, const std::string& source = "/dev/sdb1") {
        std::string name = place.string();
        for (auto at = name.find(' '); at != std::string::npos; at = name.find(' '))
            name.replace(at, 1, "\\040");
        std::ofstream(table) << system << "7 1 8:17 / " << name << " rw - vfat " << source << " rw\n";
    };
    std::ofstream(table) << system;
    MountWatch watch({music()}, table);
    const auto change = [&] {
        note(watch.takeChanges());
        return std::exchange(_looked, {});
    };
    EXPECT_EQ(change(), Texts());
    mount(music() / "my stick");
    EXPECT_EQ(change(), Texts{"my stick/*"});
    mount(music());
    EXPECT_EQ(change(), (Texts{"./*"})) << "one went and one came around it";
    mount(_folder);
    EXPECT_EQ(change(), (Texts{"./*"}));
    mount("/somewhere/else");
    EXPECT_EQ(change(), Texts{"everything"}) << "a link may lead there";
    std::ofstream(table, std::ios::app)
        << "6 1 8:33 / " << music().string() << "/usb rw - vfat /dev/sdc1 rw\n";
    EXPECT_EQ(change(), Texts{"usb/*"});
    std::ofstream(table) << system;
    EXPECT_EQ(change(), Texts{"usb/*"});
    mount("/somewhere/else");
    std::ofstream(table, std::ios::app)
        << "6 1 8:33 / " << music().string() << "/usb rw - vfat /dev/sdc1 rw\n";
    EXPECT_EQ(change(), Texts{"everything"}) << "one beside the music, and one to which a link may lead";
    std::ofstream(table) << system;
    EXPECT_EQ(change(), Texts{"usb/*"});
    mount("/snap/thing", "/dev/loop3");
    EXPECT_EQ(change(), Texts());
}

TEST_F(LibraryWatchTest, AThreadHearsWhatOthersChangeWhileItIsScanned) {
    constexpr int writers = 3, files = 60;
    fs::create_directories(music());
    start(Way::Waits);
    std::mutex mutex;
    std::condition_variable isWoken;
    bool hasWork = true;
    _loop.setWakeUp([&] {
        std::lock_guard lock(mutex);
        hasWork = true;
        isWoken.notify_one();
    });
    std::vector<std::jthread> threads;
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&, writer] {
            for (int file = 0; file < files; ++file)
                write(std::to_string(writer) + "/" + std::to_string(file % 7) + "/T" + std::to_string(file) +
                      ".mp3");
        });
    const auto giveUp = std::chrono::steady_clock::now() + 60s;
    while (songs().size() < writers * files && std::chrono::steady_clock::now() < giveUp) {
        std::unique_lock lock(mutex);
        isWoken.wait_for(lock, 100ms, [&] { return hasWork; });
        hasWork = false;
        lock.unlock();
        _loop.runDue();
        _clock.advance(1s);
        _loop.runDue();
    }
    EXPECT_EQ(songs().size(), writers * files);
    threads.clear();
    _watch = nullptr;  // while it waits
    _loop.setWakeUp({});
}

}  // namespace
}  // namespace helmo

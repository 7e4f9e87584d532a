#include <cmath>
#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "Host/Player/GStreamerEngine.h"
#include "Host/TemporaryFolder.h"
#include "Platform/Foundation/RunLoop.h"
#include "Tests/Support/SoundFiles.h"

namespace helmo {
namespace {

using namespace std::chrono_literals;
using zornic::PlaybackSource;
using zornic::Seconds;

/** Writes what the engine tells as short words, in order. */
struct Listener : zornic::PlaybackEngineDelegate {
    void engineDidAdvanceToNext() override { said.push_back("advanced"); }
    void engineDidReachEnd() override { said.push_back("end"); }
    void engineStateDidChange() override { ++stateChanges; }
    void engineDidFail(const PlaybackSource& source, const std::string& text, bool isNext) override {
        said.push_back((isNext ? "next failed " : "failed ") +
                       std::filesystem::path(source.location).filename().string());
        reason = text;
        if (onFailure) onFailure();
    }
    std::vector<std::string> said;
    std::string reason;
    int stateChanges = 0;
    std::function<void()> onFailure;
};

class GStreamerEngineTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(GStreamerEngine::prepare(), "");
        engine->setDelegate(listener);
    }
    void TearDown() override {
        engine.reset();
        loop.runDue();
    }

    /** A tone as a WAV file. */
    PlaybackSource tone(const std::string& name, double seconds) {
        constexpr unsigned rate = 44100;
        std::vector<std::int16_t> samples(static_cast<std::size_t>(rate * seconds));
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<std::int16_t>(8000 * std::sin(static_cast<double>(i) * 0.06));
        const std::string bytes(reinterpret_cast<const char*>(samples.data()), samples.size() * 2);
        std::ofstream(folder / name, std::ios::binary) << SoundFiles::wave(bytes, rate, 2);
        return {.location = (folder / name).string()};
    }

    PlaybackSource textFile(const std::string& name) {
        std::ofstream(folder / name) << "Remember the milk.\n";
        return {.location = (folder / name).string()};
    }

    bool waitUntil(const std::function<bool()>& condition) {
        const auto limit = clock.now() + 20s;
        while (!condition()) {
            if (clock.now() > limit) return false;
            if (!loop.runDue()) std::this_thread::yield(), ::usleep(1000);
        }
        return true;
    }
    bool waitFor(const std::vector<std::string>& said) {
        return waitUntil([&] { return listener->said.size() >= said.size(); }) && listener->said == said;
    }
    /** Whether time runs, as the driver sees it. */
    bool timeRuns() {
        const auto start = engine->currentTime();
        return waitUntil([&] { return engine->currentTime() > start + 30ms; });
    }

    const TemporaryFolder temporary;
    const std::filesystem::path folder = temporary.path();
    zornic::SystemClock clock;
    zornic::RunLoop loop{clock};
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
    std::shared_ptr<GStreamerEngine> engine =
        zornic::make<GStreamerEngine>(GStreamerEngine::Options{.sink = Pipeline::Sink::Null, .log = {}});
};

TEST_F(GStreamerEngineTest, GoesOnWithTheNextSourceWithoutAGapAndThenEnds) {
    const auto begin = clock.now();
    engine->load(tone("50% of #1 – ü?.wav", 0.4), true);
    engine->setNext(tone("second.wav", 0.4));
    EXPECT_TRUE(engine->isPlaying());
    ASSERT_TRUE(waitFor({"advanced"})) << listener->reason;
    EXPECT_GE(clock.now() - begin, 300ms) << "told before the first had sounded";
    EXPECT_LT(engine->currentTime(), Seconds(0.3));
    EXPECT_EQ(listener->stateChanges, 1) << "sound stopped in between";

    ASSERT_TRUE(waitFor({"advanced", "end"}));
    EXPECT_GE(clock.now() - begin, 700ms);
    EXPECT_FALSE(engine->isPlaying());
    EXPECT_NEAR(engine->currentTime().count(), 0.4, 0.05);

    // Back from the end, as a driver who rewinds does.
    engine->seekTo(0.1s);
    engine->play();
    EXPECT_TRUE(timeRuns());
}

TEST_F(GStreamerEngineTest, ChangedNextSourceReplacesOneThatTheDecoderReadsAlready) {
    engine->load(tone("first.wav", 0.5), true);
    engine->setNext(tone("dropped.wav", 5));
    ASSERT_TRUE(timeRuns());  // a source this short is read to its end by now
    engine->setNext(tone("chosen.wav", 0.3));
    ASSERT_TRUE(waitFor({"advanced", "end"}));
    EXPECT_NEAR(engine->currentTime().count(), 0.3, 0.05);

    listener->said.clear();
    engine->load(tone("first.wav", 0.4), true);
    engine->setNext(tone("dropped.wav", 5));
    ASSERT_TRUE(timeRuns());
    engine->setNext(std::nullopt);
    EXPECT_TRUE(waitFor({"end"}));
}

TEST_F(GStreamerEngineTest, SourcesThatCannotBePlayedAreNamedWithTheReason) {
    struct Case {
        PlaybackSource source;
        const char* reason;
    };
    std::filesystem::create_directory(folder / "folder.mp3");
    std::ofstream(folder / "empty.mp3").flush();
    std::ofstream(folder / "picture.mp3") << "<svg xmlns=\"http://www.w3.org/2000/svg\"/>\n";
    for (const auto& [source, reason] :
         {Case{{.location = (folder / "missing.mp3").string()},
               "“missing.mp3” can't be played: there is no such file."},
          Case{textFile("text.mp3"), "“text.mp3” can't be played: it is not a sound file."},
          Case{{.location = (folder / "folder.mp3").string()}, "it is a folder"},
          Case{{.location = (folder / "empty.mp3").string()}, "the file is empty"},
          Case{{.location = (folder / "picture.mp3").string()},
               "“picture.mp3” can't be played: it is not a sound file."},
          Case{{.location = "http://127.0.0.1:9/radio"}, "“http://127.0.0.1:9/radio” can't be played: "}}) {
        listener->said.clear();
        engine->load(source, true);
        ASSERT_TRUE(waitFor({"failed " + std::filesystem::path(source.location).filename().string()}))
            << reason;
        EXPECT_NE(listener->reason.find(reason), std::string::npos) << listener->reason;
        EXPECT_FALSE(engine->isPlaying());
    }
    listener->said.clear();
    engine->load(tone("good.wav", 0.1), true);
    EXPECT_TRUE(waitFor({"end"})) << "a failure must not outlast its source";
}

TEST_F(GStreamerEngineTest, BrokenNextSourceLetsThePresentOneSoundOutAndAnotherFollow) {
    auto damaged = tone("damaged.wav", 0.1);
    std::fstream(damaged.location, std::ios::in | std::ios::out | std::ios::binary).seekp(20)
        << "\x77\x77";  // format
    for (const auto& broken :
         {textFile("text.mp3"), damaged, PlaybackSource{.location = "/nowhere/missing.wav"}}) {
        listener->said.clear();
        engine->load(tone("first.wav", 0.3), true);
        engine->setNext(broken);
        listener->onFailure = [&] { engine->setNext(tone("third.wav", 0.2)); };
        const auto failed = "next failed " + std::filesystem::path(broken.location).filename().string();
        ASSERT_TRUE(waitFor({failed, "advanced", "end"}))
            << testing::PrintToString(listener->said) << listener->reason;
    }
    listener->said.clear();
    listener->onFailure = {};
    engine->load(tone("first.wav", 0.1), true);
    engine->setNext(textFile("text.mp3"));
    EXPECT_TRUE(waitFor({"next failed text.mp3", "end"}));
}

TEST_F(GStreamerEngineTest, FileThatGoesAwayInTheMiddleIsAFailureAndNoEnd) {
    const auto source = tone("lost.wav", 60);
    engine->load(source, true);
    ASSERT_TRUE(timeRuns());
    std::filesystem::resize_file(source.location,
                                 200'000);  // as a medium that is pulled out: no more to read
    std::filesystem::remove(source.location);
    ASSERT_TRUE(waitFor({"failed lost.wav"})) << testing::PrintToString(listener->said);
    EXPECT_NE(listener->reason.find("there is no such file"), std::string::npos) << listener->reason;
    EXPECT_FALSE(engine->isPlaying());
}

TEST_F(GStreamerEngineTest, SeeksAndStartsInTheMiddle) {
    auto source = tone("long.wav", 60);
    source.startTime = 20s;
    engine->load(source, false);
    ASSERT_TRUE(waitUntil([&] { return engine->duration().has_value(); }));
    EXPECT_NEAR(engine->duration()->count(), 60, 0.1);
    EXPECT_NEAR(engine->currentTime().count(), 20, 0.05);
    EXPECT_FALSE(engine->isPlaying());

    engine->play();
    ASSERT_TRUE(timeRuns());
    engine->seekTo(40s);
    engine->seekTo(30s);
    EXPECT_EQ(engine->currentTime(), 30s) << "the bar must not jump back meanwhile";
    ASSERT_TRUE(timeRuns());
    EXPECT_NEAR(engine->currentTime().count(), 30, 2);

    // Forwards and back while the end was read already, and the next one with it.
    engine->setNext(tone("next.wav", 0.1));
    engine->seekTo(59.5s);
    ASSERT_TRUE(timeRuns());
    engine->seekTo(10s);
    ASSERT_TRUE(timeRuns());
    EXPECT_NEAR(engine->currentTime().count(), 10, 2);
    EXPECT_TRUE(listener->said.empty());
    engine->seekTo(1000s);
    EXPECT_TRUE(waitFor({"advanced", "end"}));
}

TEST_F(GStreamerEngineTest, PausesStopsAndGoesSilentlyWhatever) {
    engine->load(tone("first.wav", 0.5), true);
    ASSERT_TRUE(timeRuns());
    engine->pause();
    ASSERT_TRUE(waitUntil([&] { return listener->stateChanges == 2; }));
    const auto paused = engine->currentTime();
    EXPECT_FALSE(engine->isPlaying());
    engine->play();
    ASSERT_TRUE(timeRuns());
    EXPECT_GT(engine->currentTime(), paused);

    engine->stop();
    EXPECT_EQ(engine->currentTime(), Seconds(0));
    for (int i = 0; i < 20; ++i) engine->load(tone("skipped.wav", 0.1), true);  // a driver who skips fast
    engine->load(tone("last.wav", 0.2), true);
    ASSERT_TRUE(waitFor({"end"})) << "overtaken sources must not be heard of";
    EXPECT_NEAR(engine->currentTime().count(), 0.2, 0.05);

    engine->load(tone("last.wav", 0.1), true);
    engine->setNext(tone("next.wav", 0.1));
    ASSERT_TRUE(timeRuns());
    const auto before = listener->said;
    engine.reset();
    while (loop.runDue()) {
    }
    EXPECT_EQ(listener->said, before);
}

}  // namespace
}  // namespace helmo

#include <thread>

#include "Platform/Foundation/Coalescer.h"
#include "Platform/Foundation/RunLoop.h"

using namespace zornic;
using namespace std::chrono_literals;

namespace {

class RunLoopTest : public testing::Test {
protected:
    void advance(Duration by) {
        clock.advance(by);
        loop.runDue();
    }
    Task log(char letter) {
        return [this, letter] { order += letter; };
    }

    ManualClock clock;
    RunLoop loop{clock};
    std::string order;
};

}  // namespace

TEST_F(RunLoopTest, RunsBlocksInOrderAndLeavesNewOnesForTheNextTurn) {
    loop.async(log('a'));
    loop.async([&] {
        order += 'b';
        loop.runDue();  // a loop run inside a block goes on in order
        loop.async(log('d'));
    });
    loop.async(log('c'));
    EXPECT_TRUE(loop.runDue());
    EXPECT_EQ(order, "abc");
    EXPECT_EQ(loop.nextDue(), clock.now());

    std::function<void()> again = [&] { loop.async(again); };
    Token timer;
    std::function<void()> timerAgain = [&] { timer = loop.after(0s, timerAgain); };
    again();
    timerAgain();
    EXPECT_TRUE(loop.runDue());  // comes back although both renew themselves
    EXPECT_EQ(order, "abcd");
}

TEST_F(RunLoopTest, TimersRunByDueTimeThenByOrderOfScheduling) {
    const auto late = loop.after(3s, log('c'));
    const auto tick = loop.every(2s, log('t'));
    const auto first = loop.after(1s, log('a'));
    const auto second = loop.after(1s, log('b'));
    const auto same = loop.after(2s, log('s'));
    const auto never = loop.after(Duration::max(), log('!'));
    EXPECT_FALSE(loop.runDue());
    EXPECT_EQ(loop.nextDue(), clock.now() + 1s);
    advance(3s);
    EXPECT_EQ(order, "abtsc");
}

TEST_F(RunLoopTest, RepeatingTimersKeepTheirBeatAndSkipWhatTheyMissed) {
    auto tick = loop.every(1s, log('t'));
    advance(2500ms);  // late: once, not twice
    EXPECT_EQ(order, "t");
    advance(500ms);  // on the third second, not one second after the late call
    EXPECT_EQ(order, "tt");
    advance(999ms);
    EXPECT_EQ(order, "tt");
    tick.reset();
    advance(10s);
    EXPECT_EQ(order, "tt");
    EXPECT_FALSE(loop.nextDue());
}

TEST_F(RunLoopTest, TasksMayEndThemselvesAndOthersWhileTheyRun) {
    Token own, other, frame, otherFrame;
    own = loop.every(1s, [&, witness = std::make_shared<int>(1)] {
        own.reset();
        other.reset();
        order += static_cast<char>('0' + *witness);  // its captures are still there
    });
    other = loop.after(1s, log('!'));
    advance(5s);
    advance(5s);
    EXPECT_EQ(order, "1");

    frame = loop.onFrame([&](TimePoint time) {
        EXPECT_EQ(time, clock.now());
        order += 'f';
        frame.reset();
        otherFrame.reset();
    });
    otherFrame = loop.onFrame([&](TimePoint) { order += '!'; });
    EXPECT_TRUE(loop.wantsFrames());
    loop.fireFrame();
    loop.fireFrame();
    EXPECT_EQ(order, "1f");
    EXPECT_FALSE(loop.wantsFrames());
}

TEST_F(RunLoopTest, BlocksArriveFromAnyThreadAndWakeAnIdleLoopOnce) {
    int wakeUps = 0;
    loop.setWakeUp([&] { ++wakeUps; });
    int ran = 0;
    std::thread([&] {
        for (int block = 0; block < 100; ++block) mainQueue().async([&] { ++ran; });
    }).join();
    EXPECT_EQ(wakeUps, 1);
    EXPECT_EQ(ran, 0);
    loop.runDue();
    EXPECT_EQ(ran, 100);
    loop.async([] {});
    EXPECT_EQ(wakeUps, 2);
}

TEST(RunLoopLifeTest, TokensAndWaitingThreadsOutliveTheLoop) {
    ManualClock clock;
    Token once, repeated, frame;
    std::thread waiting;
    auto captured = std::make_shared<int>();
    {
        RunLoop loop(clock);
        RunLoop second(clock);
        EXPECT_EQ(&RunLoop::main(), &loop);
        once = loop.after(1s, [captured] {});
        repeated = loop.every(1s, [] {});
        frame = loop.onFrame([](TimePoint) {});
        waiting = std::thread([captured] { mainQueue().sync([captured] { FAIL(); }); });
        while (!loop.nextDue() || *loop.nextDue() > clock.now()) std::this_thread::yield();
    }
    waiting.join();
    EXPECT_FALSE(RunLoop::hasMain());
    EXPECT_EQ(captured.use_count(), 1);
    mainQueue().async([captured] { FAIL(); });
    EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(RunLoopTest, DelayedCallsAreCancelledByOperationAndDieWithTheirObject) {
    DelayedCalls calls;
    calls.perform("seek", 1s, log('!'));
    calls.perform("seek", 2s, log('!'));
    calls.perform("show", 1s, [&] {
        order += 's';
        calls.perform("show", 1s, log('r'));
    });
    calls.cancel("seek");
    advance(1s);
    advance(1s);
    EXPECT_EQ(order, "sr");

    auto owned = std::make_unique<DelayedCalls>();
    owned->perform("end", 1s, [&] {
        owned.reset();
        order += 'e';
    });
    owned->perform("late", 1s, log('!'));
    advance(1s);
    EXPECT_EQ(order, "sre");
}

TEST_F(RunLoopTest, ManyRequestsInOneTurnCauseOneUpdate) {
    auto coalescer = std::make_unique<Coalescer>(log('u'));
    coalescer->request();
    coalescer->request();
    loop.runDue();
    EXPECT_EQ(order, "u");
    coalescer->request();
    coalescer.reset();
    loop.runDue();
    EXPECT_EQ(order, "u");
}

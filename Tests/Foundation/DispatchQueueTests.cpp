#include <atomic>
#include <thread>

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/RunLoop.h"

using namespace zornic;
using namespace std::chrono_literals;

TEST(DispatchQueueTest, ASerialQueueKeepsOrderAndRunsTheRestBeforeItDies) {
    std::vector<int> order;
    {
        SerialQueue queue("order");
        for (int block = 0; block < 200; ++block) queue.async([&, block] { order.push_back(block); });
        queue.sync([&] { EXPECT_EQ(order.size(), 200U); });
        queue.async([&] {
            EXPECT_TRUE(queue.isCurrent());
            queue.async([&] { order.push_back(200); });
        });
        EXPECT_FALSE(queue.isCurrent());
    }
    ASSERT_EQ(order.size(), 201U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST(DispatchQueueTest, AConcurrentQueueRunsBlocksThatNeedEachOther) {
    ConcurrentQueue queue("meeting");
    Semaphore first, second;
    DispatchGroup group;
    for (const bool isFirst : {true, false}) {
        group.enter();
        queue.async([&, isFirst] {
            (isFirst ? first : second).signal();
            (isFirst ? second : first).wait();
            group.leave();
        });
    }
    group.wait();
}

TEST(DispatchQueueTest, AQueueMayBeDestroyedByItsOwnBlock) {
    Semaphore ended;
    auto serial = std::make_shared<SerialQueue>("own");
    auto concurrent = std::make_shared<ConcurrentQueue>("own");
    Semaphore letGo;
    serial->async([&, queue = serial]() mutable {
        letGo.wait();
        queue.reset();
    });
    serial->async([&] { ended.signal(); });
    concurrent->async([&, queue = concurrent] { letGo.wait(); });
    concurrent->async([&] { ended.signal(); });
    serial.reset();
    concurrent.reset();
    letGo.signal();
    letGo.signal();
    ended.wait();
    ended.wait();
    EXPECT_TRUE(BackgroundWork::waitUntilIdle(10s));
}

TEST(DispatchQueueTest, WorkCountsUntilItsCapturesAreGone) {
    ASSERT_TRUE(BackgroundWork::waitUntilIdle(10s));
    Semaphore destroy;
    std::atomic<bool> destroyed = false;
    std::shared_ptr<int> captured(new int, [&](int* number) {
        destroy.wait();
        delete number;
        destroyed = true;
    });
    globalQueue(QueuePriority::Background).async([captured = std::move(captured)] {});
    EXPECT_FALSE(BackgroundWork::waitUntilIdle(20ms));
    destroy.signal();
    EXPECT_TRUE(BackgroundWork::waitUntilIdle(Duration::max()));
    EXPECT_TRUE(destroyed);

    auto elsewhere = BackgroundWork::begin();
    EXPECT_FALSE(BackgroundWork::isIdle());
    elsewhere.reset();
    EXPECT_TRUE(BackgroundWork::isIdle());
}

TEST(DispatchQueueTest, BlockedBackgroundWorkDoesNotHoldUpOtherPriorities) {
    Semaphore blocked, done;
    for (int block = 0; block < 16; ++block)
        globalQueue(QueuePriority::Background).async([&] { blocked.wait(); });
    globalQueue(QueuePriority::Default).async([&] { done.signal(); });
    globalQueue(QueuePriority::Highest).async([&] { done.signal(); });
    done.wait();
    done.wait();
    for (int block = 0; block < 16; ++block) blocked.signal();
    EXPECT_TRUE(BackgroundWork::waitUntilIdle(10s));
}

TEST(DispatchQueueTest, AGroupNotifiesTheMainQueueWhenAllHaveLeft) {
    ManualClock clock;
    RunLoop loop(clock);
    int notified = 0;
    DispatchGroup group;
    group.notify(mainQueue(), [&] { ++notified; });  // nothing entered
    EXPECT_EQ(notified, 0);
    loop.runDue();
    EXPECT_EQ(notified, 1);

    Semaphore go;
    group.enter();
    group.enter();
    group.notify(mainQueue(), [&] { ++notified; });
    globalQueue(QueuePriority::Default).async([&] {
        go.wait();
        group.leave();
    });
    group.leave();
    EXPECT_FALSE(loop.runDue());
    go.signal();
    group.wait();
    BackgroundWork::waitUntilIdle(10s);
    loop.runDue();
    EXPECT_EQ(notified, 2);
}

TEST(DispatchQueueTest, SyncOnTheMainQueueWaitsForTheMainThread) {
    ManualClock clock;
    RunLoop loop(clock);
    std::atomic<bool> returned = false;
    std::thread::id ranOn;
    std::thread other([&] {
        mainQueue().sync([&] { ranOn = std::this_thread::get_id(); });
        returned = true;
    });
    while (!loop.nextDue()) std::this_thread::yield();
    EXPECT_FALSE(returned);
    loop.runDue();
    other.join();
    EXPECT_EQ(ranOn, std::this_thread::get_id());
    EXPECT_TRUE(mainQueue().isCurrent());
}

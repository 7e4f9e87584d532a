#include <atomic>
#include <thread>

#include "Platform/Foundation/NotificationCenter.h"

using namespace zornic;

TEST(NotificationCenterTest, DeliversByNameAndSenderInOrderOfRegistration) {
    NotificationCenter center;
    const auto sender = make<Object>();
    const auto other = make<Object>();
    std::string order;
    const auto log = [&](char letter) { return [&order, letter](const Notification&) { order += letter; }; };
    const auto any = center.observe("changed", nullptr, log('a'));
    const auto fromSender = center.observe("changed", sender.get(), [&](const Notification& notification) {
        order += notification.userInfo.at("letter").asText();
    });
    const auto otherName = center.observe("ended", nullptr, log('!'));
    const auto last = center.observe("changed", nullptr, log('z'));
    center.post("changed", sender, {{"letter", "s"}});
    center.post("changed", other);
    center.post("changed", nullptr);
    EXPECT_EQ(order, "aszazaz");
}

TEST(NotificationCenterTest, ObserversComeAndGoDuringAPost) {
    NotificationCenter center;
    std::string order;
    Observation own, other, added;
    own = center.observe("changed", nullptr, [&, witness = std::make_shared<char>('1')](const Notification&) {
        own.reset();
        other.reset();
        added = center.observe("changed", nullptr, [&](const Notification&) { order += 'n'; });
        center.post("changed", nullptr);  // reaches the new one only, although this handler still runs
        order += *witness;
    });
    other = center.observe("changed", nullptr, [&](const Notification&) { order += '!'; });
    center.post("changed", nullptr);
    EXPECT_EQ(order, "n1");
    center.post("changed", nullptr);
    EXPECT_EQ(order, "n1n");
}

TEST(NotificationCenterTest, AnEndedObservationLetsGoOfItsHandlerAndMayOutliveTheCentre) {
    auto center = std::make_unique<NotificationCenter>();
    const auto captured = std::make_shared<int>();
    auto first = center->observe("changed", nullptr, [captured](const Notification&) {});
    auto second = center->observe("changed", nullptr, [captured](const Notification&) {});
    first.reset();
    EXPECT_EQ(captured.use_count(), 2);
    center.reset();
    second.reset();
    EXPECT_EQ(captured.use_count(), 1);
}

TEST(NotificationCenterTest, ThreadsMayPostObserveAndEndAtOnce) {
    NotificationCenter center;
    std::atomic<int> heard = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back([&] {
            for (int turn = 0; turn < 200; ++turn) {
                const auto observation =
                    center.observe("changed", nullptr, [&](const Notification&) { ++heard; });
                center.post("changed", nullptr);
            }
        });
    for (auto& thread : threads) thread.join();
    EXPECT_GE(heard, 600);
}

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "Host/Display/InputWatch.h"
#include "Host/TemporaryFolder.h"

namespace helmo {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto tooLong = 20s;

TEST(InputWatchTest, SleepsUntilADeviceHasInputOneComesOrSomebodyWakesIt) {
    const TemporaryFolder folder;
    const auto device = folder.path() / "event0", later = folder.path() / "event1";
    ASSERT_EQ(mkfifo(device.c_str(), 0600), 0);
    const int pen = open(device.c_str(), O_RDWR);
    InputWatch watch(folder.path());
    ASSERT_TRUE(watch.hearsDevices());
    const auto isWokenBy = [&](auto&& cause) {
        const auto start = Clock::now();
        cause();
        watch.wait(tooLong);
        return Clock::now() - start < tooLong;
    };
    EXPECT_TRUE(isWokenBy([&] { EXPECT_EQ(write(pen, "touch", 5), 5); }));
    EXPECT_TRUE(isWokenBy([&] { watch.wake(); }));
    std::jthread other;
    EXPECT_TRUE(isWokenBy([&] { other = std::jthread([&] { watch.wake(); }); }));
    EXPECT_TRUE(isWokenBy([&] { EXPECT_EQ(mkfifo(later.c_str(), 0600), 0); }));
    const int laterPen = open(later.c_str(), O_RDWR);
    EXPECT_TRUE(isWokenBy([&] { EXPECT_EQ(write(laterPen, "touch", 5), 5); }));

    const auto start = Clock::now();
    watch.wait(5ms);
    EXPECT_GE(Clock::now() - start, 5ms) << "nothing is left of what woke it";
    close(pen);
    close(laterPen);
}

TEST(InputWatchTest, SaysWhereDevicesHaveToBeAsked) { EXPECT_FALSE(InputWatch("/nowhere").hearsDevices()); }

}  // namespace
}  // namespace helmo

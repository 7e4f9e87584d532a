#include "Host/ProcessTime.h"

#include <fstream>
#include <sstream>
#include <string>
#include <time.h>
#include <unistd.h>

namespace helmo {

namespace {

double processAge() {
    std::ifstream file("/proc/self/stat");
    std::string stat((std::istreambuf_iterator<char>(file)), {});
    const auto name = stat.rfind(')');
    if (name == std::string::npos) return 0;
    // The start time, in ticks since boot, is the twentieth field after the name, which may hold blanks.
    std::istringstream fields(stat.substr(name + 1));
    std::string skipped;
    for (int field = 0; field < 19; ++field) fields >> skipped;
    double ticks = 0;
    fields >> ticks;
    timespec now{};
    if (!fields || clock_gettime(CLOCK_BOOTTIME, &now) != 0) return 0;
    const double start = ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
    return (static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9 - start) * 1000;
}

/** A shell that became helmo by exec has an age of its own, which is no part of helmo's start. */
constexpr double oldestLoad = 5000;
const double ageAtLoad = processAge();

}  // namespace

double millisecondsSinceProcessStart() { return processAge() - (ageAtLoad > oldestLoad ? ageAtLoad : 0); }

}  // namespace helmo

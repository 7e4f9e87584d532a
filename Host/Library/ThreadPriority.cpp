#include "Host/Library/ThreadPriority.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace helmo {

namespace {

/** As the system's own tools count: 0 is usual, 19 the least. */
constexpr int niceness = 10;
/** Among the disk's usual clients, the last; "idle" could starve behind a driver's other programs. */
constexpr int ofThread = 1, usualClass = 2, lastInClass = 7, classShift = 13;

}  // namespace

void standBack() {
    // Linux counts the calling thread alone; where it may not be, the scan runs like everything else.
    (void)::setpriority(PRIO_PROCESS, 0, niceness);
    (void)::syscall(SYS_ioprio_set, ofThread, 0, usualClass << classShift | lastInClass);
}

}  // namespace helmo

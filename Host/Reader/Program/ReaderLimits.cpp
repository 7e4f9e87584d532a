#include "Host/Reader/Program/ReaderLimits.h"

#include <csignal>
#include <malloc.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

namespace helmo {

namespace {

// A sanitizer reserves terabytes of addresses for its shadow memory and looks at other processes: under one,
// memory stays unlimited, and dumps are left to its own options.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif
#else
constexpr bool isSanitized = false;
#endif

/** Addresses. Programs and libraries take 20 MB of them. Tags: the largest picture in a few copies. Pictures:
   the most pixels there may be, and a scaled copy. */
constexpr rlim_t memoryForTags = 160 << 20, memoryForPictures = 400 << 20;
constexpr rlim_t openFiles = 32;
constexpr int nicenessOfTags = 10, nicenessOfPictures = 5;
/** Freed memory above this goes back to the system at once. */
constexpr int keptMemory = 2 << 20;
/** Seconds of processor that one request may take. helmo's own limit, by the clock, is stricter. */
constexpr int processorSeconds = 15;

volatile std::sig_atomic_t secondsUsed = 0;

void countSecond(int) {
    secondsUsed = secondsUsed + 1;
    if (secondsUsed > processorSeconds) ::_exit(ReaderExit::OutOfTime);
}

void limit(int resource, rlim_t value) {
    const rlimit both{value, value};
    ::setrlimit(static_cast<__rlimit_resource_t>(resource), &both);
}

}  // namespace

void applyReaderLimits(ReaderRole role) {
    ::close_range(ReaderDescriptor::Progress + 1, ~0u, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_NOFILE, openFiles);
    if (!isSanitized) {
        ::prctl(PR_SET_DUMPABLE, 0);
        limit(RLIMIT_FSIZE, 0);
        limit(RLIMIT_AS, role == ReaderRole::Tags ? memoryForTags : memoryForPictures);
        ::mallopt(M_MMAP_THRESHOLD, keptMemory);
        ::mallopt(M_TRIM_THRESHOLD, 2 * keptMemory);
    }
    ::setpriority(PRIO_PROCESS, 0, role == ReaderRole::Tags ? nicenessOfTags : nicenessOfPictures);
    struct sigaction action {};
    action.sa_handler = countSecond;
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGPROF, &action, nullptr);
    const itimerval everySecond{{1, 0}, {1, 0}};
    ::setitimer(ITIMER_PROF, &everySecond, nullptr);
}

void restartReaderTime() { secondsUsed = 0; }

}  // namespace helmo

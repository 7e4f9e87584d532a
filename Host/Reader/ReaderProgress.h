#pragma once

#include <atomic>
#include <cstdint>

namespace helmo {

/** A page of memory that helmo and its reader share: the reader writes down what it is at before it begins,
   so that helmo knows at which file it died or hangs, though replies are sent many at once. */
struct ReaderProgress {
    /** Values of `request` that are no request's number. */
    static constexpr std::uint32_t notStarted = 0, idle = 0xFFFFFFFF;
    static constexpr std::size_t pageSize = 4096;

    std::atomic<std::uint32_t> request;
};
static_assert(std::atomic<std::uint32_t>::is_always_lock_free);

/** How helmo and its reader are connected: the descriptors that the reader is born with. */
namespace ReaderDescriptor {
inline constexpr int Socket = 3, Progress = 4;
}

/** Exit statuses of the reader that say why it gave up at a request. */
namespace ReaderExit {
inline constexpr int OutOfMemory = 71, OutOfTime = 72;
}

/** What a reader is for, and by that its limits: the program's first argument. */
enum class ReaderRole { Tags, Pictures };
inline const char* nameOf(ReaderRole role) { return role == ReaderRole::Tags ? "tags" : "pictures"; }

}  // namespace helmo

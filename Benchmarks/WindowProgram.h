#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace helmo::benchmarks {

/** A program with a window that runs in a process of its own, on a video driver without a screen, and whose
   frames are watched from outside. Ended with this object. */
class WindowProgram {
public:
    using Duration = std::chrono::nanoseconds;

    /** Throws when it can't be started. */
    explicit WindowProgram(const std::vector<std::string>& commandLine);
    ~WindowProgram();
    WindowProgram(const WindowProgram&) = delete;
    WindowProgram& operator=(const WindowProgram&) = delete;

    /** Waits for the next frame; when it was on the screen, counted from the start. None when none comes
       within `limit`. */
    std::optional<Duration> nextFrame(Duration limit);
    /** How often its main thread has gone to sleep so far; 0 when the system doesn't tell. */
    std::int64_t sleeps() const;

private:
    std::int64_t _start = 0;
    pid_t _process = 0;
    int _frames = -1;
};

}  // namespace helmo::benchmarks

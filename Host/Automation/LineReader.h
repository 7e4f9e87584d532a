#pragma once

#include <condition_variable>
#include <cstdio>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "Platform/Foundation/Task.h"

namespace helmo {

/** Lines of an input, read on a thread of its own so that the main loop goes on meanwhile. */
class LineReader {
public:
    /** A line longer than this (bytes) is delivered as too long, without its rest. */
    static constexpr std::size_t longestLine = 1 << 20;

    struct Line {
        std::string text;
        bool tooLong = false;
    };

    explicit LineReader(std::FILE* input);
    ~LineReader();

    /** The next line, waiting at most `limit`; nullopt when none came. */
    std::optional<Line> next(zornic::Duration limit);
    /** Waits for the next line; nullopt at the end of input. */
    std::optional<Line> next();
    /** Whether the input has ended and every line was taken. */
    bool ended();

private:
    struct State;
    std::shared_ptr<State> _state;
};

}  // namespace helmo

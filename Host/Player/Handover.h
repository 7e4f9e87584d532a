#pragma once

#include <mutex>
#include <optional>

#include "Platform/Media/PlaybackEngine.h"

namespace helmo {

/** What follows without a gap, agreed between the main thread, which decides, and the streaming thread, which
   asks long before the present source has sounded out. Thread-safe. */
class Handover {
public:
    enum class State {
        /** Nothing was given: the answer may still change. */
        Open,
        /** The pipeline reads the next source already, while the present one sounds on. */
        Given,
        /** The given source sounds; the main thread has not heard of it yet. */
        Sounding
    };

    /** Main thread: what is to follow. Returns the state; unless it is `Open`, the offer came too late. */
    State offer(const std::optional<zornic::PlaybackSource>& source);
    /** Streaming thread: takes the offer if it can follow without a gap; nullopt: it can't, or there is none.
     */
    std::optional<zornic::PlaybackSource> give();
    /** Streaming thread: another source sounds. Returns whether it is the one that was given. */
    bool didSound();
    /** Main thread: the source that was given, which is now the present one; the next may be offered. */
    std::optional<zornic::PlaybackSource> settle();
    State state() const;

private:
    mutable std::mutex _mutex;
    State _state = State::Open;
    std::optional<zornic::PlaybackSource> _source;
};

}  // namespace helmo

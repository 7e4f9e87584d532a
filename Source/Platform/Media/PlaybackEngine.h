#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Platform/Foundation/Object.h"
#include "Platform/Foundation/Task.h"

namespace zornic {

/** What an engine plays. A value. */
struct PlaybackSource {
    /** File path or address. */
    std::string location;
    /** Length where it is known beforehand; 0 when not. */
    Seconds duration{0};
    Seconds startTime{0};
    friend bool operator==(const PlaybackSource&, const PlaybackSource&) = default;
};

/** What an engine tells its player, on the main thread. */
class PlaybackEngineDelegate {
public:
    virtual ~PlaybackEngineDelegate() = default;
    /** The present source ended and the next one, handed over before, already sounds. */
    virtual void engineDidAdvanceToNext() {}
    /** The present source ended and nothing follows. */
    virtual void engineDidReachEnd() {}
    /** Whether sound comes out changed (buffering, a pause from outside). */
    virtual void engineStateDidChange() {}
    virtual void engineDurationDidChange() {}
    /** A source can't be played. `isNext`: it is the one handed over as next, while the present one goes on.
     */
    virtual void engineDidFail(const PlaybackSource&, const std::string& /*reason*/, bool /*isNext*/) {}
};

/** Makes sound of one source after another. The player decides what; an engine only plays. Main thread;
   answers come through the delegate and never inside a call. */
class PlaybackEngine : public Object {
public:
    virtual void setDelegate(std::weak_ptr<PlaybackEngineDelegate> delegate) = 0;
    /** Replaces what plays, from `source.startTime`, playing or paused. */
    virtual void load(const PlaybackSource& source, bool play) = 0;
    /** What follows without a gap; nullopt: nothing. Replaces an earlier answer. */
    virtual void setNext(const std::optional<PlaybackSource>& source) = 0;
    virtual void play() = 0;
    virtual void pause() = 0;
    /** Lets go of every source. */
    virtual void stop() = 0;
    virtual void seekTo(Seconds time) = 0;
    virtual Seconds currentTime() const = 0;
    /** Length of the present source; nullopt while unknown or for a stream. */
    virtual std::optional<Seconds> duration() const = 0;
    /** Whether it is set to play, sounding or still buffering. */
    virtual bool isPlaying() const = 0;
};

/** An engine of silence that keeps time by the main run loop: for hosts whose clock is not real, and for
   tests. A source without a known duration lasts `assumedDuration`. */
class ClockedPlaybackEngine final : public PlaybackEngine {
public:
    static constexpr Seconds assumedDuration{180};
    /** Tells for a location why it can't be played; empty: it can. */
    using Probe = std::function<std::string(const std::string& location)>;
    explicit ClockedPlaybackEngine(Probe probe = {});

    void setDelegate(std::weak_ptr<PlaybackEngineDelegate> delegate) override;
    void load(const PlaybackSource& source, bool play) override;
    void setNext(const std::optional<PlaybackSource>& source) override;
    void play() override;
    void pause() override;
    void stop() override;
    void seekTo(Seconds time) override;
    Seconds currentTime() const override;
    std::optional<Seconds> duration() const override;
    bool isPlaying() const override { return _playing; }

private:
    void start(const PlaybackSource& source, TimePoint since);
    void schedule();
    void reachEnd();
    std::string reasonAgainst(const PlaybackSource& source) const;
    Token failLater(PlaybackSource source, std::string reason, bool isNext);

    const Probe _probe;
    std::weak_ptr<PlaybackEngineDelegate> _delegate;
    std::optional<PlaybackSource> _source, _next;
    bool _playing = false;
    /** Position at `_since`; it runs on from there while playing. */
    Seconds _position{0};
    TimePoint _since{};
    Token _end, _failure, _nextFailure;
};

}  // namespace zornic

#include <algorithm>
#include <utility>

#include "Platform/Foundation/RunLoop.h"
#include "Platform/Media/PlaybackEngine.h"

namespace zornic {

ClockedPlaybackEngine::ClockedPlaybackEngine(Probe probe) : _probe(std::move(probe)) {}

void ClockedPlaybackEngine::setDelegate(std::weak_ptr<PlaybackEngineDelegate> delegate) {
    _delegate = std::move(delegate);
}

void ClockedPlaybackEngine::load(const PlaybackSource& source, bool play) {
    stop();
    _playing = play;
    if (auto reason = reasonAgainst(source); !reason.empty()) {
        _failure = failLater(source, std::move(reason), false);
        return;
    }
    start(source, RunLoop::main().now());
}

void ClockedPlaybackEngine::setNext(const std::optional<PlaybackSource>& source) {
    _nextFailure.reset();
    _next.reset();
    if (!source) return;
    auto reason = reasonAgainst(*source);
    if (reason.empty())
        _next = source;
    else
        _nextFailure = failLater(*source, std::move(reason), true);
}

void ClockedPlaybackEngine::play() {
    if (_playing || !_source) return;
    _playing = true;
    _since = RunLoop::main().now();
    schedule();
}

void ClockedPlaybackEngine::pause() {
    _position = currentTime();
    _playing = false;
    _end.reset();
}

void ClockedPlaybackEngine::stop() {
    _end.reset();
    _failure.reset();
    _nextFailure.reset();
    _source.reset();
    _next.reset();
    _playing = false;
    _position = Seconds(0);
}

void ClockedPlaybackEngine::seekTo(Seconds time) {
    if (!_source) return;
    _position = std::clamp(time, Seconds(0), *duration());
    _since = RunLoop::main().now();
    schedule();
}

Seconds ClockedPlaybackEngine::currentTime() const {
    if (!_source) return Seconds(0);
    if (!_playing) return _position;
    return std::min(_position + Seconds(RunLoop::main().now() - _since), *duration());
}

std::optional<Seconds> ClockedPlaybackEngine::duration() const {
    if (!_source) return std::nullopt;
    return _source->duration > Seconds(0) ? _source->duration : assumedDuration;
}

void ClockedPlaybackEngine::start(const PlaybackSource& source, TimePoint since) {
    _source = source;
    _position = std::clamp(source.startTime, Seconds(0), *duration());
    _since = since;
    schedule();
}

void ClockedPlaybackEngine::schedule() {
    _end.reset();
    if (!_playing) return;
    const auto left = _since + toDuration(*duration() - _position) - RunLoop::main().now();
    _end = RunLoop::main().after(left, [this] { reachEnd(); });
}

void ClockedPlaybackEngine::reachEnd() {
    const auto self = strong(this);
    const auto ended = _since + toDuration(*duration() - _position);
    const auto delegate = _delegate.lock();
    if (const auto next = std::exchange(_next, std::nullopt)) {
        // From the moment at which the last one ended, so that a late timer loses no time.
        start(*next, ended);
        if (delegate) delegate->engineDidAdvanceToNext();
        return;
    }
    _position = *duration();
    _playing = false;
    if (delegate) delegate->engineDidReachEnd();
}

std::string ClockedPlaybackEngine::reasonAgainst(const PlaybackSource& source) const {
    return _probe ? _probe(source.location) : std::string();
}

Token ClockedPlaybackEngine::failLater(PlaybackSource source, std::string reason, bool isNext) {
    return RunLoop::main().after(Duration::zero(), [this, source, reason = std::move(reason), isNext] {
        const auto self = strong(this);
        if (!isNext) _playing = false;
        if (const auto delegate = _delegate.lock()) delegate->engineDidFail(source, reason, isNext);
    });
}

}  // namespace zornic

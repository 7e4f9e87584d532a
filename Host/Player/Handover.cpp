#include "Host/Player/Handover.h"

#include <utility>

#include "Host/Player/SoundFile.h"

namespace helmo {

using zornic::PlaybackSource;
using zornic::Seconds;

Handover::State Handover::offer(const std::optional<PlaybackSource>& source) {
    std::lock_guard lock(_mutex);
    if (_state == State::Open) _source = source;
    return _state;
}

std::optional<PlaybackSource> Handover::give() {
    std::unique_lock lock(_mutex);
    if (_state != State::Open || !_source) return std::nullopt;
    const PlaybackSource source = *_source;
    // A source that starts in its middle, comes over the network or may be broken would take the present one
    // down with it: it is loaded once that has ended.
    if (source.startTime > Seconds::zero() || isAddress(source.location)) return std::nullopt;
    lock.unlock();
    if (kindOfFile(source.location) != FileKind::Sound) return std::nullopt;
    lock.lock();
    if (_state != State::Open || _source != source) return std::nullopt;
    _state = State::Given;
    return source;
}

bool Handover::didSound() {
    std::lock_guard lock(_mutex);
    if (_state != State::Given) return false;
    _state = State::Sounding;
    return true;
}

std::optional<PlaybackSource> Handover::settle() {
    std::lock_guard lock(_mutex);
    if (_state == State::Open) return std::nullopt;
    _state = State::Open;
    return std::exchange(_source, std::nullopt);
}

Handover::State Handover::state() const {
    std::lock_guard lock(_mutex);
    return _state;
}

}  // namespace helmo

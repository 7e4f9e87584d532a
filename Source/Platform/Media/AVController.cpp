#include "Platform/Media/AVController.h"

#include <algorithm>
#include <random>
#include <utility>

#include "Platform/Foundation/RunLoop.h"
#include "Platform/Media/MediaLibrary.h"

namespace zornic {

namespace {

constexpr Seconds restartLimit{3};
constexpr std::uint64_t mostFailures = 50;
constexpr auto seekInterval = std::chrono::milliseconds(250);

/** How much faster than playing the time runs after a button was held so long. */
double seekRate(Seconds held) { return held < Seconds(2) ? 4 : held < Seconds(5) ? 8 : 16; }

PlaybackSource sourceOf(const AVItem& item, Seconds startTime) {
    return {.location = item.location(), .duration = item.knownDuration(), .startTime = startTime};
}

}  // namespace

AVController::AVController(std::shared_ptr<PlaybackEngine> engine)
    : _engine(std::move(engine)), _shuffleSeed(std::random_device()()) {}

void AVController::didMake() {
    Object::didMake();
    _engine->setDelegate(strong(this));
}

AVController::~AVController() {
    _engine->setDelegate({});
    _engine->stop();
}

std::shared_ptr<MediaItem> AVController::currentMediaItem() const {
    const auto item = std::dynamic_pointer_cast<AVLibraryItem>(_currentItem);
    return item ? item->mediaItem() : nullptr;
}

std::shared_ptr<MediaQuery> AVController::currentMediaQuery() const {
    const auto feeder = std::dynamic_pointer_cast<MediaQueryQueueFeeder>(_feeder);
    return feeder ? feeder->query() : nullptr;
}

AVPlaybackState AVController::state() const {
    if (!_currentItem) return AVPlaybackState::Stopped;
    if (_seekTimer) return AVPlaybackState::Seeking;
    return _engine->isPlaying() ? AVPlaybackState::Playing : AVPlaybackState::Paused;
}

bool AVController::isPlaying() const { return state() == AVPlaybackState::Playing; }

bool AVController::shouldDisplayAsPlaying() const { return _seekTimer ? _wasPlayingBeforeSeek : isPlaying(); }

std::uint64_t AVController::playbackCount() const { return _feeder ? _feeder->count() : 0; }

void AVController::play(const Dictionary&) {
    if (!_currentItem) {
        if (playbackCount() > 0) moveTo(0, true);
        return;
    }
    _shouldPlay = true;
    if (_seekTimer)
        _wasPlayingBeforeSeek = true;
    else
        _engine->play();
    postIfStateChanged();
}

void AVController::pause() {
    if (!_currentItem) return;
    _shouldPlay = false;
    _wasPlayingBeforeSeek = false;
    _engine->pause();
    postIfStateChanged();
}

void AVController::togglePlayback(std::int64_t) {
    if (shouldDisplayAsPlaying())
        pause();
    else
        play();
}

void AVController::beginSeek(int direction) {
    if (!_currentItem || direction == 0) return;
    endSeek();
    _seekDirection = direction < 0 ? -1 : 1;
    if (durationOfCurrentItemIfAvailable() > Seconds(0)) {
        _wasPlayingBeforeSeek = _engine->isPlaying();
        _seekPosition = _engine->currentTime();
        _seekBegan = _lastSeekStep = RunLoop::main().now();
        _engine->pause();
        _seekTimer = RunLoop::main().every(seekInterval, [this] { seekStep(); });
    }
    postIfStateChanged();
}

void AVController::endSeek() {
    if (_seekDirection == 0) return;
    _seekDirection = 0;
    if (_seekTimer) {
        _seekTimer.reset();
        if (_wasPlayingBeforeSeek) _engine->play();
    }
    postIfStateChanged();
}

void AVController::seekStep() {
    const auto now = RunLoop::main().now();
    const auto rate = seekRate(_lastSeekStep - _seekBegan);
    _seekPosition += rate * _seekDirection * Seconds(now - std::exchange(_lastSeekStep, now));
    const auto duration = durationOfCurrentItemIfAvailable();
    // An engine in the middle of a jump may not know the length for a moment.
    const bool isAtEnd = duration > Seconds(0) && _seekPosition >= duration;
    if (isAtEnd && _wasPlayingBeforeSeek)
        return moveTo(_next ? std::optional(_next->position) : std::nullopt, true);
    _seekPosition = isAtEnd ? duration : std::max(_seekPosition, Seconds(0));
    _engine->seekTo(_seekPosition);
    // At every step, so that the time on screen runs along.
    post(AVControllerPlaybackStateChangedNotification);
}

void AVController::changePlaybackIndexBy(std::int64_t delta) {
    if (!_currentItem || !_feeder || delta == 0) return;
    if (delta > 0 && !_feeder->canSkipCurrentItem()) return;
    _failures = 0;
    if (delta == -1 && currentTime() > restartLimit) return restart();
    const auto target = positionSkippedBy(delta);
    if (target == _position || (delta < 0 && !placeFrom(target, -1))) return restart();
    moveTo(target, shouldDisplayAsPlaying(), delta < 0 ? -1 : 1);
}

Seconds AVController::currentTime() const {
    if (!_currentItem) return Seconds(0);
    return _seekTimer ? _seekPosition : _engine->currentTime();
}

void AVController::setCurrentTime(Seconds time) {
    if (!_currentItem) return;
    const auto duration = durationOfCurrentItemIfAvailable();
    time = std::max(duration > Seconds(0) ? std::min(time, duration) : time, Seconds(0));
    _seekPosition = time;
    _engine->seekTo(time);
    post(AVControllerPlaybackStateChangedNotification);
}

Seconds AVController::durationOfCurrentItemIfAvailable() const {
    return _currentItem ? _engine->duration().value_or(Seconds(0)) : Seconds(0);
}

void AVController::setActiveShuffleType(std::int64_t type) {
    if (type == _shuffleType) return;
    _shuffleType = type;
    if (!_feeder) return;
    _position = _feeder->setShuffleType(type, _currentItem ? _position : NotFound);
    // A new object for the same item, because its place in the queue ("3 of 12") is another.
    auto item = _feeder->itemAtPosition(_position);
    if (!item || !_currentItem || !item->isEqual(*_currentItem)) item = _currentItem;
    const auto self = strong(this);
    setCurrentItem(std::move(item));
    post(AVControllerContentsChangedNotification);
}

void AVController::setActiveRepeatType(std::int64_t type) {
    if (type == _repeatType) return;
    _repeatType = type;
    handNextToEngine(positionAfterEnd());
}

void AVController::reloadWithPlaybackContext(const std::shared_ptr<PlaybackContext>& context) {
    const auto request = std::dynamic_pointer_cast<QueryPlaybackContext>(context);
    if (!request) return;
    if (request->shuffleType() != 0) _shuffleType = request->shuffleType();
    auto feeder = feederFor(*request);
    if (!feeder) return stop();
    auto position = feeder->startPosition();
    if (_shuffleType != request->shuffleType()) position = feeder->setShuffleType(_shuffleType, position);
    const bool hasStartItem = request->startIndex().value_or(NotFound) < feeder->count();
    if (request->keepPlayingCurrentItemIfPossible()) {
        const auto current = currentMediaItem();
        const auto kept = hasStartItem || !current ? position : feeder->positionOfMediaItem(*current);
        if (keepPlayingIn(feeder, kept)) return;
    }
    reload(std::move(feeder), position, true);
}

std::shared_ptr<AVQueueFeeder> AVController::feederFor(const QueryPlaybackContext& context) {
    const auto seed = _shuffleSeed += 0x9e3779b97f4a7c15U;
    if (const auto feederClass = context.queueFeederClass()) return feederClass->makeFeeder(context, seed);
    return make<MediaQueryQueueFeeder>(context.query(), context.startIndex(), context.shuffleType(), seed);
}

bool AVController::keepPlayingIn(const std::shared_ptr<AVQueueFeeder>& feeder, std::uint64_t position) {
    auto item = feeder->itemAtPosition(position);
    if (!item || !_currentItem || !item->isEqual(*_currentItem)) return false;
    if (_shuffleType != 0 && position != 0) {
        position = feeder->setShuffleType(_shuffleType, position);
        item = feeder->itemAtPosition(position);
    }
    const auto self = strong(this);
    endSeek();
    _feeder = feeder;
    _position = position;
    _failures = 0;
    setCurrentItem(std::move(item));
    post(AVControllerContentsChangedNotification);
    play();
    return true;
}

void AVController::reloadWithFeeder(std::shared_ptr<AVQueueFeeder> feeder, bool play) {
    const auto position = feeder ? feeder->startPosition() : 0;
    reload(std::move(feeder), position, play);
}

void AVController::reload(std::shared_ptr<AVQueueFeeder> feeder, std::uint64_t position, bool play) {
    if (!feeder || feeder->count() == 0) return stop();
    const auto self = strong(this);
    _seekDirection = 0;
    _failures = 0;
    _feeder = std::move(feeder);
    moveTo(position, play);
    post(AVControllerContentsChangedNotification);
}

void AVController::stop() {
    const auto self = strong(this);
    const auto old = std::exchange(_feeder, nullptr);
    _seekDirection = 0;
    finish();
    if (old) post(AVControllerContentsChangedNotification);
}

void AVController::engineDidAdvanceToNext() {
    if (!_next) return;
    const auto self = strong(this);
    const auto next = *_next;
    _seekTimer.reset();
    _failures = 0;
    _direction = 1;
    noteEnded();
    _position = next.position;
    setCurrentItem(next.item);
    postIfStateChanged();
}

void AVController::engineDidReachEnd() {
    if (!_currentItem) return;
    const auto self = strong(this);
    _failures = 0;
    noteEnded();
    moveTo(_next ? std::optional(_next->position) : std::nullopt, true);
}

void AVController::engineStateDidChange() {
    if (_engine->isPlaying() && _currentItem && _engine->currentTime() > _currentItem->startTime())
        _failures = 0;
    postIfStateChanged();
}

void AVController::engineDurationDidChange() {
    // Somebody paused sees the length only if told.
    if (_currentItem) post(AVControllerPlaybackStateChangedNotification);
}

void AVController::engineDidFail(const PlaybackSource& source, const std::string& reason, bool isNext) {
    const auto failed = isNext ? (_next ? _next->item : nullptr) : _currentItem;
    if (!failed || failed->location() != source.location) return;
    if (!isNext && _engine->currentTime() > source.startTime) _failures = 0;
    ++_failures;
    const auto self = strong(this);
    post(AVControllerItemFailedNotification, {{"item", std::shared_ptr<Object>(failed)}, {"reason", reason}});
    // Whoever was told may have chosen something else.
    if (isNext && _next && _next->item == failed) skipFailedNext();
    if (isNext || _currentItem != failed) return;
    if (_failures >= failureLimit()) return finish();
    auto position = neighbour(_position, _direction);
    if (!position) position = neighbour(_position, _direction = 1);
    moveTo(position, _shouldPlay, _direction);
}

void AVController::skipFailedNext() {
    const auto position = _next->position;
    const bool givesUp = position == _position || _failures >= failureLimit();
    handNextToEngine(givesUp ? std::nullopt : neighbour(position, 1));
}

std::optional<std::uint64_t> AVController::neighbour(std::uint64_t position, int direction) const {
    const auto count = playbackCount();
    if (direction < 0 && position > 0) return std::min(position, count) - 1;
    if (direction > 0 && position + 1 < count) return position + 1;
    if (_repeatType != 2 || count == 0) return std::nullopt;
    return direction < 0 ? count - 1 : 0;
}

std::optional<std::uint64_t> AVController::positionAfterEnd() const {
    return _repeatType == 1 ? std::optional(_position) : neighbour(_position, 1);
}

std::optional<std::uint64_t> AVController::positionSkippedBy(std::int64_t delta) const {
    const auto count = static_cast<std::int64_t>(playbackCount());
    const auto target = static_cast<std::int64_t>(_position) + delta;
    if (count == 0) return std::nullopt;
    if (_repeatType == 2) return static_cast<std::uint64_t>((target % count + count) % count);
    if (target >= count) return std::nullopt;
    return static_cast<std::uint64_t>(std::max<std::int64_t>(target, 0));
}

std::optional<AVController::Place> AVController::placeFrom(std::optional<std::uint64_t> position,
                                                           int direction) const {
    for (std::uint64_t tries = 0; _feeder && position && tries < mostFailures; ++tries) {
        if (auto item = _feeder->itemAtPosition(*position)) {
            if (!item->feeder()) item->setFeeder(_feeder);
            return Place{*position, std::move(item)};
        }
        position = neighbour(*position, direction);
    }
    return std::nullopt;
}

std::uint64_t AVController::failureLimit() const {
    return std::clamp<std::uint64_t>(playbackCount(), 1, mostFailures);
}

void AVController::moveTo(std::optional<std::uint64_t> position, bool play, int direction) {
    auto place = placeFrom(position, direction);
    if (!place) return finish();
    const auto self = strong(this);
    _seekTimer.reset();
    _direction = direction;
    _shouldPlay = play;
    _position = place->position;
    _engine->load(sourceOf(*place->item, place->item->startTime()), play);
    setCurrentItem(std::move(place->item));
    postIfStateChanged();
}

void AVController::restart() { setCurrentTime(Seconds(0)); }

void AVController::finish() {
    const auto self = strong(this);
    _seekTimer.reset();
    _engine->stop();
    _position = 0;
    _failures = 0;
    setCurrentItem(nullptr);
    postIfStateChanged();
}

void AVController::setCurrentItem(std::shared_ptr<AVItem> item) {
    const bool isOther = item != _currentItem;
    _currentItem = std::move(item);
    handNextToEngine(positionAfterEnd());
    if (isOther) post(AVControllerItemChangedNotification);
}

void AVController::handNextToEngine(std::optional<std::uint64_t> position) {
    _next = _currentItem ? placeFrom(position, 1) : std::nullopt;
    if (!_next) return _engine->setNext(std::nullopt);
    const bool isAgain = _next->position == _position;
    if (isAgain) _next->item = _currentItem;
    _engine->setNext(sourceOf(*_next->item, isAgain ? Seconds(0) : _next->item->startTime()));
}

void AVController::noteEnded() {
    const auto item = currentMediaItem();
    if (const auto library = item ? item->library() : nullptr) library->noteItemPlayed(item->persistentID());
    post(AVControllerItemEndedNotification);
}

void AVController::post(const char* name, Dictionary userInfo) {
    NotificationCenter::defaultCenter().post(name, strong(this), std::move(userInfo));
}

void AVController::postIfStateChanged() {
    const Shown now{state(), shouldDisplayAsPlaying(), isSeekingOrScrubbing()};
    if (now == _shown) return;
    _shown = now;
    post(AVControllerPlaybackStateChangedNotification);
}

}  // namespace zornic

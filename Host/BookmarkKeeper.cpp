#include "Host/BookmarkKeeper.h"

#include <algorithm>
#include <cmath>

namespace helmo {

using namespace zornic;

namespace {

constexpr auto lookInterval = std::chrono::seconds(1);
constexpr Seconds saveInterval{10};
/** Whoever hears so much of a piece has heard it. */
constexpr Seconds heardOut{1};

}  // namespace

void BookmarkKeeper::didMake() {
    Object::didMake();
    auto& center = NotificationCenter::defaultCenter();
    const auto* player = _player.get();
    _itemObservation = center.observe(AVControllerItemChangedNotification, player,
                                      [this](const Notification&) { itemDidChange(); });
    _endObservation = center.observe(AVControllerItemEndedNotification, player,
                                     [this](const Notification&) { itemDidEnd(); });
    _stateObservation =
        center.observe(AVControllerPlaybackStateChangedNotification, player, [this](const Notification&) {
            look();
            if (_player->state() == AVPlaybackState::Paused) save();
        });
    itemDidChange();
}

BookmarkKeeper::~BookmarkKeeper() {
    look();
    save();
}

void BookmarkKeeper::itemDidChange() {
    const auto item = _player->currentMediaItem();
    // Another place in the queue is no other piece.
    if (_listening && item && item->persistentID() == _listening->item) return;
    leave();
    const bool isKept = item && item->library() == _library &&
                        item->valueForProperty(MediaItemProperty::RememberBookmarkTime).asBool();
    if (!isKept) return;
    _listening = Listening{.item = item->persistentID()};
    look();
    _saved = _listening->time;
    _timer = RunLoop::main().every(lookInterval, [this] {
        look();
        if (abs(_listening->time - _saved) >= saveInterval) save();
    });
}

void BookmarkKeeper::itemDidEnd() {
    if (!_listening) return;
    _library->setBookmark(_listening->item, std::nullopt);
    // It may be heard again from its beginning.
    look(_saved = Seconds(0));
}

void BookmarkKeeper::look() {
    if (_listening) look(_player->currentTime());
}

void BookmarkKeeper::look(Seconds time) {
    _listening->time = time;
    _listening->duration = _player->durationOfCurrentItemIfAvailable();
    _listening->looked = RunLoop::main().now();
    _listening->wasPlaying = _player->isPlaying();
}

void BookmarkKeeper::save() {
    // What does not move can't be played: its bookmark stays as it was.
    if (!_listening || _listening->time == _saved) return;
    _saved = _listening->time;
    const auto& [item, duration, time, looked, wasPlaying] = *_listening;
    const bool isHeardOut = duration > Seconds(0) && time > duration - heardOut;
    _library->setBookmark(item, isHeardOut ? std::nullopt : std::optional(time.count()));
}

/** The player is at something else by now: how far it came since somebody looked is known by the clock, if it
   was seen to move at all. */
void BookmarkKeeper::leave() {
    if (!_listening) return;
    if (_listening->wasPlaying && _listening->time != _saved)
        _listening->time +=
            std::min(Seconds(RunLoop::main().now() - _listening->looked), Seconds(lookInterval));
    save();
    _listening.reset();
    _timer.reset();
}

}  // namespace helmo

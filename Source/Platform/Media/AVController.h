#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/AVItem.h"
#include "Platform/Media/AVQueueFeeder.h"
#include "Platform/Media/PlaybackEngine.h"
#include "Platform/Media/QueryPlaybackContext.h"

namespace zornic {

/** Posted with the player as sender, on the main thread. */
inline constexpr const char* AVControllerItemChangedNotification = "AVControllerItemChangedNotification";
inline constexpr const char* AVControllerContentsChangedNotification =
    "AVControllerContentsChangedNotification";
inline constexpr const char* AVControllerPlaybackStateChangedNotification =
    "AVControllerPlaybackStateChangedNotification";
/** An item was played to its end; posted before what follows becomes the current one. */
inline constexpr const char* AVControllerItemEndedNotification = "AVControllerItemEndedNotification";
/** An item was skipped because it can't be played; user info: "item" (AVItem), "reason" (text). */
inline constexpr const char* AVControllerItemFailedNotification = "AVControllerItemFailedNotification";

enum class AVPlaybackState { Stopped, Paused, Playing, Seeking };

/** The music player: a queue from a feeder, a position in it, shuffle and repeat, above an engine that makes
   the sound. Main thread. */
class AVController : public Object, public PlaybackEngineDelegate {
public:
    explicit AVController(std::shared_ptr<PlaybackEngine> engine);
    void didMake() override;
    ~AVController() override;

    /** None while nothing is loaded. */
    std::shared_ptr<AVItem> currentItem() const { return _currentItem; }
    /** None unless the current item is a library item. */
    std::shared_ptr<MediaItem> currentMediaItem() const;
    /** The query that feeds the queue; none for another feeder. */
    std::shared_ptr<MediaQuery> currentMediaQuery() const;
    AVPlaybackState state() const;
    bool isPlaying() const;
    /** Playing, or seeking and about to play on: what a play/pause button shows. */
    bool shouldDisplayAsPlaying() const;
    bool isSeekingOrScrubbing() const { return _seekDirection != 0; }

    void play(const Dictionary& options = {});
    void pause();
    /** Play while paused, pause while playing. `option` is the caller's reason, 2: the driver's button. */
    void togglePlayback(std::int64_t option);
    /** Runs the time forward (+1) or back (-1) while held: at 4 times the speed, after 2 s at 8 times, after
       5 s at 16 times, silently. At the item's end what follows plays on (or the item stays there, when it
       was paused); at its beginning it waits. Until `endSeek` it counts as seeking. An item without a known
       length isn't moved. */
    void beginSeek(int direction);
    void endSeek();
    /** Skips by `delta` in the queue, playing or paused as before. -1 beyond the first three seconds restarts
       the item; skips wrap around only with repeat 2. Otherwise they end playback past the last item, from
       which `play` starts anew, and restart the first one before it. */
    void changePlaybackIndexBy(std::int64_t delta);
    Seconds currentTime() const;
    void setCurrentTime(Seconds time);
    /** 0 when not available. */
    Seconds durationOfCurrentItemIfAvailable() const;

    /** 0 in order, 1 shuffled. */
    std::int64_t activeShuffleType() const { return _shuffleType; }
    void setActiveShuffleType(std::int64_t type);
    /** 0 off, 1 the current item again and again, 2 the whole queue. */
    std::int64_t activeRepeatType() const { return _repeatType; }
    void setActiveRepeatType(std::int64_t type);

    /** Replaces the queue and plays; stops when it is empty. A context that asks for shuffle switches it on,
       and it stays on. One that doesn't leaves it as the driver has it: with shuffle on, what was picked (the
       start item, or the first of a list) plays first and the rest follows shuffled. The item that plays goes
       on unbroken when the context wants that and it is the start item, or, without a start item, anywhere in
       the queue. */
    void reloadWithPlaybackContext(const std::shared_ptr<PlaybackContext>& context);
    /** Replaces the queue by a feeder's; plays when `play`. */
    void reloadWithFeeder(std::shared_ptr<AVQueueFeeder> feeder, bool play);
    /** Empties the queue. */
    void stop();
    std::shared_ptr<AVQueueFeeder> feeder() const { return _feeder; }
    /** Position of the current item in playing order, and length of the queue. */
    std::uint64_t playbackIndex() const { return _position; }
    std::uint64_t playbackCount() const;
    /** Makes what is shuffled from now on come in the same order in every run; by default no run is like
       another. */
    void setShuffleSeed(std::uint64_t seed) { _shuffleSeed = seed; }

    void engineDidAdvanceToNext() override;
    void engineDidReachEnd() override;
    void engineStateDidChange() override;
    void engineDurationDidChange() override;
    void engineDidFail(const PlaybackSource& source, const std::string& reason, bool isNext) override;

private:
    struct Place {
        std::uint64_t position;
        std::shared_ptr<AVItem> item;
    };
    /** What observers were last told. */
    struct Shown {
        AVPlaybackState state = AVPlaybackState::Stopped;
        bool asPlaying = false, seeking = false;
        friend bool operator==(const Shown&, const Shown&) = default;
    };
    /** The position before or after another; nullopt beyond either end of a queue that isn't repeated. */
    std::optional<std::uint64_t> neighbour(std::uint64_t position, int direction) const;
    /** Position that follows by itself at an item's end; nullopt at the end of the queue. */
    std::optional<std::uint64_t> positionAfterEnd() const;
    std::optional<std::uint64_t> positionSkippedBy(std::int64_t delta) const;
    /** The first item from `position` on that is still there. */
    std::optional<Place> placeFrom(std::optional<std::uint64_t> position, int direction) const;
    std::uint64_t failureLimit() const;
    std::shared_ptr<AVQueueFeeder> feederFor(const QueryPlaybackContext& context);
    void reload(std::shared_ptr<AVQueueFeeder> feeder, std::uint64_t position, bool play);
    bool keepPlayingIn(const std::shared_ptr<AVQueueFeeder>& feeder, std::uint64_t position);
    void moveTo(std::optional<std::uint64_t> position, bool play, int direction = 1);
    void restart();
    /** Ends playback; the queue stays. */
    void finish();
    void handNextToEngine(std::optional<std::uint64_t> position);
    void setCurrentItem(std::shared_ptr<AVItem> item);
    void skipFailedNext();
    void seekStep();
    void noteEnded();
    void post(const char* name, Dictionary userInfo = {});
    void postIfStateChanged();

    const std::shared_ptr<PlaybackEngine> _engine;
    std::shared_ptr<AVQueueFeeder> _feeder;
    std::shared_ptr<AVItem> _currentItem;
    std::uint64_t _position = 0;
    /** What the engine was told to play next. */
    std::optional<Place> _next;
    std::int64_t _shuffleType = 0, _repeatType = 0;
    /** Which way the queue last moved, so that going back passes over what can't be played. */
    int _direction = 1;
    bool _shouldPlay = false;
    Shown _shown;

    int _seekDirection = 0;
    bool _wasPlayingBeforeSeek = false;
    Seconds _seekPosition{0};
    TimePoint _seekBegan{}, _lastSeekStep{};
    Token _seekTimer;
    /** Items that failed one after another, so that a queue of broken files comes to an end. */
    std::uint64_t _failures = 0;
    std::uint64_t _shuffleSeed;
};

}  // namespace zornic

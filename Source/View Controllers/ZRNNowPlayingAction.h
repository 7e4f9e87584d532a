#pragma once

#include <cstdint>

namespace zornic {

/** A transport button, and the action that it stands for. -1 is none: the second release of two buttons that
   were held at once. */
enum ZRNNowPlayingActionType : std::int64_t {
    /** Previous, and back while held. */
    ZRNNowPlayingActionTypeLeft = 0,
    /** Next, and forward while held. */
    ZRNNowPlayingActionTypeFastForward = 1,
    ZRNNowPlayingActionTypePlayPause = 2,
    /** The driver goes back; no button of the screen. */
    ZRNNowPlayingActionTypeBack = 3
};

enum ZRNNowPlayingActionState : std::int64_t {
    /** The button has been held for half a second. */
    ZRNNowPlayingActionStateBegan = 1,
    /** The button was let go. */
    ZRNNowPlayingActionStateEnded = 2
};

}  // namespace zornic

#pragma once

#include <optional>

#include "Platform/Toolkit/Image.h"
#include "View Controllers/ZRNNowPlayingAction.h"

namespace zornic {

class ZRNNowPlayingViewController;

/** Hears what the driver does on a Now Playing screen and says what can be done. Nullopt: not implemented; a
   delegate that implements nothing has all transport buttons and no play modes. Main thread. */
class ZRNNowPlayingViewControllerDelegate {
public:
    virtual ~ZRNNowPlayingViewControllerDelegate() = default;

    /** Whether the button is shown (default: yes), with which image (left empty: the button's own) and chosen
     * or not. */
    virtual std::optional<bool> nowPlayingViewControllerShouldDisplayButtonWithImageTinted(
        ZRNNowPlayingViewController&, ZRNNowPlayingActionType /*button*/, Image& /*image*/,
        bool& /*tinted*/) {
        return std::nullopt;
    }
    /** Default: yes. */
    virtual std::optional<bool> nowPlayingViewControllerShouldEnableButton(
        ZRNNowPlayingViewController&, ZRNNowPlayingActionType /*button*/) {
        return std::nullopt;
    }
    virtual void nowPlayingViewControllerDidSendActionState(ZRNNowPlayingViewController&,
                                                            ZRNNowPlayingActionType,
                                                            ZRNNowPlayingActionState) {}

    /** Whether a play mode's button is shown (default: no), and what a tap on it does. */
    virtual std::optional<bool> nowPlayingViewControllerCanShuffle(ZRNNowPlayingViewController&) {
        return std::nullopt;
    }
    virtual std::optional<bool> nowPlayingViewControllerCanRepeat(ZRNNowPlayingViewController&) {
        return std::nullopt;
    }
    virtual std::optional<bool> nowPlayingViewControllerCanCreate(ZRNNowPlayingViewController&) {
        return std::nullopt;
    }
    virtual void nowPlayingViewControllerToggleShuffle(ZRNNowPlayingViewController&) {}
    virtual void nowPlayingViewControllerToggleRepeat(ZRNNowPlayingViewController&) {}
    virtual void nowPlayingViewControllerCreate(ZRNNowPlayingViewController&) {}
};

}  // namespace zornic

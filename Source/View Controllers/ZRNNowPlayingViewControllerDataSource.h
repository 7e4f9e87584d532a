#pragma once

#include <optional>
#include <string>

#include "Platform/Toolkit/Image.h"

namespace zornic {

class ZRNNowPlayingViewController;

/** Says what a Now Playing screen shows. Nullopt: not implemented. Main thread. */
class ZRNNowPlayingViewControllerDataSource {
public:
    virtual ~ZRNNowPlayingViewControllerDataSource() = default;

    /** Texts of the three lines; each may be empty. */
    virtual std::string artistTextForNowPlayingController(ZRNNowPlayingViewController& controller) = 0;
    virtual std::string albumTextForNowPlayingController(ZRNNowPlayingViewController& controller) = 0;
    virtual std::string titleForNowPlayingController(ZRNNowPlayingViewController& controller) = 0;
    /** No image: a plain ground. */
    virtual Image backgroundArtForNowPlayingController(ZRNNowPlayingViewController& controller) = 0;
    virtual bool nowPlayingViewControllerIsShowingExplicitTrack(ZRNNowPlayingViewController& controller) = 0;
    /** Both in seconds, both -1 for a live stream. `elapsed` comes in as 0. */
    virtual double playbackDurationForNowPlayingViewControllerWithElapsedTime(
        ZRNNowPlayingViewController& controller, double& elapsed) = 0;
    virtual bool nowPlayingViewControllerIsPlaying(ZRNNowPlayingViewController& controller) = 0;

    /** 0 off, anything else on. Without it the button keeps its state and label. */
    virtual std::optional<std::uint64_t> shuffleTypeForNowPlayingViewController(
        ZRNNowPlayingViewController&) {
        return std::nullopt;
    }
    /** Label of the button; without it one by the type. */
    virtual std::optional<std::string> shuffleStringForNowPlayingViewController(
        ZRNNowPlayingViewController&) {
        return std::nullopt;
    }
    /** 0 off, 1 the song, 2 all. Without it the button keeps its state and label. */
    virtual std::optional<std::uint64_t> repeatTypeForNowPlayingViewController(ZRNNowPlayingViewController&) {
        return std::nullopt;
    }
    virtual std::optional<std::string> repeatStringForNowPlayingViewController(ZRNNowPlayingViewController&) {
        return std::nullopt;
    }
};

}  // namespace zornic

#pragma once

#include "Platform/Toolkit/GradientView.h"
#include "Platform/Toolkit/ImageView.h"
#include "Views/ZRNProgressView.h"

namespace zornic {

/** What is playing: artist, title and album over its darkened artwork, a mark for explicit content, and the
   progress. Main thread. */
class ZRNNowPlayingView : public View {
public:
    using View::View;
    void didMake() override;

    bool isExplicitTrack() const { return _explicitTrack; }
    void setExplicitTrack(bool explicitTrack);
    const std::shared_ptr<Label>& artistLabel() const { return _artistLabel; }
    const std::shared_ptr<Label>& titleLabel() const { return _titleLabel; }
    const std::shared_ptr<Label>& albumLabel() const { return _albumLabel; }
    const std::shared_ptr<ImageView>& artworkView() const { return _artworkView; }
    const std::shared_ptr<ZRNProgressView>& progressView() const { return _progressView; }
    /** None unless the track is explicit. */
    const std::shared_ptr<ImageView>& explicitImageView() const { return _explicitImageView; }

    void layoutSubviews() override;

private:
    std::shared_ptr<Label> _addLabelWithFont(Font font);
    void _layoutLabelBaseLineFromTopInBounds(Label& label, double baseline, const Rect& bounds);
    /** Sizes the label; where it belongs with its baseline `baseline` points from the top. */
    Rect placeOf(Label& label, double baseline, const Rect& bounds);
    void layoutTitle(const Rect& inner);

    std::shared_ptr<ImageView> _explicitImageView;
    std::shared_ptr<GradientView> _gradientView;
    bool _explicitTrack = false;
    std::shared_ptr<Label> _artistLabel, _titleLabel, _albumLabel;
    std::shared_ptr<ImageView> _artworkView;
    std::shared_ptr<ZRNProgressView> _progressView;
};

}  // namespace zornic

#pragma once

#include <functional>

#include "Platform/Toolkit/Button.h"
#include "Platform/Toolkit/GradientView.h"
#include "Platform/Toolkit/TableHeaderFooterView.h"

namespace zornic {

/** Heads the tracks of an album: its cover, its title over the number of songs and minutes, and a button that
   shuffles it. Main thread. */
class ZRNAlbumsDetailTableHeaderView : public TableHeaderFooterView {
public:
    using ShuffleAction = std::function<void(const std::shared_ptr<Button>& sender)>;

    explicit ZRNAlbumsDetailTableHeaderView(std::string reuseIdentifier);
    void didMake() override;

    Image artworkImage() const { return _artworkView->image(); }
    void setArtworkImage(const Image& image) { _artworkView->setImage(image); }
    std::string title() const { return _titleLabel->text(); }
    void setTitle(const std::string& title);
    std::string subtitle() const { return _subtitleLabel->text(); }
    /** Says in the second line how long the album lasts, in seconds to the nearest minute, and how many songs
       it has. */
    void setDurationCount(double duration, std::uint64_t count);
    /** What the button does; nothing without one. */
    void setShuffleActionBlock(ShuffleAction action) { _shuffleActionBlock = std::move(action); }

    const std::shared_ptr<Label>& subtitleLabel() const { return _subtitleLabel; }
    const std::shared_ptr<Button>& shuffleButton() const { return _shuffleButton; }
    void _shuffleButtonAction(const std::shared_ptr<Control>& sender);
    void prepareForReuse() override { _shuffleActionBlock = nullptr; }
    void layoutSubviews() override;
    std::string accessibilityText() const override;

private:
    const std::shared_ptr<GradientView> _ground;
    const std::shared_ptr<Label> _titleLabel, _subtitleLabel;
    const std::shared_ptr<ImageView> _artworkView;
    const std::shared_ptr<Button> _shuffleButton;
    ShuffleAction _shuffleActionBlock;
};

}  // namespace zornic

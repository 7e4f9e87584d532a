#pragma once

#include "Platform/Toolkit/TableViewCell.h"

namespace zornic {

/** A track of an album: its number in a column at the left, its title, its duration in a column at the right
   that all rows of the list share. The mark of what plays takes the number's place. Main thread. */
class _ZRNAlbumTracksCell : public TableViewCell {
public:
    _ZRNAlbumTracksCell(TableViewCellStyle style, std::string reuseIdentifier);
    void didMake() override;
    static constexpr Font durationFont() { return Font::systemFont(13.5); }

    std::string title() const { return _titleLabel->text(); }
    void setTitle(const std::string& title);
    std::string trackNumberText() const { return _trackNumberLabel->text(); }
    void setTrackNumberText(const std::string& text);
    std::string durationText() const { return _durationLabel->text(); }
    void setDurationText(const std::string& text);
    /** Points; negative while unknown, when a duration is as wide as its own text. */
    double maximumDurationWidth() const { return _maximumDurationWidth; }
    void setMaximumDurationWidth(double width);

    const std::shared_ptr<Label>& titleLabel() const { return _titleLabel; }
    const std::shared_ptr<Label>& trackNumberLabel() const { return _trackNumberLabel; }
    const std::shared_ptr<Label>& durationLabel() const { return _durationLabel; }
    void layoutSubviews() override;
    std::string titleText() const override { return title(); }
    std::string detailText() const override { return durationText(); }

protected:
    void updateColors() override;
    bool placesPlayingMark() const override { return true; }

private:
    void setText(Label& label, const std::string& text);

    const std::shared_ptr<Label> _trackNumberLabel, _titleLabel, _durationLabel;
    double _maximumDurationWidth = -1;
};

}  // namespace zornic

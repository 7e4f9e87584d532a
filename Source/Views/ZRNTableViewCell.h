#pragma once

#include "Platform/Toolkit/TableViewCell.h"

namespace zornic {

/** A row with an optional picture at the left, which the separator and the texts make room for. Main thread.
 */
class ZRNTableViewCell : public TableViewCell {
public:
    /** Always of two lines, whatever style is asked for. */
    ZRNTableViewCell(TableViewCellStyle style, std::string reuseIdentifier);

    Image artworkImage() const { return _artworkImageView ? _artworkImageView->image() : Image(); }
    /** No image takes the picture away. */
    void setArtworkImage(const Image& image);
    const std::shared_ptr<ImageView>& artworkImageView() const { return _artworkImageView; }
    void layoutSubviews() override;

private:
    std::shared_ptr<ImageView> _artworkImageView;
    /** Left separator inset from before any picture; 0 until the first layout. */
    double _originalLeftInset = 0;
};

}  // namespace zornic

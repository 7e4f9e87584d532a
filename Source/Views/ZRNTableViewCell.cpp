#include "Views/ZRNTableViewCell.h"

#include "Utilities/ZRNRowMetrics.h"

namespace zornic {

ZRNTableViewCell::ZRNTableViewCell(TableViewCellStyle, std::string reuseIdentifier)
    : TableViewCell(TableViewCellStyle::Subtitle, std::move(reuseIdentifier)) {}

void ZRNTableViewCell::setArtworkImage(const Image& image) {
    if (image == artworkImage()) return;
    if (!image) {
        _artworkImageView->removeFromSuperview();
        _artworkImageView = nullptr;
    } else {
        if (!_artworkImageView) {
            _artworkImageView = make<ImageView>();
            _artworkImageView->setContentMode(ContentMode::AspectFit);
            contentView()->addSubview(_artworkImageView);
        }
        _artworkImageView->setImage(image);
    }
    setNeedsLayout();
}

void ZRNTableViewCell::layoutSubviews() {
    TableViewCell::layoutSubviews();
    if (_artworkImageView) _artworkImageView->setFrame(ZRNRowArtworkFrame());
    EdgeInsets inset = separatorInset();
    if (_originalLeftInset == 0) _originalLeftInset = inset.left;
    const double left =
        _artworkImageView ? _artworkImageView->frame().maxX() + ZRNGapAfterRowArtwork : _originalLeftInset;
    if (inset.left == left) return;
    inset.left = left;
    setSeparatorInset(inset);
    TableViewCell::layoutSubviews();
}

}  // namespace zornic

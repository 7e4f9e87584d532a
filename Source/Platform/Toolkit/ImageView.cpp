#include "Platform/Toolkit/ImageView.h"

namespace zornic {

ImageView::ImageView(Image image) : View({{0, 0}, image.size()}), _image(std::move(image)) {}

void ImageView::setImage(Image image) {
    if (image == _image) return;
    _image = std::move(image);
    setNeedsDisplay();
}

void ImageView::setOverrideColor(std::optional<Color> color) {
    if (color == _overrideColor) return;
    _overrideColor = color;
    setNeedsDisplay();
}

void ImageView::drawRect(Canvas& canvas, const Rect&) {
    if (!_image) return;
    const Color tint = _overrideColor.value_or(tintColor());
    // A flattened image has its colour in itself.
    const Image shown =
        _overrideColor && _image.flatColor() ? _image.flattenedWithColor(*_overrideColor) : _image;
    const Rect area = rectForContent(_image.size(), bounds(), contentMode());
    if (bounds().contains(area)) {
        canvas.drawImage(shown, area, tint);
        return;
    }
    const CanvasState state(canvas);
    canvas.clip(bounds());
    canvas.drawImage(shown, area, tint);
}

}  // namespace zornic

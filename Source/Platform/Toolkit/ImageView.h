#pragma once

#include "Platform/Toolkit/View.h"

namespace zornic {

/** Shows one image by its content mode; a template in its tint. Main thread. */
class ImageView : public View {
public:
    explicit ImageView(Image image = {});

    const Image& image() const { return _image; }
    /** No image: shows nothing. The frame stays. */
    void setImage(Image image);
    /** Colour of a template instead of the tint, and of a flattened image instead of its own, while set. */
    void setOverrideColor(std::optional<Color> color);
    Size sizeThatFits(Size) override { return _image.size(); }
    bool hasIntrinsicSize() const override { return true; }
    void drawRect(Canvas& canvas, const Rect& dirty) override;
    void tintColorDidChange() override { setNeedsDisplay(); }
    std::string accessibilityImage() const override { return _image.name(); }
    bool pointInside(Point) const override { return false; }

private:
    Image _image;
    std::optional<Color> _overrideColor;
};

}  // namespace zornic

#pragma once

#include <functional>

#include "Tests/Support/RecordingCanvas.h"

namespace zornic {

/** A picture that was drawn, with what was drawn in it. */
class DrawnImageSource final : public ImageSource {
public:
    DrawnImageSource(Size size, bool opaque, double scale, const std::function<void(Canvas&)>& draw)
        : canvas({{0, 0}, size}, scale), isOpaque(opaque), _size(size) {
        draw(canvas);
    }
    Size size() const override { return _size; }
    double scale() const override { return canvas.scale(); }
    std::size_t cost() const override { return 0; }

    RecordingCanvas canvas;
    const bool isOpaque;

private:
    const Size _size;
};

}  // namespace zornic

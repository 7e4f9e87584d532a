#pragma once

#include <optional>
#include <vector>

#include "Platform/Toolkit/Image.h"
#include "Platform/Toolkit/TextEngine.h"

namespace zornic {

enum class CompositingMode { SourceOver, DestinationOut };

enum class ColorFilterType { Saturate, Brightness, Contrast };

/** One step of a layer's colour filters: saturation is a factor, brightness is added (1 is white), contrast
   is a factor around mid grey. */
struct ColorFilter {
    ColorFilterType type = ColorFilterType::Saturate;
    double inputAmount = 1;
    friend bool operator==(const ColorFilter&, const ColorFilter&) = default;
};

/** A drawing surface in points; y grows downwards. The host backs it, tests record it. Main thread. */
class Canvas {
public:
    virtual ~Canvas() = default;
    virtual void save() = 0;
    virtual void restore() = 0;
    virtual void translate(Point by) = 0;
    virtual void clip(const Rect& area) = 0;
    virtual void clipRounded(const Rect& area, double radius) = 0;
    /** The area that can still be drawn to, in the present coordinates. */
    virtual Rect clipBounds() const = 0;
    /** Pixels a point. */
    virtual double scale() const = 0;

    virtual void fillRect(const Rect& area, Color color) = 0;
    virtual void fillRoundedRect(const Rect& area, double radius, Color color) = 0;
    /** Colours from top to bottom, evenly spaced. */
    virtual void fillGradient(const Rect& area, const std::vector<Color>& colors) = 0;
    /** Fills `area` with the image; a template is drawn in `tint`, caps keep their size. */
    virtual void drawImage(const Image& image, const Rect& area, Color tint) = 0;
    /** Runs without a colour of their own are drawn in `color`. */
    virtual void drawText(const TextLayout& text, Point topLeft, Color color) = 0;

    /** What is drawn until `endGroup` is put together first, then filtered and laid over what is below. */
    virtual void beginGroup(const Rect& bounds) = 0;
    virtual void endGroup(double opacity, const std::vector<ColorFilter>& filters, CompositingMode mode) = 0;
};

/** Pairs save() with restore() over a scope. */
class [[nodiscard]] CanvasState {
public:
    explicit CanvasState(Canvas& canvas) : _canvas(canvas) { _canvas.save(); }
    ~CanvasState() { _canvas.restore(); }
    CanvasState(const CanvasState&) = delete;
    CanvasState& operator=(const CanvasState&) = delete;

private:
    Canvas& _canvas;
};

}  // namespace zornic

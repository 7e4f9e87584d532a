#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Platform/Foundation/Object.h"
#include "Platform/Toolkit/Canvas.h"

namespace zornic {

/** Draws a layer's content and hears of its changes: the view that owns the layer. */
class LayerOwner {
public:
    virtual ~LayerOwner() = default;
    /** Draws the content in the layer's own bounds; `dirty` is what must be drawn. */
    virtual void drawLayer(Canvas& canvas, const Rect& dirty) = 0;
    /** Something of the layer or its sublayers looks different within `area` (own bounds' coordinates). */
    virtual void layerDidChange(const Rect& area) = 0;
};

/** A rectangle of the display with a ground, content and sublayers drawn in order above it. Main thread. */
class Layer : public Object {
public:
    explicit Layer(LayerOwner* owner = nullptr) : _owner(owner) {}
    ~Layer() override;
    /** Cleared by an owner that dies first. */
    void setOwner(LayerOwner* owner) { _owner = owner; }

    const Rect& frame() const { return _frame; }
    void setFrame(const Rect& frame);
    /** Own coordinates: origin is what a scrolled view shows at its top left. */
    Rect bounds() const { return {_boundsOrigin, _frame.size}; }
    void setBoundsOrigin(Point origin);

    std::optional<Color> backgroundColor() const { return _backgroundColor; }
    void setBackgroundColor(std::optional<Color> color);
    double cornerRadius() const { return _cornerRadius; }
    void setCornerRadius(double radius);
    double opacity() const { return _opacity; }
    void setOpacity(double opacity);
    bool isHidden() const { return _hidden; }
    void setHidden(bool hidden);
    bool masksToBounds() const { return _masksToBounds; }
    void setMasksToBounds(bool masks);
    const std::vector<ColorFilter>& filters() const { return _filters; }
    void setFilters(std::vector<ColorFilter> filters);
    CompositingMode compositingMode() const { return _compositingMode; }
    /** How it is laid over what its superlayer drew before it. */
    void setCompositingMode(CompositingMode mode);
    /** Moves it on the display without changing where it is: what an animation moves. */
    Point presentationOffset() const { return _presentationOffset; }
    void setPresentationOffset(Point offset);

    /** Its ground and its first `count` sublayers change seldom: while they stand on whole pixels they are
       drawn once into a picture, which frames then copy. 0: none. Not for an owner with content. */
    void setKeptSublayers(std::size_t count);

    Layer* superlayer() const { return _superlayer; }
    const std::vector<std::shared_ptr<Layer>>& sublayers() const { return _sublayers; }
    /** On top; a layer that is already here moves to the top. */
    void addSublayer(const std::shared_ptr<Layer>& layer);
    void insertSublayer(const std::shared_ptr<Layer>& layer, std::size_t index);
    void removeFromSuperlayer();

    /** Draws it and its sublayers; the canvas's origin is the superlayer's. */
    void render(Canvas& canvas);
    /** Something within `area` (own coordinates) must be drawn again. Not to be called while drawing. */
    void setNeedsDisplay(const Rect& area);
    void setNeedsDisplay() { setNeedsDisplay(bounds()); }
    /** The superlayer hears that something within `area` (own coordinates) looks different. */
    void tellSuperlayer(const Rect& area);
    /** Whether nothing behind it shows within `area` (own coordinates). */
    bool covers(const Rect& area) const;
    /** The part of `area` (own coordinates) that shows, where the superlayer has it on the display. */
    Rect convertToSuperlayer(const Rect& area) const;

private:
    void renderContent(Canvas& canvas, double opacity);
    void drawGround(Canvas& canvas, const Rect& dirty, double opacity);
    /** Draws the kept picture, made anew where needed; false when there can be none. */
    bool drawKept(Canvas& canvas);
    /** The first sublayer that is seen within `dirty`; none when this layer's own ground is. */
    std::optional<std::size_t> firstSeenSublayer(const Rect& dirty) const;
    bool isKept(const Layer& sublayer) const;
    void sublayerDidChange(const Layer& sublayer, const Rect& area);
    void passOn(const Rect& area);
    bool isOpaqueFill() const;
    Point shift() const { return _frame.origin - _boundsOrigin + _presentationOffset; }
    bool needsGroup() const;
    bool isPlainFill() const { return !_owner && _sublayers.empty(); }
    /** Own coordinates; everything that it and its sublayers draw. */
    Rect extent() const;
    void changed() { setNeedsDisplay(extent()); }
    /** Makes a change that may move or resize what is drawn: the old and the new place are drawn again. */
    template <class Change>
    void change(Change&& make) {
        changed();
        make();
        changed();
    }

    LayerOwner* _owner;
    Layer* _superlayer = nullptr;
    std::vector<std::shared_ptr<Layer>> _sublayers;
    Rect _frame;
    Point _boundsOrigin, _presentationOffset;
    std::optional<Color> _backgroundColor;
    double _cornerRadius = 0, _opacity = 1;
    bool _hidden = false, _masksToBounds = false;
    std::vector<ColorFilter> _filters;
    CompositingMode _compositingMode = CompositingMode::SourceOver;
    std::size_t _keptCount = 0;
    Image _kept;
};

}  // namespace zornic

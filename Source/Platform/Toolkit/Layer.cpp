#include "Platform/Toolkit/Layer.h"

#include <algorithm>
#include <cassert>

namespace zornic {

namespace {

/** Layers that are being drawn at the moment, one inside the other. */
int drawingDepth = 0;

class Drawing {
public:
    Drawing() { ++drawingDepth; }
    ~Drawing() { --drawingDepth; }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
};

}  // namespace

Layer::~Layer() {
    for (const auto& sublayer : _sublayers) sublayer->_superlayer = nullptr;
}

void Layer::setFrame(const Rect& frame) {
    if (frame == _frame) return;
    change([&] { _frame = frame; });
}

void Layer::setBoundsOrigin(Point origin) {
    if (origin == _boundsOrigin) return;
    change([&] { _boundsOrigin = origin; });
}

void Layer::setBackgroundColor(std::optional<Color> color) {
    if (color == _backgroundColor) return;
    _backgroundColor = color;
    setNeedsDisplay();
}

void Layer::setCornerRadius(double radius) {
    if (radius == _cornerRadius) return;
    _cornerRadius = radius;
    setNeedsDisplay();
}

void Layer::setOpacity(double opacity) {
    opacity = std::clamp(opacity, 0.0, 1.0);
    if (opacity == _opacity) return;
    change([&] { _opacity = opacity; });
}

void Layer::setHidden(bool hidden) {
    if (hidden == _hidden) return;
    change([&] { _hidden = hidden; });
}

void Layer::setMasksToBounds(bool masks) {
    if (masks == _masksToBounds) return;
    change([&] { _masksToBounds = masks; });
}

void Layer::setFilters(std::vector<ColorFilter> filters) {
    if (filters == _filters) return;
    _filters = std::move(filters);
    changed();
}

void Layer::setCompositingMode(CompositingMode mode) {
    if (mode == _compositingMode) return;
    _compositingMode = mode;
    changed();
}

void Layer::setPresentationOffset(Point offset) {
    if (offset == _presentationOffset) return;
    change([&] { _presentationOffset = offset; });
}

void Layer::addSublayer(const std::shared_ptr<Layer>& layer) { insertSublayer(layer, _sublayers.size()); }

void Layer::insertSublayer(const std::shared_ptr<Layer>& layer, std::size_t index) {
    assert(layer && layer.get() != this);
    const auto kept = layer;
    if (kept->_superlayer == this) {
        const auto at = std::find(_sublayers.begin(), _sublayers.end(), kept);
        const auto last = static_cast<std::ptrdiff_t>(_sublayers.size()) - 1;
        const auto target = _sublayers.begin() + std::min(static_cast<std::ptrdiff_t>(index), last);
        if (at == target) return;
        if (at < target)
            std::rotate(at, at + 1, target + 1);
        else
            std::rotate(target, at, at + 1);
    } else {
        kept->removeFromSuperlayer();
        const auto place = std::min(index, _sublayers.size());
        _sublayers.insert(_sublayers.begin() + static_cast<std::ptrdiff_t>(place), kept);
        kept->_superlayer = this;
    }
    kept->changed();
}

void Layer::removeFromSuperlayer() {
    if (!_superlayer) return;
    changed();
    auto& siblings = _superlayer->_sublayers;
    _superlayer = nullptr;
    const auto at = std::find_if(siblings.begin(), siblings.end(),
                                 [this](const auto& sibling) { return sibling.get() == this; });
    const auto kept = *at;  // may be the last reference to this
    siblings.erase(at);
}

Rect Layer::convertToSuperlayer(const Rect& area) const {
    const Rect shown = _masksToBounds ? area.intersected(bounds()) : area;
    return shown.offset(_frame.origin - _boundsOrigin + _presentationOffset);
}

Rect Layer::extent() const {
    Rect all = bounds();
    if (_masksToBounds) return all;
    for (const auto& sublayer : _sublayers)
        if (!sublayer->_hidden) all = all.united(sublayer->convertToSuperlayer(sublayer->extent()));
    return all;
}

void Layer::setNeedsDisplay(const Rect& area) {
    if (_hidden || _opacity <= 0 || area.empty()) return;
    assert(drawingDepth == 0 && "what is drawn may not change while it is drawn");
    if (_owner)
        _owner->layerDidChange(area);
    else if (_superlayer)
        _superlayer->setNeedsDisplay(convertToSuperlayer(area));
}

bool Layer::needsGroup() const {
    if (!_filters.empty()) return true;
    if (_opacity < 1 && !isPlainFill()) return true;
    if (_compositingMode != CompositingMode::SourceOver) return true;
    return std::any_of(_sublayers.begin(), _sublayers.end(), [](const auto& sublayer) {
        return !sublayer->_hidden && sublayer->_compositingMode != CompositingMode::SourceOver;
    });
}

void Layer::render(Canvas& canvas) {
    if (_hidden || _opacity <= 0) return;
    const bool reachesOut = !_masksToBounds && !_sublayers.empty();
    if (!reachesOut && !convertToSuperlayer(bounds()).intersects(canvas.clipBounds())) return;

    const Drawing drawing;
    const CanvasState state(canvas);
    canvas.translate(_frame.origin - _boundsOrigin + _presentationOffset);
    if (!needsGroup()) {
        renderContent(canvas, _opacity);
        return;
    }
    const Rect area = extent().intersected(canvas.clipBounds());
    if (area.empty()) return;
    canvas.beginGroup(area);
    renderContent(canvas, 1);
    canvas.endGroup(_opacity, _filters, _compositingMode);
}

void Layer::renderContent(Canvas& canvas, double opacity) {
    const CanvasState state(canvas);
    const Rect area = bounds();
    if (_masksToBounds) {
        if (_cornerRadius > 0)
            canvas.clipRounded(area, _cornerRadius);
        else
            canvas.clip(area);
    }
    const Rect dirty = area.intersected(canvas.clipBounds());
    if (!dirty.empty()) {
        if (_backgroundColor && _backgroundColor->alpha > 0) {
            const Color color = _backgroundColor->withAlpha(_backgroundColor->alpha * opacity);
            if (_cornerRadius > 0)
                canvas.fillRoundedRect(area, _cornerRadius, color);
            else
                canvas.fillRect(area, color);
        }
        if (_owner) _owner->drawLayer(canvas, dirty);
    }
    for (const auto& sublayer : _sublayers) sublayer->render(canvas);
}

}  // namespace zornic

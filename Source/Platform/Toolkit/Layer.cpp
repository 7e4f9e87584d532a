#include "Platform/Toolkit/Layer.h"

#include <algorithm>
#include <cassert>
#include <cmath>

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

void Layer::setKeptSublayers(std::size_t count) {
    _keptCount = count;
    _kept = {};
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
    return shown.offset(shift());
}

Rect Layer::extent() const {
    Rect all = bounds();
    if (_masksToBounds) return all;
    for (const auto& sublayer : _sublayers)
        if (!sublayer->_hidden) all = all.united(sublayer->convertToSuperlayer(sublayer->extent()));
    return all;
}

void Layer::setNeedsDisplay(const Rect& area) {
    _kept = {};
    passOn(area);
}

void Layer::passOn(const Rect& area) {
    if (_hidden || _opacity <= 0 || area.empty()) return;
    assert(drawingDepth == 0 && "what is drawn may not change while it is drawn");
    if (_owner)
        _owner->layerDidChange(area);
    else
        tellSuperlayer(area);
}

void Layer::tellSuperlayer(const Rect& area) {
    if (_superlayer) _superlayer->sublayerDidChange(*this, convertToSuperlayer(area));
}

void Layer::sublayerDidChange(const Layer& sublayer, const Rect& area) {
    if (isKept(sublayer)) _kept = {};
    passOn(area);
}

bool Layer::isKept(const Layer& sublayer) const {
    const auto end =
        _sublayers.begin() + static_cast<std::ptrdiff_t>(std::min(_keptCount, _sublayers.size()));
    return std::any_of(_sublayers.begin(), end, [&](const auto& kept) { return kept.get() == &sublayer; });
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
    canvas.translate(shift());
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
    std::optional<CanvasState> state;
    const Rect area = bounds();
    if (_masksToBounds) {
        state.emplace(canvas);
        if (_cornerRadius > 0)
            canvas.clipRounded(area, _cornerRadius);
        else
            canvas.clip(area);
    }
    const Rect dirty = area.intersected(canvas.clipBounds());
    const auto seen = firstSeenSublayer(_masksToBounds ? dirty : canvas.clipBounds());
    std::size_t next = seen.value_or(0);
    if (!seen && !dirty.empty()) {
        if (opacity >= 1 && drawKept(canvas))
            next = std::min(_keptCount, _sublayers.size());
        else
            drawGround(canvas, dirty, opacity);
    }
    for (; next < _sublayers.size(); ++next) _sublayers[next]->render(canvas);
}

void Layer::drawGround(Canvas& canvas, const Rect& dirty, double opacity) {
    const Rect area = bounds();
    if (_backgroundColor && _backgroundColor->alpha > 0) {
        const Color color = _backgroundColor->withAlpha(_backgroundColor->alpha * opacity);
        if (_cornerRadius > 0)
            canvas.fillRoundedRect(area, _cornerRadius, color);
        else
            canvas.fillRect(area, color);
    }
    if (_owner) _owner->drawLayer(canvas, dirty);
}

bool Layer::drawKept(Canvas& canvas) {
    auto* const loader = ImageLoader::current();
    const Rect area = bounds();
    const double width = area.width() * canvas.scale(), height = area.height() * canvas.scale();
    if (_keptCount == 0 || !loader || width != std::round(width) || height != std::round(height))
        return false;
    if (!_kept || _kept.scale() != canvas.scale()) {
        const auto draw = [&](Canvas& picture) {
            picture.translate(Point{} - area.origin);
            drawGround(picture, area, 1);
            for (std::size_t i = 0; i < std::min(_keptCount, _sublayers.size()); ++i)
                _sublayers[i]->render(picture);
        };
        _kept = Image(loader->sourceByDrawing(area.size, isOpaqueFill(), canvas.scale(), draw));
    }
    if (_kept) canvas.drawImage(_kept, area, {});
    return static_cast<bool>(_kept);
}

// What is covered

bool Layer::isOpaqueFill() const {
    return _backgroundColor && _backgroundColor->alpha >= 1 && _cornerRadius <= 0;
}

bool Layer::covers(const Rect& area) const {
    if (_hidden || _opacity < 1 || needsGroup()) return false;
    const bool reaches = bounds().contains(area);
    if (reaches && isOpaqueFill()) return true;
    if (_masksToBounds && (!reaches || _cornerRadius > 0)) return false;
    return std::any_of(_sublayers.begin(), _sublayers.end(), [&](const auto& sublayer) {
        return sublayer->covers(area.offset(Point{} - sublayer->shift()));
    });
}

std::optional<std::size_t> Layer::firstSeenSublayer(const Rect& dirty) const {
    for (std::size_t i = _sublayers.size(); i-- > 0;)
        if (_sublayers[i]->covers(dirty.offset(Point{} - _sublayers[i]->shift()))) return i;
    return std::nullopt;
}

}  // namespace zornic

#include "Platform/Toolkit/IndexBar.h"

#include "Platform/Toolkit/TextEngine.h"

namespace zornic {

namespace {

constexpr double hitWidth = 44;
/** Letters with more than this from one to the next look lost. */
constexpr double mostStep = 22;
constexpr double dotSize = 3;
/** Of the letters, to the edges above and below. */
constexpr double margin = 4;
constexpr auto none = static_cast<std::size_t>(-1);

constexpr Font smallLetters() { return Font::boldSystemFont(11); }
constexpr Font largeLetters() { return Font::boldSystemFont(13); }

}  // namespace

IndexBar::IndexBar(const Rect& frame) : View(frame) {}

void IndexBar::setTitles(std::vector<std::string> titles) {
    if (titles == _titles) return;
    _titles = std::move(titles);
    _picked = none;
    updateShownTitles();
}

void IndexBar::setFrame(const Rect& frame) {
    const bool resized = frame.height() != bounds().height();
    View::setFrame(frame);
    if (resized) updateShownTitles();
}

void IndexBar::updateShownTitles() {
    _shown.clear();
    const double least = std::ceil(smallLetters().lineHeight());
    const auto room =
        static_cast<std::size_t>(std::max(1.0, std::floor((bounds().height() - 2 * margin) / least)));
    const auto count = _titles.size();
    // With a dot between every two letters that are shown.
    const auto letters = count <= room ? count : (room + 1) / 2;
    for (std::size_t letter = 0; letter < letters; ++letter)
        _shown.push_back(letters > 1 ? letter * (count - 1) / (letters - 1) : 0);
    setNeedsDisplay();
}

std::vector<IndexBar::Place> IndexBar::places() const {
    std::vector<Place> places;
    for (const auto title : _shown) {
        if (!places.empty() && title > places.back().title + 1)
            places.push_back({places.back().title + 1, true});
        places.push_back({title, false});
    }
    return places;
}

Rect IndexBar::areaOfPlaces(std::size_t count) const {
    const double height =
        std::clamp(bounds().height() - 2 * margin, 1.0, mostStep * static_cast<double>(count));
    return {bounds().x(), bounds().midY() - height / 2, bounds().width(), height};
}

void IndexBar::drawRect(Canvas& canvas, const Rect&) {
    const auto all = places();
    if (all.empty()) return;
    const Rect area = areaOfPlaces(all.size());
    const double step = area.height() / static_cast<double>(all.size());
    const Font font = step < largeLetters().lineHeight() ? smallLetters() : largeLetters();
    double y = area.y();
    for (std::size_t at = 0; at < all.size(); ++at, y += step) {
        const auto& place = all[at];
        const auto end = at + 1 < all.size() ? all[at + 1].title : _titles.size();
        const bool picked = _picked >= place.title && _picked < end;
        const Color color = picked ? tintColor() : _externalSystemGrayColor();
        const double middle = y + step / 2;
        if (place.dot) {
            canvas.fillRoundedRect({bounds().midX() - dotSize / 2, middle - dotSize / 2, dotSize, dotSize},
                                   dotSize / 2, color);
            continue;
        }
        TextRequest request;
        request.text = StyledText(_titles[place.title]);
        request.font = font;
        request.maxWidth = bounds().width();
        request.alignment = TextAlignment::Center;
        const auto layout = TextEngine::current().layout(request);
        // Scripts without capitals would hang low on a common baseline, and some below it.
        canvas.drawText(*layout, {bounds().x(), middle - layout->inkBounds().midY()}, color);
    }
}

bool IndexBar::pointInside(Point point) const {
    return Rect(bounds().maxX() - hitWidth, bounds().y(), hitWidth, bounds().height()).contains(point);
}

void IndexBar::touchBegan(const Touch& touch) { pick(touch); }
void IndexBar::touchMoved(const Touch& touch) { pick(touch); }
void IndexBar::touchEnded(const Touch&) { setPicked(none); }
void IndexBar::touchCancelled(const Touch&) { setPicked(none); }

void IndexBar::pick(const Touch& touch) {
    if (_titles.empty()) return;
    const Rect area = areaOfPlaces(places().size());
    const double part = (convertFromWindow(touch.location).y - area.y()) / area.height();
    const double title = std::floor(part * static_cast<double>(_titles.size()));
    const auto index =
        static_cast<std::size_t>(std::clamp(title, 0.0, static_cast<double>(_titles.size() - 1)));
    if (index == _picked) return;
    setPicked(index);
    const auto self = shared_from_this();
    if (onPick) onPick(index);
}

void IndexBar::setPicked(std::size_t index) {
    if (index == _picked) return;
    _picked = index;
    setNeedsDisplay();
}

}  // namespace zornic

#include "Platform/Toolkit/DamageRegion.h"

#include <algorithm>

namespace zornic {

namespace {

/** Joining costs no more than this share of the joined area, or this many square points, drawn in vain. */
constexpr double wastedShare = 0.2, wastedArea = 1024;

double areaOf(const Rect& rect) { return rect.width() * rect.height(); }

bool worthJoining(const Rect& one, const Rect& other) {
    const double joined = areaOf(one.united(other));
    const double wasted = joined - areaOf(one) - areaOf(other) + areaOf(one.intersected(other));
    return wasted <= std::max(wastedArea, wastedShare * joined);
}

}  // namespace

void DamageRegion::add(Rect area) {
    area = area.intersected(_window);
    if (area.empty()) return;
    // A joined area may be near to what neither part was near to.
    for (auto at = _rects.begin(); at != _rects.end();) {
        if (at->contains(area)) return;
        if (!worthJoining(*at, area)) {
            ++at;
            continue;
        }
        area = area.united(*at);
        _rects.erase(at);
        at = _rects.begin();
    }
    if (_rects.size() == maxRects)
        _rects = {_window};
    else
        _rects.push_back(area);
}

}  // namespace zornic

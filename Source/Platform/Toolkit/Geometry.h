#pragma once

#include <algorithm>
#include <cmath>

namespace zornic {

/** All lengths are points; y grows downwards. */
struct Point {
    double x = 0, y = 0;

    Point operator+(Point other) const { return {x + other.x, y + other.y}; }
    Point operator-(Point other) const { return {x - other.x, y - other.y}; }
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0, height = 0;

    bool empty() const { return width <= 0 || height <= 0; }
    friend bool operator==(const Size&, const Size&) = default;
};

/** Distances from the four edges, positive inwards. */
struct EdgeInsets {
    double top = 0, left = 0, bottom = 0, right = 0;
    friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

/** Stands in a table's separator inset for "whatever the table takes by itself". */
inline constexpr double AutomaticDimension = -1;

struct Rect {
    Point origin;
    Size size;

    Rect() = default;
    Rect(double x, double y, double width, double height) : origin{x, y}, size{width, height} {}
    Rect(Point o, Size s) : origin(o), size(s) {}

    double x() const { return origin.x; }
    double y() const { return origin.y; }
    double width() const { return size.width; }
    double height() const { return size.height; }
    double maxX() const { return origin.x + size.width; }
    double maxY() const { return origin.y + size.height; }
    double midX() const { return origin.x + size.width / 2; }
    double midY() const { return origin.y + size.height / 2; }
    Point center() const { return {midX(), midY()}; }
    bool empty() const { return size.empty(); }
    bool contains(Point point) const {
        return point.x >= x() && point.x < maxX() && point.y >= y() && point.y < maxY();
    }
    bool contains(const Rect& other) const {
        return other.x() >= x() && other.maxX() <= maxX() && other.y() >= y() && other.maxY() <= maxY();
    }
    bool intersects(const Rect& other) const { return !intersected(other).empty(); }
    Rect intersected(const Rect& other) const {
        const double left = std::max(x(), other.x()), top = std::max(y(), other.y());
        const double right = std::min(maxX(), other.maxX()), bottom = std::min(maxY(), other.maxY());
        return {left, top, std::max(0.0, right - left), std::max(0.0, bottom - top)};
    }
    /** The smallest rectangle around both; an empty one counts for nothing. */
    Rect united(const Rect& other) const {
        if (empty()) return other;
        if (other.empty()) return *this;
        const double left = std::min(x(), other.x()), top = std::min(y(), other.y());
        return {left, top, std::max(maxX(), other.maxX()) - left, std::max(maxY(), other.maxY()) - top};
    }
    Rect offset(Point by) const { return {origin + by, size}; }
    Rect inset(const EdgeInsets& by) const {
        return {x() + by.left, y() + by.top, width() - by.left - by.right, height() - by.top - by.bottom};
    }
    Rect inset(double dx, double dy) const {
        return {x() + dx, y() + dy, width() - 2 * dx, height() - 2 * dy};
    }
    friend bool operator==(const Rect&, const Rect&) = default;
};

/** `value` points moved to the nearest device pixel at `scale` pixels a point (0 counts as 1). */
inline double roundedToScale(double value, double scale) {
    const double s = scale > 0 ? scale : 1;
    return std::round(value * s) / s;
}
inline double ceiledToScale(double value, double scale) {
    const double s = scale > 0 ? scale : 1;
    return std::ceil(value * s) / s;
}
inline double flooredToScale(double value, double scale) {
    const double s = scale > 0 ? scale : 1;
    return std::floor(value * s) / s;
}

}  // namespace zornic

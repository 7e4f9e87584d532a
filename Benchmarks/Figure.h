#pragma once

#include <string>
#include <vector>

namespace helmo::benchmarks {

/** One row of the table. */
struct Figure {
    enum class Limit { AtMost, AtLeast };

    std::string name;
    /** What is held against the limit: ours over the floor, or a plain measure that needs no floor. */
    double value = 0;
    double limit = 0;
    /** What was measured, both in `unit`; the floor is 0 where there is none. */
    double ours = 0, floor = 0;
    std::string unit;
    Limit kind = Limit::AtMost;

    bool isWithinLimit() const { return kind == Limit::AtMost ? value <= limit : value >= limit; }

    /** Ours against the floor. */
    static Figure ratio(std::string name, double limit, double ours, double floor, std::string unit,
                        Limit kind = Limit::AtMost) {
        return {std::move(name), floor > 0 ? ours / floor : 0, limit, ours, floor, std::move(unit), kind};
    }
    /** A measure that stands for itself; `floor` is for comparison only. */
    static Figure plain(std::string name, double limit, double ours, double floor, std::string unit) {
        return {std::move(name), ours, limit, ours, floor, std::move(unit), Limit::AtMost};
    }
    /** The longest frame of something, in milliseconds: none may be missed. */
    static Figure longestFrame(std::string name, double milliseconds) {
        return plain(std::move(name), 16, milliseconds, 0, "ms");
    }
};

using Figures = std::vector<Figure>;

}  // namespace helmo::benchmarks

#pragma once

#include <memory>
#include <vector>

namespace zornic {

class View;

enum class LayoutAttribute {
    Left,
    Right,
    Top,
    Bottom,
    Width,
    Height,
    CenterX,
    CenterY,
    FirstBaseline,
    LastBaseline
};

inline constexpr double LayoutPriorityRequired = 1000;

/** item.attribute = other.otherAttribute x multiplier + constant, in points. Views are held weakly. A value.
 */
struct LayoutConstraint {
    std::weak_ptr<View> item;
    LayoutAttribute attribute = LayoutAttribute::Left;
    /** None: the right side is the constant alone. */
    std::weak_ptr<View> other;
    LayoutAttribute otherAttribute = LayoutAttribute::Left;
    double multiplier = 1;
    double constant = 0;
    double priority = LayoutPriorityRequired;
};

/** Places the subviews of `view` that take part in its constraints: equalities, higher priorities first, then
   the views' own sizes; what stays open keeps its present value. */
void solveConstraints(View& view, const std::vector<LayoutConstraint>& constraints);

}  // namespace zornic

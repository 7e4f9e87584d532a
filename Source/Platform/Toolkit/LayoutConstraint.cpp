#include "Platform/Toolkit/LayoutConstraint.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "Platform/Toolkit/View.h"

namespace zornic {

namespace {

constexpr double tolerance = 1e-7;

/** Equations over unknowns, taken in order of importance: one that says nothing new, or contradicts what was
   said before, is left out. */
class LinearSystem {
public:
    explicit LinearSystem(std::size_t unknowns) : _unknowns(unknowns) {}

    /** sum of coefficients x unknowns = value; the value stands behind the coefficients. */
    void add(std::vector<double> row) {
        for (const Row& known : _rows) subtract(row, known.values, row[known.pivot]);
        const auto largest = std::max_element(row.begin(), row.end() - 1,
                                              [](double a, double b) { return std::abs(a) < std::abs(b); });
        if (_unknowns == 0 || std::abs(*largest) < tolerance) return;
        const auto pivot = static_cast<std::size_t>(largest - row.begin());
        const double factor = row[pivot];
        for (double& value : row) value /= factor;
        for (Row& known : _rows) subtract(known.values, row, known.values[pivot]);
        _rows.push_back({std::move(row), pivot});
    }
    void set(std::size_t unknown, double value) {
        std::vector<double> row(_unknowns + 1);
        row[unknown] = 1;
        row.back() = value;
        add(std::move(row));
    }
    /** Of a system in which every unknown was set in the end. */
    std::vector<double> solution() const {
        std::vector<double> values(_unknowns);
        for (const Row& row : _rows) values[row.pivot] = row.values.back();
        return values;
    }

private:
    struct Row {
        std::vector<double> values;
        std::size_t pivot;
    };
    static void subtract(std::vector<double>& row, const std::vector<double>& other, double factor) {
        for (std::size_t at = 0; at < row.size(); ++at) row[at] -= factor * other[at];
    }
    const std::size_t _unknowns;
    std::vector<Row> _rows;
};

enum class Axis { Horizontal, Vertical };

Axis axisOf(LayoutAttribute attribute) {
    switch (attribute) {
        case LayoutAttribute::Left:
        case LayoutAttribute::Right:
        case LayoutAttribute::Width:
        case LayoutAttribute::CenterX:
            return Axis::Horizontal;
        default:
            return Axis::Vertical;
    }
}

bool isBaseline(LayoutAttribute attribute) {
    return attribute == LayoutAttribute::FirstBaseline || attribute == LayoutAttribute::LastBaseline;
}

/** An attribute as position x p + length x l + constant. */
struct Term {
    double position = 0, length = 0, constant = 0;
};

Term termOf(LayoutAttribute attribute, View& view) {
    switch (attribute) {
        case LayoutAttribute::Left:
        case LayoutAttribute::Top:
            return {1, 0, 0};
        case LayoutAttribute::Right:
        case LayoutAttribute::Bottom:
            return {1, 1, 0};
        case LayoutAttribute::Width:
        case LayoutAttribute::Height:
            return {0, 1, 0};
        case LayoutAttribute::CenterX:
        case LayoutAttribute::CenterY:
            return {1, 0.5, 0};
        case LayoutAttribute::FirstBaseline:
            return {1, 0, view.firstBaselineFromTop()};
        case LayoutAttribute::LastBaseline:
            return {1, 1, -view.lastBaselineFromBottom()};
    }
    return {};
}

double positionIn(const Rect& rect, Axis axis) { return axis == Axis::Horizontal ? rect.x() : rect.y(); }
double lengthIn(Size size, Axis axis) { return axis == Axis::Horizontal ? size.width : size.height; }

/** One solving: across first, for a text's height follows from its width, and its baselines from both. */
class Solver {
public:
    Solver(View& view, const std::vector<LayoutConstraint>& constraints) : _view(view) {
        for (const LayoutConstraint& constraint : constraints)
            if (isUsable(constraint)) _constraints.push_back(constraint);
        std::stable_sort(_constraints.begin(), _constraints.end(),
                         [](const auto& a, const auto& b) { return a.priority > b.priority; });
        for (const LayoutConstraint& constraint : _constraints) {
            collect(constraint.item.lock());
            collect(constraint.other.lock());
        }
    }

    void solve() {
        if (_items.empty()) return;
        solveAxis(Axis::Horizontal);
        sizeTexts();
        solveAxis(Axis::Vertical);
        for (const Item& item : _items) item.view->setFrame(item.frame);
    }

private:
    struct Item {
        std::shared_ptr<View> view;
        Rect frame;
    };

    bool isUsable(const LayoutConstraint& constraint) const {
        const std::weak_ptr<View> none;
        const bool hasOther = constraint.other.owner_before(none) || none.owner_before(constraint.other);
        return isKnown(constraint.item.lock().get()) && (!hasOther || isKnown(constraint.other.lock().get()));
    }
    bool isKnown(const View* view) const { return view && (view == &_view || view->superview() == &_view); }

    void collect(const std::shared_ptr<View>& view) {
        if (!view || view.get() == &_view || view->translatesAutoresizingMaskIntoConstraints()) return;
        if (find(view.get()) == _items.size()) _items.push_back({view, view->frame()});
    }
    std::size_t find(const View* view) const {
        const auto at = std::find_if(_items.begin(), _items.end(),
                                     [view](const Item& item) { return item.view.get() == view; });
        return static_cast<std::size_t>(at - _items.begin());
    }

    /** Texts with baselines take the size that they are about to have, and so know where their baselines are.
     */
    void sizeTexts() {
        for (const LayoutConstraint& constraint : _constraints) {
            const auto item = constraint.item.lock(), other = constraint.other.lock();
            if (isBaseline(constraint.attribute)) sizeText(item.get());
            if (other && isBaseline(constraint.otherAttribute)) sizeText(other.get());
        }
    }
    void sizeText(const View* view) {
        const auto at = find(view);
        if (at == _items.size() || !view->hasIntrinsicSize()) return;
        Item& item = _items[at];
        const double width = item.frame.width();
        item.view->setFrame({item.view->frame().origin, {width, item.view->sizeThatFits({width, 0}).height}});
    }

    void solveAxis(Axis axis) {
        LinearSystem system(_items.size() * 2);
        for (const LayoutConstraint& constraint : _constraints) {
            const auto other = constraint.other.lock();
            const bool concerns =
                axisOf(constraint.attribute) == axis ||
                (axis == Axis::Vertical && other && axisOf(constraint.otherAttribute) == axis);
            const bool awaitsHeights =
                axis == Axis::Horizontal && other && axisOf(constraint.otherAttribute) != axis;
            if (!concerns || awaitsHeights) continue;
            std::vector<double> row(_items.size() * 2 + 1);
            row.back() = constraint.constant;
            addTerm(row, *constraint.item.lock(), constraint.attribute, 1, axis);
            if (other) addTerm(row, *other, constraint.otherAttribute, -constraint.multiplier, axis);
            system.add(std::move(row));
        }
        addDefaults(system, axis);
        const auto values = system.solution();
        for (std::size_t at = 0; at < _items.size(); ++at) {
            Rect& frame = _items[at].frame;
            (axis == Axis::Horizontal ? frame.origin.x : frame.origin.y) = values[at * 2];
            (axis == Axis::Horizontal ? frame.size.width : frame.size.height) = values[at * 2 + 1];
        }
    }

    /** Adds `factor` times an attribute to the left side; what is known already goes to the right. */
    void addTerm(std::vector<double>& row, View& view, LayoutAttribute attribute, double factor,
                 Axis axis) const {
        const Term term = termOf(attribute, view);
        row.back() -= factor * term.constant;
        const auto at = find(&view);
        if (at < _items.size() && axisOf(attribute) == axis) {
            row[at * 2] += factor * term.position;
            row[at * 2 + 1] += factor * term.length;
            return;
        }
        Rect known = &view == &_view ? view.bounds() : view.frame();
        if (at < _items.size()) known = _items[at].frame;
        row.back() -= factor * (term.position * positionIn(known, axisOf(attribute)) +
                                term.length * lengthIn(known.size, axisOf(attribute)));
    }

    void addDefaults(LinearSystem& system, Axis axis) const {
        for (std::size_t at = 0; at < _items.size(); ++at) {
            View& view = *_items[at].view;
            if (!view.hasIntrinsicSize()) continue;
            const double room = axis == Axis::Horizontal ? 0 : _items[at].frame.width();
            system.set(at * 2 + 1, lengthIn(view.sizeThatFits({room, 0}), axis));
        }
        for (std::size_t at = 0; at < _items.size(); ++at) {
            const Rect present = _items[at].view->frame();
            system.set(at * 2 + 1, lengthIn(present.size, axis));
            system.set(at * 2, positionIn(present, axis));
        }
    }

    View& _view;
    std::vector<LayoutConstraint> _constraints;
    std::vector<Item> _items;
};

}  // namespace

void solveConstraints(View& view, const std::vector<LayoutConstraint>& constraints) {
    Solver(view, constraints).solve();
}

}  // namespace zornic

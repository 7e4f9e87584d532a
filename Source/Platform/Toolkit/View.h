#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Toolkit/Layer.h"
#include "Platform/Toolkit/LayoutConstraint.h"
#include "Platform/Toolkit/Touch.h"

namespace zornic {

class GestureRecognizer;
class ViewController;
class Window;

namespace Autoresizing {
inline constexpr unsigned None = 0, FlexibleLeftMargin = 1, FlexibleWidth = 2, FlexibleRightMargin = 4,
                          FlexibleTopMargin = 8, FlexibleHeight = 16, FlexibleBottomMargin = 32;
}
/** Edge sets for `attachEdges`: top 1, left 2, bottom 4, right 8. */
inline constexpr unsigned AllEdges = 15;

enum class ContentMode { ScaleToFill = 0, AspectFit = 1, AspectFill = 2, Center = 4 };

/** A rectangle of the screen: it draws, holds subviews, takes touches and focus. Main thread. A parent owns
   its children; `superview` and `window` are plain and cleared in time. */
class View : public Object, public LayerOwner {
public:
    explicit View(const Rect& frame = {});
    ~View() override;
    void didMake() override;

    // Geometry, in points
    const Rect& frame() const { return _layer->frame(); }
    virtual void setFrame(const Rect& frame);
    Rect bounds() const { return _layer->bounds(); }
    /** Changes size and what is shown at the top left. */
    virtual void setBounds(const Rect& bounds);
    unsigned autoresizingMask() const { return _autoresizingMask; }
    void setAutoresizingMask(unsigned mask) { _autoresizingMask = mask; }
    /** False: constraints place it. */
    bool translatesAutoresizingMaskIntoConstraints() const { return _translatesAutoresizing; }
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) {
        _translatesAutoresizing = translates;
    }
    void addConstraint(LayoutConstraint constraint);
    void addConstraints(const std::vector<LayoutConstraint>& constraints);
    const std::vector<LayoutConstraint>& constraints() const { return _constraints; }
    /** Attaches edges (a set, 15: all) of this view to those of `other` (its superview) by constraints on it.
     */
    void attachEdges(View& other, unsigned edges, const EdgeInsets& insets);
    /** Size that shows everything within `size`; the present size by default. */
    virtual Size sizeThatFits(Size size);
    virtual void sizeToFit();
    /** Whether `sizeThatFits` knows a size from the content; constraints leave it that size where they name
     * none. */
    virtual bool hasIntrinsicSize() const { return false; }
    /** From the top and from the bottom edge; the edges themselves for a view without text. */
    virtual double firstBaselineFromTop() { return 0; }
    virtual double lastBaselineFromBottom() { return 0; }
    Rect convertToWindow(const Rect& rect) const;
    Rect convertFromWindow(const Rect& rect) const;
    Point convertToWindow(Point point) const;
    Point convertFromWindow(Point point) const;

    // Tree
    View* superview() const { return _superview; }
    /** In order of insertion, the last on top. */
    const std::vector<std::shared_ptr<View>>& subviews() const { return _subviews; }
    /** On top; moves it here from another parent. */
    void addSubview(const std::shared_ptr<View>& view);
    void insertSubview(const std::shared_ptr<View>& view, std::size_t index);
    void insertSubviewBelow(const std::shared_ptr<View>& view, const View& sibling);
    void bringSubviewToFront(const std::shared_ptr<View>& view);
    void removeFromSuperview();
    bool isDescendantOf(const View& view) const;
    Window* window() const { return _window; }
    int tag() const { return _tag; }
    void setTag(int tag) { _tag = tag; }
    /** This view or the first descendant with that tag; none when there is none. */
    std::shared_ptr<View> viewWithTag(int tag);
    /** The controller whose root view this is; none for others. */
    ViewController* viewController() const { return _viewController; }
    void setViewController(ViewController* controller) { _viewController = controller; }

    // Look
    const std::shared_ptr<Layer>& layer() const { return _layer; }
    std::optional<Color> backgroundColor() const { return _layer->backgroundColor(); }
    void setBackgroundColor(std::optional<Color> color) { _layer->setBackgroundColor(color); }
    bool isHidden() const { return _layer->isHidden(); }
    void setHidden(bool hidden) { _layer->setHidden(hidden); }
    double alpha() const { return _layer->opacity(); }
    void setAlpha(double alpha) { _layer->setOpacity(alpha); }
    bool clipsToBounds() const { return _layer->masksToBounds(); }
    void setClipsToBounds(bool clips) { _layer->setMasksToBounds(clips); }
    /** Its own or the nearest ancestor's; teal by default. */
    Color tintColor() const;
    void setTintColor(std::optional<Color> color);
    virtual void tintColorDidChange() {}
    ContentMode contentMode() const { return _contentMode; }
    void setContentMode(ContentMode mode);
    /** A button's weight against an alert in front of it; plain stored state. */
    float charge() const { return _charge; }
    virtual void setCharge(float charge) { _charge = charge; }
    /** Pixels a point of the screen it is shown on; 1 off screen. */
    double displayScale() const;

    // Layout and drawing
    void setNeedsLayout();
    bool needsLayout() const { return _needsLayout; }
    /** Lays out this view and its descendants now, where needed. */
    void layoutIfNeeded();
    virtual void layoutSubviews();
    void setNeedsDisplay() { _layer->setNeedsDisplay(); }
    void setNeedsDisplay(const Rect& area) { _layer->setNeedsDisplay(area); }
    /** Draws what is neither ground nor subview, in bounds coordinates. */
    virtual void drawRect(Canvas&, const Rect& /*dirty*/) {}
    virtual void didMoveToWindow() {}
    virtual void didMoveToSuperview() {}

    // Touch
    bool isUserInteractionEnabled() const { return _userInteractionEnabled; }
    void setUserInteractionEnabled(bool enabled) { _userInteractionEnabled = enabled; }
    /** Whether a touch at `point` (own coordinates) is this view's; its bounds by default. */
    virtual bool pointInside(Point point) const;
    /** The deepest visible view that takes a touch at `point` (own coordinates); none when none does. */
    virtual std::shared_ptr<View> hitTest(Point point);
    /** A touch that began here. By default the superview gets it. */
    virtual void touchBegan(const Touch& touch);
    virtual void touchMoved(const Touch& touch);
    virtual void touchEnded(const Touch& touch);
    virtual void touchCancelled(const Touch& touch);
    void addGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer);
    const std::vector<std::shared_ptr<GestureRecognizer>>& gestureRecognizers() const { return _recognizers; }

    // Focus (knob)
    virtual bool canBecomeFocused() const { return false; }
    bool isFocused() const { return _focused; }
    /** Called by the focus system only. */
    void setFocused(bool focused);
    virtual void focusDidChange() {}
    /** The knob was pressed down and let go while this is focused. */
    virtual void knobPressBegan() {}
    virtual void knobPressEnded(bool /*cancelled*/) {}
    virtual bool canBecomeFirstResponder() const { return false; }
    bool becomeFirstResponder();
    bool isFirstResponder() const;

    /** What a reader of the screen says of it: its text; empty for none. */
    virtual std::string accessibilityText() const { return {}; }
    /** Name of the image that it shows; empty for none. */
    virtual std::string accessibilityImage() const { return {}; }

    void drawLayer(Canvas& canvas, const Rect& dirty) override;
    void layerDidChange(const Rect& area) override;

protected:
    /** Called by the window that takes or loses the tree. */
    friend class Window;
    void setWindow(Window* window);

private:
    void resizeByMask(Size oldParent, Size newParent);
    void resizeSubviews(Size oldSize);
    void detachFromSuperview();
    void placeLayer(const std::shared_ptr<View>& view, std::size_t index);
    void assignWindow(Window* window, std::vector<std::shared_ptr<View>>& changed);
    /** A change of its subviews wants a layout, unless its own layout makes it. */
    void subviewsDidChange();
    void tellTintColorChange();
    void layoutPass();
    void layoutOwn();

    std::shared_ptr<Layer> _layer;
    View* _superview = nullptr;
    Window* _window = nullptr;
    ViewController* _viewController = nullptr;
    std::vector<std::shared_ptr<View>> _subviews;
    std::vector<LayoutConstraint> _constraints;
    std::vector<std::shared_ptr<GestureRecognizer>> _recognizers;
    std::optional<Color> _tintColor;
    unsigned _autoresizingMask = Autoresizing::None;
    bool _translatesAutoresizing = true, _userInteractionEnabled = true, _focused = false;
    bool _needsLayout = true, _descendantNeedsLayout = false, _inLayout = false;
    ContentMode _contentMode = ContentMode::ScaleToFill;
    int _tag = 0;
    float _charge = 0;
};

/** The area that content of `size` takes in `bounds` under a content mode. */
Rect rectForContent(Size size, const Rect& bounds, ContentMode mode);

}  // namespace zornic

#pragma once

#include <functional>
#include <vector>

#include "Platform/Toolkit/Button.h"
#include "Platform/Toolkit/NavigationItem.h"

namespace zornic {

/** The strip over a pushed screen: back, title, right item. 44 points high. Main thread. */
class NavigationBar : public View {
public:
    static constexpr double height = 44;
    NavigationBar();
    void didMake() override;

    /** The stack's items; the last is shown, with a back button when there is one below. */
    void setItems(std::vector<std::shared_ptr<NavigationItem>> items);
    const std::vector<std::shared_ptr<NavigationItem>>& items() const { return _items; }
    /** Colour of its ground; none: the bar background colour of the display. */
    std::optional<Color> barColor() const { return _barColor; }
    void setBarColor(std::optional<Color> color);
    /** Whether the hairline below it is left out. */
    bool hidesShadow() const { return _hidesShadow; }
    void setHidesShadow(bool hides);
    const std::shared_ptr<Button>& backButton() const { return _backButton; }
    /** The back button was pressed. */
    std::function<void()> onBack;

    void layoutSubviews() override;
    void drawRect(Canvas& canvas, const Rect& dirty) override;

private:
    void showTopItem();
    void placeTitle(double left, double right);
    void placeRightView();
    /** Puts `view` into a slot of the bar in place of what is there. */
    void fillSlot(std::shared_ptr<View>& slot, std::shared_ptr<View> view);
    std::vector<std::shared_ptr<NavigationItem>> _items;
    std::shared_ptr<Button> _backButton;
    std::shared_ptr<Label> _titleLabel, _promptLabel;
    std::shared_ptr<View> _titleView, _rightView;
    std::optional<Color> _barColor;
    bool _hidesShadow = false;
};

}  // namespace zornic

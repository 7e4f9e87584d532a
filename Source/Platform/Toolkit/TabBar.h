#pragma once

#include <functional>
#include <vector>

#include "Platform/Toolkit/Control.h"
#include "Platform/Toolkit/ImageView.h"
#include "Platform/Toolkit/Label.h"
#include "Platform/Toolkit/TabBarItem.h"

namespace zornic {

/** One tab: an icon over a small label, in the tint colour when chosen. */
class TabBarButton : public Control {
public:
    explicit TabBarButton(TabBarItem item);
    void didMake() override;
    const TabBarItem& item() const { return _item; }
    void setSelected(bool selected) override;
    void setHighlighted(bool highlighted) override;
    void focusDidChange() override;
    void layoutSubviews() override;
    std::string accessibilityText() const override { return _item.title; }
    std::string accessibilityImage() const override { return _item.image.name(); }
    void drawRect(Canvas& canvas, const Rect& dirty) override;

private:
    void updateLook();
    const TabBarItem _item;
    std::shared_ptr<ImageView> _imageView;
    std::shared_ptr<Label> _label;
};

/** The strip of tabs, 44 points high, with a slot for a view at its right. Main thread. */
class TabBar : public View {
public:
    static constexpr double height = 44;
    static constexpr double minimumTabWidth = 84;
    TabBar();
    /** Buttons of items that stay are kept. */
    void setItems(const std::vector<TabBarItem>& items);
    void setSelectedIndex(std::optional<std::size_t> index);
    std::optional<std::size_t> selectedIndex() const { return _selectedIndex; }
    const std::vector<std::shared_ptr<TabBarButton>>& buttons() const { return _buttons; }
    std::shared_ptr<View> accessoryView() const { return _accessoryView; }
    void setAccessoryView(std::shared_ptr<View> view);
    /** How many tabs fit beside the accessory, at least one; any number before the bar has a width. */
    std::size_t capacity() const;
    std::function<void(std::size_t index)> onPick;
    void layoutSubviews() override;
    void drawRect(Canvas& canvas, const Rect& dirty) override;

private:
    std::shared_ptr<TabBarButton> makeButton(const TabBarItem& item);
    double tabsWidth() const;
    std::vector<std::shared_ptr<TabBarButton>> _buttons;
    std::optional<std::size_t> _selectedIndex;
    std::shared_ptr<View> _accessoryView;
};

}  // namespace zornic

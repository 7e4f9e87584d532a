#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/Toolkit/View.h"

namespace zornic {

/** An item of a bar that shows a view of its own. Main thread. */
class BarButtonItem : public Object {
public:
    explicit BarButtonItem(std::shared_ptr<View> customView) : _customView(std::move(customView)) {}
    const std::shared_ptr<View>& customView() const { return _customView; }

private:
    const std::shared_ptr<View> _customView;
};

/** What a navigation bar shows for one controller. Main thread. */
class NavigationItem : public Object {
public:
    std::string title() const { return _title; }
    void setTitle(std::string title);
    /** A line over the title; empty for none. */
    std::string prompt() const { return _prompt; }
    void setPrompt(std::string prompt);
    /** Instead of the title. */
    std::shared_ptr<View> titleView() const { return _titleView; }
    void setTitleView(std::shared_ptr<View> view);
    std::shared_ptr<BarButtonItem> rightBarButtonItem() const { return _right; }
    void setRightBarButtonItem(std::shared_ptr<BarButtonItem> item);
    /** The bar that shows it at present; the bar's. */
    std::function<void()> didChange;

private:
    std::string _title, _prompt;
    std::shared_ptr<View> _titleView;
    std::shared_ptr<BarButtonItem> _right;
};

}  // namespace zornic

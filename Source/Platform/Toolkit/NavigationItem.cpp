#include "Platform/Toolkit/NavigationItem.h"

namespace zornic {

namespace {

template <class Value>
void update(Value& field, Value&& value, const std::function<void()>& didChange) {
    if (value == field) return;
    field = std::move(value);
    if (const auto tell = didChange) tell();
}

}  // namespace

void NavigationItem::setTitle(std::string title) { update(_title, std::move(title), didChange); }
void NavigationItem::setPrompt(std::string prompt) { update(_prompt, std::move(prompt), didChange); }
void NavigationItem::setTitleView(std::shared_ptr<View> view) {
    update(_titleView, std::move(view), didChange);
}
void NavigationItem::setRightBarButtonItem(std::shared_ptr<BarButtonItem> item) {
    update(_right, std::move(item), didChange);
}

}  // namespace zornic

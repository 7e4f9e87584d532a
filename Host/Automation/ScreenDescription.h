#pragma once

#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "Platform/Toolkit/TableView.h"
#include "Platform/Toolkit/Window.h"

namespace helmo {

/** What is on the display, in automation's words. Main thread. */

/** The controllers on view, from the root to the topmost. */
nlohmann::json describedScreens(zornic::Window& window);
/** The view tree; hidden views only when `all`. */
nlohmann::json describedTree(const zornic::View& view, bool all);
/** The rows on view of a list, with its counts and index titles. */
nlohmann::json describedRows(zornic::TableView& list);
/** The front screen's list; none when it has none. */
std::shared_ptr<zornic::TableView> frontList(zornic::Window& window);
/** The first view, in reading order, that shows exactly `text` and can be seen; none when there is none. */
std::shared_ptr<zornic::View> visibleViewShowing(zornic::Window& window, const std::string& text);

}  // namespace helmo

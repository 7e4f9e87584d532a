#include "Platform/LibraryKit/ScreenRegistry.h"

namespace zornic {

ScreenRegistry& ScreenRegistry::shared() {
    static ScreenRegistry registry;
    return registry;
}

void ScreenRegistry::registerIdentifierWithAttributesDefaultQueryCreationHandler(
    const std::string& identifier, ScreenAttributes attributes, QueryCreationHandler handler) {
    _records[identifier] = {std::move(attributes), std::move(handler)};
}

std::shared_ptr<QueryTableViewController> ScreenRegistry::viewControllerForIdentifier(
    const std::string& identifier) const {
    return viewControllerForIdentifierQuery(identifier, nullptr);
}

std::shared_ptr<QueryTableViewController> ScreenRegistry::viewControllerForIdentifierQuery(
    const std::string& identifier, const std::shared_ptr<MediaQuery>& query) const {
    const auto found = _records.find(identifier);
    if (found == _records.end()) return nullptr;
    const auto& [attributes, handler] = found->second;
    const auto wanted = query || !handler ? query : handler();
    if (!wanted) return nullptr;
    const auto dataSource = attributes.dataSourceClass(wanted, attributes.entityType);
    if (!dataSource) return nullptr;
    const auto screen = attributes.viewControllerClass(dataSource, *attributes.configurationClass);
    if (screen) screen->setIdentifier(identifier);
    return screen;
}

}  // namespace zornic

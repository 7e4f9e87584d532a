#include "Platform/Foundation/ClassRegistry.h"

namespace zornic {

ClassRegistry& ClassRegistry::shared() {
    static auto& registry = *new ClassRegistry;
    return registry;
}

void ClassRegistry::registerClass(const std::string& name,
                                  std::shared_ptr<const ClassDescriptor> descriptor) {
    std::lock_guard lock(_mutex);
    _classes[name].swap(descriptor);
}

void ClassRegistry::removeClass(const std::string& name) {
    decltype(_classes)::node_type removed;  // destroyed without the lock
    std::lock_guard lock(_mutex);
    removed = _classes.extract(name);
}

std::shared_ptr<const ClassDescriptor> ClassRegistry::classNamed(const std::string& name) const {
    std::lock_guard lock(_mutex);
    const auto found = _classes.find(name);
    return found == _classes.end() ? nullptr : found->second;
}

}  // namespace zornic

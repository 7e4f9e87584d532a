#include "Platform/Foundation/IndexPath.h"

namespace zornic {

IndexPath IndexPath::appending(std::uint64_t index) const {
    auto indices = _indices;
    indices.push_back(index);
    return IndexPath(std::move(indices));
}

IndexPath IndexPath::removingLast() const {
    if (_indices.empty()) return {};
    return IndexPath(std::vector(_indices.begin(), _indices.end() - 1));
}

}  // namespace zornic

std::size_t std::hash<zornic::IndexPath>::operator()(const zornic::IndexPath& path) const noexcept {
    std::uint64_t mixed = path.length();
    // Multiplied and folded at each step, so that (0, 1) and (1, 0) and their neighbours fall apart.
    for (const auto index : path.indices()) {
        mixed = (mixed ^ index) * 0x9E3779B97F4A7C15U;
        mixed ^= mixed >> 32;
    }
    return static_cast<std::size_t>(mixed);
}

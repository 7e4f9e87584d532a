#pragma once

#include <cstdint>

namespace zornic {

/** A run of a list: `length` indices from `location`. */
struct Range {
    std::uint64_t location = 0;
    std::uint64_t length = 0;

    std::uint64_t end() const { return location + length; }
    bool contains(std::uint64_t index) const { return index >= location && index < end(); }
    friend bool operator==(const Range&, const Range&) = default;
};

}  // namespace zornic

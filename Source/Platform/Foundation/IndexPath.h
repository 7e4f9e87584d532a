#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <vector>

namespace zornic {

/** The platform's "no such index": the largest positive signed number. */
inline constexpr std::uint64_t NotFound =
    static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());

/** A path of unsigned indices of any depth: (section, row) in lists, the empty path is a tree's root. A
 * value. */
class IndexPath {
public:
    IndexPath() = default;
    IndexPath(std::initializer_list<std::uint64_t> indices) : _indices(indices) {}
    explicit IndexPath(std::vector<std::uint64_t> indices) : _indices(std::move(indices)) {}
    static IndexPath forRow(std::uint64_t row, std::uint64_t section) { return {section, row}; }

    std::size_t length() const { return _indices.size(); }
    /** The index at `position`; NotFound beyond the end. */
    std::uint64_t indexAtPosition(std::size_t position) const {
        return position < _indices.size() ? _indices[position] : NotFound;
    }
    std::uint64_t section() const { return indexAtPosition(0); }
    std::uint64_t row() const { return indexAtPosition(1); }
    IndexPath appending(std::uint64_t index) const;
    /** Without its last index; the empty path stays empty. */
    IndexPath removingLast() const;
    const std::vector<std::uint64_t>& indices() const { return _indices; }

    friend auto operator<=>(const IndexPath&, const IndexPath&) = default;
    friend bool operator==(const IndexPath&, const IndexPath&) = default;

private:
    std::vector<std::uint64_t> _indices;
};

}  // namespace zornic

template <>
struct std::hash<zornic::IndexPath> {
    std::size_t operator()(const zornic::IndexPath& path) const noexcept;
};

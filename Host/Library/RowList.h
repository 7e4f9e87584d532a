#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Platform/Foundation/Range.h"

namespace helmo {

/** An ordered list as row numbers, in sections. Its count never changes; rows that came or went since it was
   made are missed or miss. Any thread. */
class RowList {
public:
    using Rows = std::vector<std::uint32_t>;
    struct Section {
        /** The two bytes that a key starts with. */
        std::string key;
        zornic::Range range;
    };

    virtual ~RowList() = default;
    virtual std::uint64_t count() const = 0;
    /** In order, without gaps; empty when the order has none. */
    const std::vector<Section>& sections() const { return _sections; }
    /** Row numbers of a run of the list, fewer at its end. */
    virtual Rows rows(zornic::Range range) const = 0;
    /** First index of a row; NotFound when it isn't in the list. */
    virtual std::uint64_t indexOf(std::uint32_t row) const = 0;

protected:
    /** Adds rows behind the last ones, to its section when `key` starts with the same two bytes. */
    void addToSections(const std::string& key, zornic::Range rows);

private:
    std::vector<Section> _sections;
};

}  // namespace helmo

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Host/Library/QueryCompiler.h"
#include "Host/Library/Readers.h"
#include "Platform/Foundation/Range.h"

namespace helmo {

/** An ordered list as row numbers, four bytes each, in sections. A list that is filtered is read when it is
   made. The long lists of all tracks know their count and sections from maintained counts at once; their
   numbers are read in the background on first use, and until they are there, rows near the start of a section
   are read from the section's start. The count never changes; rows that came or went since then are missed or
   miss. Any thread. */
class RowList {
public:
    struct Section {
        /** The two bytes that a key starts with. */
        std::string key;
        zornic::Range range;
    };

    RowList(std::shared_ptr<Readers> readers, const SqlQuery& rows);
    /** A list that `compiler.countedOrder()` names. */
    RowList(std::shared_ptr<Readers> readers, std::shared_ptr<const QueryCompiler> compiler);

    std::uint64_t count() const { return _count; }
    /** In order, without gaps; empty when the order has none. */
    const std::vector<Section>& sections() const { return _sections; }
    /** Row numbers of a run of the list, fewer at its end. */
    std::vector<std::uint32_t> rows(zornic::Range range) const;
    /** First index of a row; NotFound when it isn't in the list. May wait until the list is read. */
    std::uint64_t indexOf(std::uint32_t row) const;

private:
    struct Numbers;
    void startReading() const;
    std::vector<std::uint32_t> rowsFromSection(zornic::Range range) const;

    const std::shared_ptr<Readers> _readers;
    const std::shared_ptr<const QueryCompiler> _compiler;
    const std::shared_ptr<Numbers> _numbers;
    std::uint64_t _count = 0;
    std::vector<Section> _sections;
};

}  // namespace helmo

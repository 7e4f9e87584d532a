#include "Host/Library/CountedRowList.h"

#include <algorithm>

#include "Platform/Foundation/IndexPath.h"

namespace helmo {

namespace {

/** Behind every key. */
constexpr const char* endOfKeys = "\xff\xff";

RowList::Rows numbersOf(Database& database, const SqlQuery& query) {
    RowList::Rows numbers;
    for (auto rows = database.prepare(query); rows.step();)
        numbers.push_back(static_cast<std::uint32_t>(rows.integer(0)));
    return numbers;
}

}  // namespace

CountedRowList::CountedRowList(std::shared_ptr<Readers> readers, CountedQuery query)
    : _readers(std::move(readers)), _query(std::move(query)) {
    _readers->read(false, [&](Database& database) {
        for (auto rows = database.prepare(_query.counts()); rows.step();) {
            const auto length = static_cast<std::uint64_t>(rows.integer(1));
            if (auto start = rows.text(0); _runs.empty() || _runs.back().start != start)
                _runs.push_back({std::move(start), _count});
            addToSections(_runs.back().start, {_count, length});
            _count += length;
        }
        return true;
    });
    _runs.shrink_to_fit();
}

RowList::Rows CountedRowList::rows(zornic::Range range) const {
    if (range.location >= _count) return {};
    range.length = std::min(range.length, _count - range.location);
    const auto next = std::ranges::upper_bound(_runs, range.location, {}, &Run::first);
    const Run& run = *std::prev(next);
    const std::uint64_t skipped = range.location - run.first;
    const std::uint64_t left = (next == _runs.end() ? _count : next->first) - range.location;
    return _readers->read(Rows(), [&](Database& database) {
        return skipped <= left ? numbersOf(database, _query.rowsFrom(run.start, skipped, range.length))
                               : rowsBefore(database, next, left, range.length);
    });
}

RowList::Rows CountedRowList::rowsBefore(Database& database, Runs::const_iterator next,
                                         std::uint64_t distance, std::uint64_t length) const {
    const std::uint64_t taken = std::min(distance, length);
    const std::string end = next == _runs.end() ? endOfKeys : next->start;
    auto rows = numbersOf(database, _query.rowsBefore(end, distance - taken, taken));
    std::ranges::reverse(rows);
    if (length == taken) return rows;
    const auto more = numbersOf(database, _query.rowsFrom(end, 0, length - taken));
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

std::uint64_t CountedRowList::indexOf(std::uint32_t row) const {
    return _readers->read(zornic::NotFound, [&](Database& database) {
        auto key = database.prepare(_query.keyOf(row));
        if (!key.step()) return zornic::NotFound;
        const auto next = std::ranges::upper_bound(_runs, key.text(0), {}, &Run::start);
        if (next == _runs.begin()) return zornic::NotFound;
        const Run& run = *std::prev(next);
        const auto before = database.integer(_query.countOfRowsBetween(run.start, row));
        const auto index = run.first + static_cast<std::uint64_t>(before);
        return index < _count ? index : zornic::NotFound;
    });
}

}  // namespace helmo

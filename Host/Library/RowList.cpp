#include "Host/Library/RowList.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>

#include "Platform/Foundation/IndexPath.h"

namespace helmo {

namespace {

/** How far behind the start of a section rows are read from there rather than waited for. */
constexpr std::uint64_t maximumRowsFromSection = 512;

std::vector<std::uint32_t> numbersOf(Database& database, const SqlQuery& query) {
    std::vector<std::uint32_t> numbers;
    for (auto rows = database.prepare(query); rows.step();)
        numbers.push_back(static_cast<std::uint32_t>(rows.integer(0)));
    return numbers;
}

}  // namespace

struct RowList::Numbers {
    std::mutex mutex;
    std::condition_variable wereRead;
    bool isReading = false;
    bool isRead = false;
    std::vector<std::uint32_t> all;

    void set(std::vector<std::uint32_t> numbers) {
        std::lock_guard lock(mutex);
        all = std::move(numbers);
        isRead = true;
        wereRead.notify_all();
    }
};

RowList::RowList(std::shared_ptr<Readers> readers, const SqlQuery& query)
    : _readers(std::move(readers)), _numbers(std::make_shared<Numbers>()) {
    _readers->read(false, [&](Database& database) {
        std::vector<std::uint32_t> numbers;
        for (auto rows = database.prepare(query); rows.step();) {
            numbers.push_back(static_cast<std::uint32_t>(rows.integer(0)));
            if (rows.isNull(1)) continue;
            const std::string key = rows.text(1);
            if (_sections.empty() || _sections.back().key != key)
                _sections.push_back({key, {numbers.size() - 1, 0}});
            ++_sections.back().range.length;
        }
        _count = numbers.size();
        _numbers->set(std::move(numbers));
        return true;
    });
    if (_count == 0) _numbers->isRead = true;
}

RowList::RowList(std::shared_ptr<Readers> readers, std::shared_ptr<const QueryCompiler> compiler)
    : _readers(std::move(readers)), _compiler(std::move(compiler)), _numbers(std::make_shared<Numbers>()) {
    _readers->read(false, [&](Database& database) {
        for (auto rows = database.prepare(_compiler->countedSections()); rows.step();) {
            const auto length = static_cast<std::uint64_t>(rows.integer(1));
            _sections.push_back({rows.text(0), {_count, length}});
            _count += length;
        }
        return true;
    });
}

void RowList::startReading() const {
    _readers->listQueue().async([numbers = _numbers, readers = _readers, compiler = _compiler] {
        numbers->set(readers->readLong(std::vector<std::uint32_t>(), [&](Database& database) {
            return numbersOf(database, compiler->items());
        }));
    });
}

std::vector<std::uint32_t> RowList::rows(zornic::Range range) const {
    if (range.location >= _count) return {};
    range.length = std::min(range.length, _count - range.location);
    std::unique_lock lock(_numbers->mutex);
    if (!_numbers->isRead) {
        if (!std::exchange(_numbers->isReading, true)) startReading();
        lock.unlock();
        if (auto rows = rowsFromSection(range); !rows.empty()) return rows;
        lock.lock();
        _numbers->wereRead.wait(lock, [this] { return _numbers->isRead; });
    }
    const auto& all = _numbers->all;
    const auto first = std::min<std::uint64_t>(range.location, all.size());
    const auto end = std::min<std::uint64_t>(range.end(), all.size());
    return {all.begin() + static_cast<std::ptrdiff_t>(first), all.begin() + static_cast<std::ptrdiff_t>(end)};
}

std::vector<std::uint32_t> RowList::rowsFromSection(zornic::Range range) const {
    const auto next = std::ranges::upper_bound(_sections, range.location, {},
                                               [](const Section& section) { return section.range.location; });
    if (next == _sections.begin()) return {};
    const Section& section = *std::prev(next);
    const std::uint64_t skipped = range.location - section.range.location;
    if (skipped > maximumRowsFromSection) return {};
    auto rows = _readers->read(std::vector<std::uint32_t>(), [&](Database& database) {
        return numbersOf(database, _compiler->itemsFrom(section.key, skipped + range.length));
    });
    rows.erase(rows.begin(),
               rows.begin() + static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(skipped, rows.size())));
    return rows;
}

std::uint64_t RowList::indexOf(std::uint32_t row) const {
    std::unique_lock lock(_numbers->mutex);
    if (!_numbers->isRead) {
        if (!std::exchange(_numbers->isReading, true)) startReading();
        _numbers->wereRead.wait(lock, [this] { return _numbers->isRead; });
    }
    const auto found = std::ranges::find(_numbers->all, row);
    const auto index = static_cast<std::uint64_t>(found - _numbers->all.begin());
    return found != _numbers->all.end() && index < _count ? index : zornic::NotFound;
}

}  // namespace helmo

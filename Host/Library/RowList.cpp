#include "Host/Library/RowList.h"

namespace helmo {

void RowList::addToSections(const std::string& key, zornic::Range rows) {
    constexpr std::size_t sectionBytes = 2;
    if (_sections.empty() || key.compare(0, sectionBytes, _sections.back().key) != 0)
        _sections.push_back({key.substr(0, sectionBytes), {rows.location, 0}});
    _sections.back().range.length += rows.length;
}

}  // namespace helmo

#include "Host/Library/SectionIndex.h"

#include <algorithm>
#include <span>

#include "Host/Library/PagedEntityList.h"

namespace helmo {

namespace {

using Sections = std::span<const RowList::Section>;

/** Of the first of `sections`, as many as a statement has marks. */
void readTitles(Database& database, Sections sections, std::span<zornic::MediaQuerySection> titled) {
    static const std::string sql =
        "SELECT section, title FROM section_title WHERE section IN " + marksOfPage();
    auto titles = database.prepare({sql, {}});
    for (std::size_t at = 0; at < PagedEntityList::pageLength; ++at)
        titles.bind(at < sections.size() ? SqlValue(Blob{sections[at].key}) : SqlValue());
    while (titles.step()) {
        const auto found = std::ranges::find(sections, titles.text(0), &RowList::Section::key);
        if (found != sections.end())
            titled[static_cast<std::size_t>(found - sections.begin())].title = titles.text(1);
    }
}

}  // namespace

SectionIndex::SectionIndex(Readers& readers, const std::vector<RowList::Section>& sections) {
    for (const auto& section : sections) _sections.push_back({"#", section.range});
    constexpr std::size_t atOnce = PagedEntityList::pageLength;
    readers.read(false, [&](Database& database) {
        for (std::size_t first = 0; first < sections.size(); first += atOnce)
            readTitles(database, std::span(sections).subspan(first), std::span(_sections).subspan(first));
        return true;
    });
}

zornic::MediaQuerySectionInfo SectionIndex::info() const {
    std::vector<std::string> titles;
    std::vector<std::uint64_t> targets;
    for (const auto& section : _sections) {
        targets.push_back(targets.size());
        titles.push_back(section.title);
    }
    return {std::move(titles), std::move(targets)};
}

}  // namespace helmo

#include "Host/Library/SectionIndex.h"

namespace helmo {

SectionIndex::SectionIndex(Readers& readers, const std::vector<RowList::Section>& sections) {
    for (const auto& section : sections) _sections.push_back({"#", section.range});
    readers.read(false, [&](Database& database) {
        auto title = database.prepare({"SELECT title FROM section_title WHERE section = ?", {}});
        for (std::size_t at = 0; at < sections.size(); ++at) {
            title.bind(Blob{sections[at].key});
            if (title.step()) _sections[at].title = title.text(0);
            title.reset();
        }
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

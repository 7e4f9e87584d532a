#include "Host/Library/SectionIndex.h"

#include <algorithm>

namespace helmo {

SectionIndex SectionIndex::read(Readers& readers) {
    return readers.read(SectionIndex(), [](Database& database) {
        SectionIndex index;
        auto rows = database.prepare({"SELECT section, title FROM section_title ORDER BY section", {}});
        while (rows.step()) index._titles.push_back({rows.text(0), rows.text(1)});
        return index;
    });
}

const SectionIndex::Title* SectionIndex::titleOf(const std::string& key) const {
    const auto found = std::ranges::find(_titles, key, &Title::key);
    return found == _titles.end() ? nullptr : &*found;
}

std::vector<zornic::MediaQuerySection> SectionIndex::sections(
    const std::vector<RowList::Section>& sections) const {
    std::vector<zornic::MediaQuerySection> result;
    for (const auto& section : sections) {
        const Title* title = titleOf(section.key);
        result.push_back({title ? title->text : "#", section.range});
    }
    return result;
}

zornic::MediaQuerySectionInfo SectionIndex::info(const std::vector<RowList::Section>& sections) const {
    std::vector<std::string> texts;
    std::vector<std::uint64_t> targets;
    for (std::size_t section = 0; section < sections.size(); ++section) {
        const Title* title = titleOf(sections[section].key);
        texts.push_back(title ? title->text : "#");
        targets.push_back(section);
    }
    return {std::move(texts), std::move(targets)};
}

}  // namespace helmo

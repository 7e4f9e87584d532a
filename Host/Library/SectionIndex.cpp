#include "Host/Library/SectionIndex.h"

#include <algorithm>
#include <set>

namespace helmo {

namespace {

constexpr std::int64_t latin = 0, other = -1;

}  // namespace

SectionIndex SectionIndex::read(Readers& readers) {
    return readers.read(SectionIndex(), [](Database& database) {
        SectionIndex index;
        auto rows =
            database.prepare({"SELECT section, script, title FROM section_title ORDER BY section", {}});
        while (rows.step()) index._titles.push_back({rows.text(0), rows.integer(1), rows.text(2)});
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
    if (sections.empty()) return {};
    std::set<std::int64_t> scripts{latin, other};
    for (const auto& section : sections)
        if (const Title* title = titleOf(section.key)) scripts.insert(title->script);
    std::vector<std::string> texts;
    std::vector<std::uint64_t> targets;
    for (const Title& title : _titles) {
        if (!scripts.contains(title.script)) continue;
        const auto target = std::ranges::lower_bound(sections, title.key, {}, &RowList::Section::key);
        texts.push_back(title.text);
        targets.push_back(
            std::min(static_cast<std::uint64_t>(target - sections.begin()), sections.size() - 1));
    }
    return {std::move(texts), std::move(targets)};
}

}  // namespace helmo

#include "View Controllers/ZRNSectionedTableViewController.h"

#include <algorithm>

namespace zornic {
namespace {

constexpr std::size_t fewestSections = 10;

std::vector<std::uint64_t> offsetsOfSections(const std::vector<MediaQuerySection>& sections) {
    std::vector<std::uint64_t> offsets(sections.size(), 0);
    for (std::size_t i = 0; i + 1 < sections.size(); ++i)
        offsets[i + 1] = offsets[i] + sections[i].range.length;
    return offsets;
}

}  // namespace

void ZRNSectionedTableViewController::didMake() {
    ZRN_OLD_TableViewController::didMake();
    if (!query()) return;
    const auto sections = query()->collectionSections();
    if (sections.size() >= fewestSections) _offsetOfSection = offsetsOfSections(sections);
}

std::optional<std::uint64_t> ZRNSectionedTableViewController::collectionSection(std::uint64_t section) const {
    if (countOfActions() == 0) return section;
    return section == 0 ? std::nullopt : std::optional(section - 1);
}

std::uint64_t ZRNSectionedTableViewController::rowAtIndexPath(const IndexPath& indexPath) const {
    const std::uint64_t actions = countOfActions();
    std::uint64_t section = indexPath.section();
    if (actions > 0) {
        if (section == 0) return indexPath.row();
        --section;
    }
    std::uint64_t offset = 0;
    if (isSectioning()) {
        if (section >= _offsetOfSection->size()) return NotFound;
        offset = (*_offsetOfSection)[section];
    }
    return offset + actions + indexPath.row();
}

IndexPath ZRNSectionedTableViewController::indexPathOfIndex(std::uint64_t index) const {
    const std::uint64_t actions = countOfActions();
    if (index < actions || !isSectioning()) return IndexPath::forRow(index, 0);
    const auto next = std::ranges::upper_bound(*_offsetOfSection, index - actions);
    const auto section = static_cast<std::uint64_t>(next - _offsetOfSection->begin() - 1);
    return IndexPath::forRow(index - actions - (*_offsetOfSection)[section], section + (actions > 0 ? 1 : 0));
}

std::uint64_t ZRNSectionedTableViewController::numberOfSectionsInTableView(TableView& table) {
    if (!isSectioning()) return ZRN_OLD_TableViewController::numberOfSectionsInTableView(table);
    // The first that a table asks before it reads its rows anew: by now the library may have changed.
    _offsetOfSection = offsetsOfSections(query()->collectionSections());
    return _offsetOfSection->size() + (countOfActions() > 0 ? 1 : 0);
}

std::uint64_t ZRNSectionedTableViewController::tableViewNumberOfRowsInSection(TableView& table,
                                                                              std::uint64_t section) {
    if (!isSectioning())
        return countOfActions() + ZRN_OLD_TableViewController::tableViewNumberOfRowsInSection(table, section);
    const auto own = collectionSection(section);
    if (!own) return countOfActions();
    const auto sections = query()->collectionSections();
    return *own < sections.size() ? sections[*own].range.length : 0;
}

std::optional<std::string> ZRNSectionedTableViewController::tableViewTitleForHeaderInSection(
    TableView&, std::uint64_t section) {
    const auto own = collectionSection(section);
    if (!isSectioning() || !own) return std::nullopt;
    const auto sections = query()->collectionSections();
    return *own < sections.size() ? std::optional(sections[*own].title) : std::nullopt;
}

std::vector<std::string> ZRNSectionedTableViewController::sectionIndexTitlesForTableView(TableView&) {
    if (!isSectioning()) return {};
    return query()->collectionSectionInfo().sectionIndexTitles();
}

std::uint64_t ZRNSectionedTableViewController::tableViewSectionForSectionIndexTitleAtIndex(
    TableView&, const std::string&, std::uint64_t index) {
    if (!isSectioning()) return 0;
    if (countOfActions() > 0) {
        if (index == 0) return 0;
        --index;
    }
    return query()->collectionSectionInfo().indexOfSectionForSectionIndexTitleAtIndex(index);
}

}  // namespace zornic

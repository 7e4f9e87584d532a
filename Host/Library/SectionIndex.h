#pragma once

#include <vector>

#include "Host/Library/Readers.h"
#include "Host/Library/RowList.h"
#include "Platform/Media/MediaQueryResult.h"

namespace helmo {

/** The sections of a list with their titles, as stored with the keys that they belong to. */
class SectionIndex {
public:
    SectionIndex(Readers& readers, const std::vector<RowList::Section>& sections);

    const std::vector<zornic::MediaQuerySection>& sections() const { return _sections; }
    /** The index bar of the list: a letter for each section, so that every letter leads to where it says. */
    zornic::MediaQuerySectionInfo info() const;

private:
    std::vector<zornic::MediaQuerySection> _sections;
};

}  // namespace helmo

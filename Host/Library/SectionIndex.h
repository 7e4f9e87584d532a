#pragma once

#include <vector>

#include "Host/Library/Readers.h"
#include "Host/Library/RowList.h"
#include "Platform/Media/MediaQueryResult.h"

namespace helmo {

/** Titles of sections, as stored with the keys that they belong to. */
class SectionIndex {
public:
    static SectionIndex read(Readers& readers);

    /** The sections of a list with their titles. */
    std::vector<zornic::MediaQuerySection> sections(const std::vector<RowList::Section>& sections) const;
    /** The index bar of a list: a letter for each section, so that every letter leads to where it says. */
    zornic::MediaQuerySectionInfo info(const std::vector<RowList::Section>& sections) const;

private:
    struct Title {
        std::string key;
        std::string text;
    };
    const Title* titleOf(const std::string& key) const;
    /** In order of their keys. */
    std::vector<Title> _titles;
};

}  // namespace helmo

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace helmo {

/** Where a title stands in the index bar: the letters of each script one after the other (A to Z with what
   the driver's language has beside it, Greek, Cyrillic, kana rows, Hangul initials ...), then one place for
   Chinese characters that nobody says how to read, and '#' behind all of them for digits and whatever else.
   Immutable; any thread. */
class IndexTitles {
public:
    struct Title {
        /** Two bytes that sort as the titles do. */
        std::string section;
        /** Titles of one script share it. 0: Latin, which every index bar shows; -1: '#'. */
        int script;
        std::string text;
    };

    /** `language`: the driver's, as "de" or "pt-BR". */
    explicit IndexTitles(const std::string& language = "en");
    ~IndexTitles();
    /** The section (two bytes) under which `text` stands. '#' for an empty text. */
    std::string sectionOf(const std::string& text) const;
    const std::vector<Title>& titles() const { return _titles; }
    static std::string otherSection() { return "\xff\xfe"; }

private:
    struct Buckets;
    std::unique_ptr<Buckets> _buckets;
    std::vector<Title> _titles;
};

}  // namespace helmo

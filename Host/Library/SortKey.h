#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Host/Library/IndexTitles.h"

namespace helmo {

/** Makes the keys by which lists are sorted: bytes that compare as the titles do. First the section (two
   bytes), then whether there is a text at all, then the collation of the driver's language without articles,
   with case and accents second, punctuation ignored and numbers by value. Immutable; any thread. */
class SortKey {
public:
    /** `language`: the driver's, as "de" or "pt-BR". */
    explicit SortKey(std::string language = "en");
    ~SortKey();

    /** The key of a name; `sortName`, when not empty, is what it is to be sorted as, as it stands. */
    std::string make(std::string_view name, std::string_view sortName = {}) const;
    /** What keys were made with; keys of another stamp don't compare with these. */
    const std::string& stamp() const { return _stamp; }
    const IndexTitles& indexTitles() const { return _titles; }

    /** Text for telling names apart: names that differ in case only give the same. */
    static std::string folded(std::string_view name);

private:
    struct Collation;
    const std::string _language;
    IndexTitles _titles;
    std::unique_ptr<Collation> _collation;
    std::string _stamp;
};

}  // namespace helmo

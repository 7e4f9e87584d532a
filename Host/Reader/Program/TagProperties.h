#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <tpropertymap.h>
#include <utility>
#include <vector>

namespace helmo {

/** Reads a file's properties by name, texts made fit to store, and notes what was wrong with them. The map
   outlives it. */
class TagProperties {
public:
    explicit TagProperties(const TagLib::PropertyMap& map);

    /** The first value; empty when there is none. */
    std::string first(std::string_view name);
    /** Several values, as of two artists, in one text. */
    std::string all(std::string_view name);
    /** A number and, behind a slash, the one of them all. */
    std::pair<int, int> numbers(std::string_view name);
    /** The number under the first of several names that has one; 0 without one. */
    int number(std::initializer_list<const char*> names);
    bool isSet(std::string_view name);
    /** Programs put a word of their own before some names. */
    bool isSetWithAnyPrefix(std::string_view ending);
    void note(const std::string& remark);
    const std::string& remarks() const { return _remarks; }
    /** Whether a text that was asked for is there, but empty. */
    bool hasEmpty() const { return _hasEmpty; }

private:
    const TagLib::StringList* valuesOf(std::string_view name) const;
    std::string clean(std::string_view name, const TagLib::String& value);

    std::vector<std::pair<std::string, const TagLib::StringList*>> _values;
    std::string _remarks;
    bool _hasEmpty = false;
};

}  // namespace helmo

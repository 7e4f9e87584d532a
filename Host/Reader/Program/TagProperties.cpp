#include "Host/Reader/Program/TagProperties.h"

#include <algorithm>
#include <cctype>

#include "Host/Library/TagText.h"

namespace helmo {

namespace {

/** Ends of lines and tabs are common, and no harm. */
bool isControl(char byte) {
    return (byte >= 0 && byte < ' ' && !std::isspace(static_cast<unsigned char>(byte))) || byte == 0x7F;
}

}  // namespace

TagProperties::TagProperties(const TagLib::PropertyMap& map) {
    // Its own look-up copies the name and makes capitals of it, each time.
    for (const auto& [name, values] : map)
        if (!values.isEmpty()) _values.emplace_back(name.to8Bit(true), &values);
}

std::string TagProperties::first(std::string_view name) {
    const auto* values = valuesOf(name);
    return values ? clean(name, values->front()) : std::string();
}

std::string TagProperties::all(std::string_view name) {
    const auto* values = valuesOf(name);
    if (!values) return {};
    return clean(name, values->size() == 1 ? values->front() : values->toString(", "));
}

std::pair<int, int> TagProperties::numbers(std::string_view name) {
    const std::string text = first(name);
    const int number = firstNumber(text);
    if (number == 0 && !text.empty() && text.find_first_not_of("0 /") != std::string::npos)
        note(std::string(name) + " is no number");
    return {number, numberBehindSlash(text)};
}

int TagProperties::number(std::initializer_list<const char*> names) {
    for (const char* name : names)
        if (const int number = numbers(name).first) return number;
    return 0;
}

bool TagProperties::isSet(std::string_view name) {
    const std::string value = first(name);
    return firstNumber(value) == 1 || value == "true" || value == "True" || value == "yes" || value == "Yes";
}

bool TagProperties::isSetWithAnyPrefix(std::string_view ending) {
    return std::ranges::any_of(
        _values, [&](const auto& value) { return value.first.ends_with(ending) && isSet(value.first); });
}

void TagProperties::note(const std::string& remark) { _remarks += (_remarks.empty() ? "" : "; ") + remark; }

const TagLib::StringList* TagProperties::valuesOf(std::string_view name) const {
    const auto found =
        std::ranges::find(_values, name, [](const auto& value) -> std::string_view { return value.first; });
    return found == _values.end() ? nullptr : found->second;
}

std::string TagProperties::clean(std::string_view name, const TagLib::String& value) {
    constexpr unsigned longest = 1024;
    if (value.isEmpty()) _hasEmpty = true;
    const bool isTooLong = value.size() > longest;
    if (isTooLong) note(std::string(name) + " is cut to 1024 characters");
    const std::string text = (isTooLong ? value.substr(0, longest) : value).to8Bit(true);
    if (text.empty() && !value.isEmpty()) note(std::string(name) + " is not in the encoding that it names");
    if (std::ranges::any_of(text, isControl)) note(std::string(name) + " holds control characters");
    return cleanTagText(text);
}

}  // namespace helmo

#include "Host/Settings/SettingsText.h"

#include <algorithm>
#include <optional>
#include <sstream>

#include <toml++/toml.h>

namespace helmo {

namespace {

std::optional<toml::table> parsed(const std::string& text) {
    try {
        return toml::parse(text);
    } catch (const toml::parse_error&) {
        return std::nullopt;
    }
}

/** Byte at which a line and column, both from 1 and the column in characters, lie in `text`. */
std::size_t byteAt(const std::string& text, toml::source_position position) {
    std::size_t at = 0;
    for (auto line = position.line; line > 1 && at < text.size(); --line)
        at = std::min(text.find('\n', at), text.size() - 1) + 1;
    for (auto column = position.column; column > 1 && at < text.size(); --column) do
            ++at;
        while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80);
    return at;
}

/** Byte behind the line of the last setting at the top level: where another belongs. */
std::size_t endOfTopLevel(const std::string& text, const toml::table& table) {
    toml::source_index last = 0;
    for (const auto& [name, node] : table)
        if (const auto* inner = node.as_table(); !node.is_array_of_tables() && (!inner || inner->is_inline()))
            last = std::max(last, node.source().end.line);
    return last == 0 ? 0 : byteAt(text, {last + 1, 1});
}

/** The change made in the text itself; nullopt where that did not come out right. */
std::optional<std::string> edited(std::string text, const toml::table& table, const std::string& name,
                                  const std::string& value) {
    const auto line = name + " = " + value;
    if (const auto* node = table.get(name)) {
        const auto begin = byteAt(text, node->source().begin);
        text.replace(begin, byteAt(text, node->source().end) - begin, value);
    } else {
        const auto end = endOfTopLevel(text, table);
        const bool isOpen = end > 0 && text[end - 1] != '\n';
        text.insert(end, (isOpen ? "\n" : "") + line + "\n");
    }
    auto expected = table;
    const auto change = parsed(line);
    if (!change) return std::nullopt;
    expected.insert_or_assign(name, *change->get(name));
    const auto result = parsed(text);
    return result && *result == expected ? std::optional(text) : std::nullopt;
}

/** The change made in a text that is written anew: the comments go, the settings stay. Nullopt where the TOML
   library can't write what it read, as a name with an apostrophe. */
std::optional<std::string> rewritten(toml::table table, const std::string& name, const std::string& value) {
    const auto change = parsed(name + " = " + value);
    if (!change) return std::nullopt;
    table.insert_or_assign(name, *change->get(name));
    std::ostringstream whole;
    whole << table << '\n';
    auto text = whole.str();
    const auto result = parsed(text);
    return result && *result == table ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace

bool isWholeSettingsText(const std::string& text) { return parsed(text).has_value(); }

std::optional<std::string> withSettings(std::string text, const WrittenSettings& settings) {
    for (const auto& [name, value] : settings) {
        const auto table = parsed(text).value_or(toml::table());
        auto result = edited(text, table, name, value);
        if (!result) result = rewritten(table, name, value);
        if (!result) return std::nullopt;
        text = std::move(*result);
    }
    return text;
}

}  // namespace helmo

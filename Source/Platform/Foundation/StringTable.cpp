#include "Platform/Foundation/StringTable.h"

#include <optional>

#include "Platform/Foundation/TextTools.h"

namespace zornic {

namespace {

using Problems = std::vector<StringTable::Problem>;

/** Reads one table's text from start to end. Nothing is looked at beyond the end: there `next()` is nullopt.
 */
class Reader {
public:
    Reader(std::string_view text, Problems& problems) : _text(text), _problems(problems) {
        if (_text.starts_with("\xEF\xBB\xBF")) _text.remove_prefix(3);
    }

    struct Entry {
        std::size_t line;
        std::string key;
        std::string text;
    };
    /** The next entry that can be read; none at the end. */
    std::optional<Entry> nextEntry() {
        while (skipSpaceAndComments()) {
            if (auto entry = readEntry()) return entry;
            skipLine();
        }
        return std::nullopt;
    }

private:
    std::optional<char> next(std::size_t ahead = 0) const {
        if (ahead >= _text.size() - _at) return std::nullopt;
        return _text[_at + ahead];
    }
    /** Moves on by one byte and counts lines, however they end. */
    void step() {
        const char passed = _text[_at++];
        if (passed == '\n' || (passed == '\r' && next() != '\n')) ++_line;
    }
    bool takes(char wanted) {
        if (next() != wanted) return false;
        step();
        return true;
    }
    bool atLineEnd() const { return !next() || next() == '\n' || next() == '\r'; }
    void skipLine() {
        while (!atLineEnd()) step();
    }
    void report(std::string message) { _problems.push_back({_line, std::move(message)}); }

    /** Returns whether something is left. */
    bool skipSpaceAndComments() {
        while (const auto letter = next()) {
            if (std::string_view(" \t\r\n\v\f").find(*letter) != std::string_view::npos)
                step();
            else if (letter == '/' && next(1) == '/')
                skipLine();
            else if (letter == '/' && next(1) == '*')
                skipComment();
            else
                return true;
        }
        return false;
    }
    /** Within an entry: one that is broken must not swallow the next line. */
    void skipInLine() {
        while (next() == ' ' || next() == '\t') step();
    }
    void skipComment() {
        const auto end = _text.find("*/", _at + 2);
        if (end == std::string_view::npos) report("comment without an end");
        const auto after = end == std::string_view::npos ? _text.size() : end + 2;
        while (_at < after) step();
    }

    std::optional<Entry> readEntry() {
        Entry entry{_line, {}, {}};
        if (next() != '"') return fail("a quoted key was expected");
        auto key = readQuoted();
        if (!key) return std::nullopt;
        skipInLine();
        if (!takes('=')) return fail("\"=\" was expected");
        skipInLine();
        if (next() != '"') return fail("a quoted text was expected");
        auto text = readQuoted();
        if (!text) return std::nullopt;
        skipInLine();
        if (!takes(';')) report("missing semicolon");
        entry.key = std::move(*key);
        entry.text = std::move(*text);
        return entry;
    }
    std::nullopt_t fail(std::string message) {
        report(std::move(message));
        return std::nullopt;
    }

    std::optional<std::string> readQuoted() {
        std::string quoted;
        step();
        while (!atLineEnd()) {
            const char letter = *next();
            if (takes('"')) return checked(std::move(quoted));
            step();
            if (letter != '\\')
                quoted += letter;
            else if (!atLineEnd())
                readEscape(quoted);
        }
        return fail("text without an end");
    }
    std::string checked(std::string quoted) {
        auto valid = validUtf8(quoted);
        if (valid != quoted) report("malformed UTF-8");
        return valid;
    }

    void readEscape(std::string& quoted) {
        const char letter = *next();
        step();
        switch (letter) {
            case 'n':
                quoted += '\n';
                return;
            case 't':
                quoted += '\t';
                return;
            case 'r':
                quoted += '\r';
                return;
            case '"':
            case '\'':
            case '\\':
                quoted += letter;
                return;
            case 'u':
            case 'U':
                if (const auto point = readCodePoint()) {
                    quoted += encodedUtf8(std::u32string(1, *point));
                    return;
                }
                break;
            default:
                break;
        }
        report(std::string("unknown escape \\") + letter);
        quoted += letter;
    }
    /** Four hexadecimal digits, or two such escapes that make a surrogate pair. */
    std::optional<char32_t> readCodePoint() {
        const auto high = hexadecimal(0);
        if (!high) return std::nullopt;
        _at += 4;
        if (*high < 0xD800 || *high > 0xDBFF || next() != '\\' || (next(1) != 'U' && next(1) != 'u'))
            return high;
        const auto low = hexadecimal(2);
        if (!low || *low < 0xDC00 || *low > 0xDFFF) return high;
        _at += 6;
        return 0x10000 + ((*high - 0xD800) << 10) + (*low - 0xDC00);
    }
    std::optional<char32_t> hexadecimal(std::size_t ahead) const {
        char32_t number = 0;
        for (std::size_t digit = 0; digit < 4; ++digit) {
            const char letter = next(ahead + digit).value_or(' ');
            char32_t value = 0;
            if (letter >= '0' && letter <= '9')
                value = static_cast<char32_t>(letter - '0');
            else if (letter >= 'a' && letter <= 'f')
                value = static_cast<char32_t>(letter - 'a' + 10);
            else if (letter >= 'A' && letter <= 'F')
                value = static_cast<char32_t>(letter - 'A' + 10);
            else
                return std::nullopt;
            number = number * 16 + value;
        }
        return number;
    }

    std::string_view _text;
    Problems& _problems;
    std::size_t _at = 0;
    std::size_t _line = 1;
};

}  // namespace

StringTable StringTable::parse(std::string_view text, std::vector<Problem>& problems) {
    StringTable table;
    Reader reader(text, problems);
    while (auto entry = reader.nextEntry()) {
        if (table._texts.contains(entry->key))
            problems.push_back({entry->line, "repeated key \"" + entry->key + "\""});
        table._texts.insert_or_assign(std::move(entry->key), std::move(entry->text));
    }
    return table;
}

const std::string* StringTable::textForKey(std::string_view key) const {
    const auto found = _texts.find(key);
    return found == _texts.end() ? nullptr : &found->second;
}

}  // namespace zornic

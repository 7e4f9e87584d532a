#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zornic {

/** Texts by key, read from a `.strings` file: lines `"key" = "value";` and comments, UTF-8. */
class StringTable {
public:
    struct Problem {
        std::size_t line;
        std::string message;
    };

    /** Reads what can be read; each line that can't is left out and named in `problems`, as is what could be
       read all the same: an entry without its semicolon, an unknown escape (its letter), malformed UTF-8
       (U+FFFD), and a repeated key (the last text wins). An entry stands on one line. */
    static StringTable parse(std::string_view text, std::vector<Problem>& problems);

    /** The text for `key`; none when the table has no such key. */
    const std::string* textForKey(std::string_view key) const;
    std::size_t count() const { return _texts.size(); }

private:
    std::map<std::string, std::string, std::less<>> _texts;
};

}  // namespace zornic

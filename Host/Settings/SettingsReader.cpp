#include "Host/Settings/SettingsReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "Host/Settings/SettingsKeys.h"

namespace helmo {

namespace {

/** The value in a few words. */
std::string described(const toml::node& node) {
    constexpr std::size_t longest = 60;
    if (node.is_table()) return "a table";
    if (node.is_array()) return node.as_array()->empty() ? "an empty list" : "a list";
    const auto result = writtenValue(node);
    return result.size() > longest ? result.substr(0, longest) + "..." : result;
}

/** The first `count` lines of `text`. */
std::string_view firstLines(std::string_view text, std::size_t count) {
    std::size_t end = 0;
    for (; count > 0 && end < text.size(); --count) end = std::min(text.find('\n', end), text.size() - 1) + 1;
    return text.substr(0, end);
}

class Reader {
public:
    Reader(const std::filesystem::path& file, SettingsReading& reading) : _file(file), _reading(reading) {}

    void read(const std::string& text) {
        const auto table = parsed(text);
        for (const auto& [key, node] : table) {
            const std::string name(key.str());
            const auto known = std::ranges::find(settingsKeys(), name, &SettingsKey::name);
            if (known == settingsKeys().end()) {
                report(key.source().begin.line, "\"" + name + "\" is not a setting");
                continue;
            }
            known->read(node, _reading.values, [&](const toml::node& wrong, const std::string& expected) {
                report(wrong.source().begin.line,
                       name + ": found " + described(wrong) + ", expected " + expected);
            });
        }
        std::ranges::stable_sort(_reading.problems, {}, &SettingsProblem::line);
    }

private:
    void report(std::size_t line, std::string message) {
        // Names, values and what the parser quotes may hold anything: a problem is one line.
        std::ranges::replace_if(
            message, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
        _reading.problems.push_back({_file, line, std::move(message)});
    }

    /** The text's table, or that of the lines before its first error. */
    toml::table parsed(std::string_view text) {
        constexpr int attempts = 100;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            try {
                return toml::parse(text);
            } catch (const toml::parse_error& error) {
                const std::size_t line = error.source().begin.line;
                if (attempt == 0)
                    report(line,
                           std::string(error.description()) + "; the settings from here on are not read");
                const auto lines =
                    static_cast<std::size_t>(std::ranges::count(text, '\n')) + !text.ends_with('\n');
                // Something left open is noticed at the text's end only: then line after line goes.
                text = firstLines(text, std::min(line, lines) - 1);
            }
        }
        return {};
    }

    const std::filesystem::path& _file;
    SettingsReading& _reading;
};

}  // namespace

std::string SettingsProblem::text() const {
    return file.string() + (line > 0 ? ":" + std::to_string(line) : "") + ": " + message;
}

std::optional<std::string> settingsTextOf(const std::filesystem::path& file, std::string& problem) {
    std::error_code failure;
    const auto size = std::filesystem::file_size(file, failure);
    if (!failure && size > longestSettingsFile) {
        problem = "it is too long for a settings file";
        return std::nullopt;
    }
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (!failure && stream.good()) return text;
    if (!failure && stream.eof() && !stream.bad()) return text;
    problem = failure ? failure.message() : std::strerror(errno);
    return std::nullopt;
}

SettingsReading readSettingsText(const std::string& text, const std::filesystem::path& file) {
    SettingsReading reading;
    Reader(file, reading).read(text);
    return reading;
}

SettingsReading readSettings(const std::filesystem::path& file) {
    std::error_code failure;
    if (!std::filesystem::exists(file, failure) && !failure) return {};
    std::string problem;
    if (const auto text = settingsTextOf(file, problem)) return readSettingsText(*text, file);
    return {{}, {{file, 0, "can't be read: " + problem}}};
}

}  // namespace helmo

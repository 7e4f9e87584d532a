#include "Host/Settings/SettingsKeys.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <sstream>

#include "Platform/Foundation/TextTools.h"

namespace helmo {

namespace {

constexpr std::array knownTabs = {"radio", "brivomix",   "playlists", "albums",       "artists",
                                  "songs", "audiobooks", "composers", "compilations", "genres"};

std::string writtenText(const std::string& text) {
    return writtenValue(toml::value<std::string>(zornic::validUtf8(text)));
}

template <class List>
std::string writtenList(const List& list) {
    std::vector<std::string> texts;
    std::ranges::transform(list, std::back_inserter(texts), writtenText);
    return std::string("[").append(zornic::joined(texts, ", ")).append("]");
}

std::string writtenTruth(bool truth) { return truth ? "true" : "false"; }

template <bool SettingsValues::*Member>
void readTruth(const toml::node& node, SettingsValues& values, const WrongSetting& wrong) {
    if (const auto* truth = node.as_boolean())
        values.*Member = truth->get();
    else
        wrong(node, "true or false");
}

template <int SettingsValues::*Member, int Least, int Most>
void readNumber(const toml::node& node, SettingsValues& values, const WrongSetting& wrong) {
    const auto* number = node.as_integer();
    if (number && number->get() >= Least && number->get() <= Most)
        values.*Member = static_cast<int>(number->get());
    else
        wrong(node, "a whole number from " + std::to_string(Least) + " to " + std::to_string(Most));
}

/** Calls `take` with each text of a list; it answers whether the text is right. */
template <class Take>
void readList(const toml::node& node, const WrongSetting& wrong, const std::string& expected, Take take) {
    const auto* list = node.as_array();
    if (!list) return wrong(node, "a list of texts");
    for (const auto& element : *list)
        if (const auto* text = element.as_string(); !text || !take(text->get())) wrong(element, expected);
}

void readMusicFolders(const toml::node& node, SettingsValues& values, const WrongSetting& wrong) {
    if (node.is_array()) values.musicFolders.clear();
    readList(node, wrong, "the absolute path of a folder", [&](const std::string& text) {
        std::filesystem::path folder(text);
        const char* home = std::getenv("HOME");
        if (home && (text == "~" || text.starts_with("~/"))) folder = home + text.substr(1);
        if (folder.is_absolute()) values.musicFolders.push_back(folder);
        return folder.is_absolute();
    });
}

void readTabs(const toml::node& node, SettingsValues& values, const WrongSetting& wrong) {
    std::vector<std::string> tabs;
    const auto expected = "a tab, once: " + zornic::joined({knownTabs.begin(), knownTabs.end()}, ", ");
    readList(node, wrong, expected, [&](const std::string& text) {
        const bool isRight = std::ranges::count(knownTabs, text) > 0 && std::ranges::count(tabs, text) == 0;
        if (isRight) tabs.push_back(text);
        return isRight;
    });
    if (!tabs.empty())
        values.tabs = std::move(tabs);
    else if (node.is_array())
        wrong(node, "at least one tab");
}

void readScreen(const toml::node& node, SettingsValues& values, const WrongSetting& wrong) {
    const auto* text = node.as_string();
    const auto screen = text ? ScreenSize::fromText(text->get()) : std::nullopt;
    if (screen)
        values.screen = *screen;
    else
        wrong(node, ScreenSize::form);
}

void readMode(const toml::node& node, SettingsValues& values, const WrongSetting& wrong) {
    std::optional<InteractionMode> mode;
    if (const auto* text = node.as_string()) mode = interactionModeFromText(text->get());
    if (const auto* number = node.as_integer()) mode = interactionModeFromText(std::to_string(number->get()));
    if (mode)
        values.mode = *mode;
    else
        wrong(node, "\"touch\", \"lowtouch\" or \"knob\"");
}

void readLanguage(const toml::node& node, SettingsValues& values, const WrongSetting& wrong) {
    const auto* text = node.as_string();
    const auto isPart = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_';
    };
    if (text && std::ranges::all_of(text->get(), isPart))
        values.language = text->get();
    else
        wrong(node, "a language such as \"de\" or \"pt-BR\"");
}

constexpr SettingsKey keys[] = {
    {"music_folders", readMusicFolders,
     [](const SettingsValues& values) { return writtenList(values.musicFolders); }},
    {"tabs", readTabs, [](const SettingsValues& values) { return writtenList(values.tabs); }},
    {"sort_by_artist", readTruth<&SettingsValues::sortByArtist>,
     [](const SettingsValues& values) { return writtenTruth(values.sortByArtist); }},
    {"group_by_album_artist", readTruth<&SettingsValues::groupByAlbumArtist>,
     [](const SettingsValues& values) { return writtenTruth(values.groupByAlbumArtist); }},
    {"brivo", readTruth<&SettingsValues::brivo>,
     [](const SettingsValues& values) { return writtenTruth(values.brivo); }},
    {"shuffle", readNumber<&SettingsValues::shuffleType, 0, 1>,
     [](const SettingsValues& values) { return std::to_string(values.shuffleType); }},
    {"repeat", readNumber<&SettingsValues::repeatType, 0, 2>,
     [](const SettingsValues& values) { return std::to_string(values.repeatType); }},
    {"screen", readScreen, [](const SettingsValues& values) { return writtenText(values.screen.text()); }},
    {"fullscreen", readTruth<&SettingsValues::fullscreen>,
     [](const SettingsValues& values) { return writtenTruth(values.fullscreen); }},
    {"mode", readMode, [](const SettingsValues& values) { return writtenText(textOf(values.mode)); }},
    {"cover_cache_mb", readNumber<&SettingsValues::coverCacheMegabytes, 1, 1024>,
     [](const SettingsValues& values) { return std::to_string(values.coverCacheMegabytes); }},
    {"language", readLanguage, [](const SettingsValues& values) { return writtenText(values.language); }},
};

}  // namespace

std::string writtenValue(const toml::node& node) {
    using enum toml::format_flags;
    std::ostringstream text;
    text << toml::toml_formatter(
        node, toml::toml_formatter::default_flags & ~(allow_literal_strings | allow_multi_line_strings));
    return text.str();
}

std::span<const SettingsKey> settingsKeys() { return keys; }

}  // namespace helmo

#include <string>

#include "Fuzz/Require.h"
#include "Host/Settings/SettingsKeys.h"
#include "Host/Settings/SettingsReader.h"
#include "Host/Settings/SettingsText.h"

namespace {

const std::filesystem::path file = "/home/driver/settings.toml";

void requireThatWrittenSettingsReadTheSame(const helmo::SettingsValues& values) {
    std::string text;
    for (const auto& key : helmo::settingsKeys())
        text += std::string(key.name) + " = " + key.text(values) + "\n";
    const auto reading = helmo::readSettingsText(text, file);
    require(reading.problems.empty(), "what was written is right");
    require(reading.values == values, "what was written reads the same");
}

void requireThatAChangeChangesNothingElse(const std::string& text, helmo::SettingsValues values) {
    values.sortByArtist = !values.sortByArtist;
    values.musicFolders.emplace_back("/srv/\"music\" of\nmine");
    helmo::WrittenSettings changes;
    for (const auto& key : helmo::settingsKeys())
        for (const char* changed : {"sort_by_artist", "music_folders"})
            if (key.name == std::string(changed)) changes[key.name] = key.text(values);
    const auto changedText = helmo::withSettings(text, changes);
    if (!changedText) return;  // such a file is set aside
    require(helmo::isWholeSettingsText(*changedText), "a changed file is whole");
    require(helmo::readSettingsText(*changedText, file).values == values, "a change changes nothing else");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = textOf(data, size);
    const auto reading = helmo::readSettingsText(text, file);
    for (const auto& problem : reading.problems) require(isOneLine(problem.text()), "a problem is one line");
    requireThatWrittenSettingsReadTheSame(reading.values);
    if (helmo::isWholeSettingsText(text)) requireThatAChangeChangesNothingElse(text, reading.values);
    return 0;
}

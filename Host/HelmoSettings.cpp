#include <algorithm>

#include "Host/HelmoApplication.h"
#include "Utilities/ZRNHelmoScreen.h"

namespace helmo {

using nlohmann::json;

namespace {

/** Takes one change over into `values`; empty, or what is wrong with it. */
std::string takeOver(const std::string& name, const json& value, SettingsValues& values) {
    const auto truth = [&](bool& target) -> std::string {
        if (!value.is_boolean()) return "\"" + name + "\" must be true or false.";
        target = value.get<bool>();
        return "";
    };
    if (name == "sortByArtist") return truth(values.sortByArtist);
    if (name == "groupByAlbumArtist") return truth(values.groupByAlbumArtist);
    if (name == "brivo") return truth(values.brivo);
    if (name == "uiMode") {
        if (!value.is_number_integer() || value < 0 || value > 2) return "\"uiMode\" must be 0, 1 or 2.";
        values.mode = static_cast<InteractionMode>(value.get<int>());
        return "";
    }
    if (name == "tabs") {
        if (!value.is_array() || !std::ranges::all_of(value, [](const json& tab) { return tab.is_string(); }))
            return "\"tabs\" must be a list of short identifiers.";
        values.tabs = value.get<std::vector<std::string>>();
        return "";
    }
    return "There is no setting \"" + name + "\".";
}

}  // namespace

json HelmoApplication::settings() const {
    const SettingsValues& values = _settings->values();
    return {{"sortByArtist", values.sortByArtist},
            {"groupByAlbumArtist", values.groupByAlbumArtist},
            {"brivo", values.brivo},
            {"uiMode", static_cast<int>(zornic::ZRNHelmoUIMode())},
            {"tabs", values.tabs}};
}

std::string HelmoApplication::changeSettings(const json& changes) {
    SettingsValues values = _settings->values();
    for (const auto& [name, value] : changes.items())
        if (std::string problem = takeOver(name, value, values); !problem.empty()) return problem;
    if (changes.contains("uiMode")) applyMode(values.mode);
    applySettings(values);
    return "";
}

void HelmoApplication::applySettings(const SettingsValues& values) {
    const SettingsValues& before = _settings->values();
    const bool tabsDiffer = values.tabs != before.tabs || values.brivo != before.brivo;
    _defaults->setValues(values);
    _mixes->setEnabled(values.brivo);
    if (tabsDiffer) _tabs->postOrderDidChange();
}

}  // namespace helmo

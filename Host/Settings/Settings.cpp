#include "Host/Settings/Settings.h"

#include <utility>

namespace helmo {

Settings::Settings(std::filesystem::path file, SettingsWriter::Log log) : _writer(file, log) {
    auto reading = readSettings(file);
    _values = std::move(reading.values);
    _problems = std::move(reading.problems);
    if (log)
        for (const auto& problem : _problems) log(problem.text());
}

void Settings::setValues(const SettingsValues& values) {
    _writer.write(values, std::exchange(_values, values));
}

}  // namespace helmo

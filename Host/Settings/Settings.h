#pragma once

#include <filesystem>
#include <vector>

#include "Host/Settings/SettingsReader.h"
#include "Host/Settings/SettingsWriter.h"

namespace helmo {

/** What the driver chose, read from a file at the start and written back whenever it changes. Main thread. */
class Settings {
public:
    /** Reads `file`; none is as good as an empty one. Every problem goes to `log`, which is called on any
     * thread. */
    explicit Settings(std::filesystem::path file, SettingsWriter::Log log = {});

    const SettingsValues& values() const { return _values; }
    /** What of the file did not hold. */
    const std::vector<SettingsProblem>& problems() const { return _problems; }
    /** Takes new values over and writes what changed, in the background. */
    void setValues(const SettingsValues& values);
    /** Waits until the file holds what was set. */
    void finishWriting() { _writer.finish(); }

private:
    SettingsValues _values;
    std::vector<SettingsProblem> _problems;
    SettingsWriter _writer;
};

}  // namespace helmo

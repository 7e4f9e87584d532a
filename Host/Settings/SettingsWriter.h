#pragma once

#include <filesystem>
#include <functional>
#include <mutex>
#include <string>

#include "Host/Settings/SettingsText.h"
#include "Host/Settings/SettingsValues.h"
#include "Platform/Foundation/DispatchQueue.h"

namespace helmo {

/** Keeps a settings file up to date in the background. What comes while a write waits joins it; the file is
   replaced as a whole, so the ignition may go off at any moment. Destruction waits for what is unwritten. Any
   thread. */
class SettingsWriter {
public:
    using Log = std::function<void(const std::string&)>;

    /** `log` takes a line about what went wrong, on the writing thread. */
    SettingsWriter(std::filesystem::path file, Log log);

    /** Writes the settings in which `values` differs from `before`; a new file gets all of them. */
    void write(const SettingsValues& values, const SettingsValues& before);
    /** Waits until everything is written. */
    void finish();

private:
    void writePending();
    /** Empty, or why it failed. */
    std::string save(const WrittenSettings& changes, const WrittenSettings& all);

    const std::filesystem::path _file;
    const Log _log;
    std::mutex _mutex;
    WrittenSettings _changes, _all;
    bool _isQueued = false;
    /** Of the last write, so that it is logged once. On the queue. */
    std::string _problem;
    zornic::SerialQueue _queue{"settings", zornic::QueuePriority::Background};
};

}  // namespace helmo

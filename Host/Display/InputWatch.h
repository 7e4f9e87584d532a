#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "Platform/Foundation/Task.h"

namespace helmo {

/** Lets the main thread of a bare display sleep until there is something to do: the input devices are watched
   beside the video driver, which reads them itself but can't be waited for. */
class InputWatch {
public:
    /** `folder`: where the system keeps its input devices, as files named event0, event1, … */
    explicit InputWatch(std::filesystem::path folder = "/dev/input");
    ~InputWatch();
    InputWatch(const InputWatch&) = delete;
    InputWatch& operator=(const InputWatch&) = delete;

    /** Whether it hears of the devices, those that come later included; else they have to be asked. */
    bool hearsDevices() const { return _isWatching; }
    /** Sleeps until a device has input, one comes or goes, somebody wakes it, a signal arrives or `limit` has
       passed. A wake-up since the last sleep ends this one at once. */
    void wait(std::optional<zornic::Duration> limit);
    /** Any thread. */
    void wake();

private:
    void openDevices();
    void closeDevices();

    const std::filesystem::path _folder;
    const int _wakeUps, _changes;
    bool _isWatching = false;
    std::vector<int> _devices;
};

}  // namespace helmo

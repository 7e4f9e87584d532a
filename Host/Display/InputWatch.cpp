#include "Host/Display/InputWatch.h"

#include <array>
#include <cstdint>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <time.h>
#include <unistd.h>

namespace helmo {

namespace {

/** Reads until nothing is left; the video driver has its own copy. */
void drain(int descriptor) {
    std::array<char, 4096> ignored;
    while (read(descriptor, ignored.data(), ignored.size()) > 0) {
    }
}

timespec inTimespec(zornic::Duration duration) {
    using namespace std::chrono;
    const auto whole = duration_cast<seconds>(duration);
    return {static_cast<time_t>(whole.count()),
            static_cast<long>(duration_cast<nanoseconds>(duration - whole).count())};
}

}  // namespace

InputWatch::InputWatch(std::filesystem::path folder)
    : _folder(std::move(folder)),
      _wakeUps(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      _changes(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    // A device may be read only once its rights are set, which comes after it was made.
    constexpr std::uint32_t changes = IN_CREATE | IN_ATTRIB | IN_DELETE;
    _isWatching = _wakeUps >= 0 && inotify_add_watch(_changes, _folder.c_str(), changes) >= 0;
    openDevices();
}

InputWatch::~InputWatch() {
    closeDevices();
    close(_changes);
    close(_wakeUps);
}

void InputWatch::openDevices() {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(_folder, error)) {
        if (!entry.path().filename().string().starts_with("event")) continue;
        const int device = open(entry.path().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (device >= 0) _devices.push_back(device);
    }
}

void InputWatch::closeDevices() {
    for (const int device : _devices) close(device);
    _devices.clear();
}

void InputWatch::wait(std::optional<zornic::Duration> limit) {
    std::vector<pollfd> sources{{_wakeUps, POLLIN, 0}, {_changes, POLLIN, 0}};
    for (const int device : _devices) sources.push_back({device, POLLIN, 0});
    const timespec time = inTimespec(limit.value_or(zornic::Duration::zero()));
    if (ppoll(sources.data(), sources.size(), limit ? &time : nullptr, nullptr) <= 0) return;
    bool haveChanged = sources[1].revents != 0;
    for (const auto& source : sources) {
        if (source.revents & POLLIN) drain(source.fd);
        // A device that went away would end every further sleep.
        haveChanged = haveChanged || (source.revents & (POLLERR | POLLHUP | POLLNVAL)) != 0;
    }
    if (!haveChanged) return;
    closeDevices();
    openDevices();
}

void InputWatch::wake() {
    const std::uint64_t one = 1;
    // It can fail only when it is awake already.
    [[maybe_unused]] const auto written = write(_wakeUps, &one, sizeof one);
}

}  // namespace helmo

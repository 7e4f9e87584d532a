#include "Host/Library/LibraryWatch.h"

#include <array>
#include <poll.h>
#include <sys/eventfd.h>

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/RunLoop.h"

namespace helmo {

using zornic::RunLoop;
using zornic::toDuration;

namespace {

/** While files are copied the main thread is told this often at most. */
constexpr int tellingInterval = 100;  // milliseconds

}  // namespace

LibraryWatch::LibraryWatch(std::shared_ptr<FolderWatch> folders, std::function<void(const ScanScope&)> scan,
                           Way way)
    : _folders(std::move(folders)),
      _scan(std::move(scan)),
      _way(way),
      _mounts(_folders->roots()),
      _end(::eventfd(0, EFD_CLOEXEC)) {}

LibraryWatch::~LibraryWatch() {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(_end.number(), &one, sizeof one);
    if (_thread.joinable()) _thread.join();
}

void LibraryWatch::didMake() {
    Object::didMake();
    _looking = RunLoop::main().every(toDuration(lookingInterval), [this] {
        if (!_folders->isComplete()) _scan(ScanScope::everything());
    });
    if (_way == Way::Waits && _end)
        _thread = std::thread([this, weakSelf = zornic::weak(this)] { wait(weakSelf); });
    else
        _asking = RunLoop::main().every(toDuration(askingInterval), [this] {
            if (listen(0)) noteChanges();
        });
}

bool LibraryWatch::listen(int milliseconds) {
    std::array<pollfd, 3> sources{{{_folders->descriptor(), POLLIN, 0},
                                   {_mounts.descriptor(), POLLPRI, 0},
                                   {_end.number(), POLLIN, 0}}};
    if (::poll(sources.data(), sources.size(), milliseconds) <= 0) return false;
    bool hasChanges = sources[0].revents != 0 && _folders->drain();
    if (sources[1].revents != 0) {
        const ScanScope changes = _mounts.takeChanges();
        hasChanges = hasChanges || !changes.isEmpty();
        _folders->addChanges(changes);
    }
    return hasChanges;
}

bool LibraryWatch::isEnding(int milliseconds) const {
    pollfd end{_end.number(), POLLIN, 0};
    return ::poll(&end, 1, milliseconds) > 0;
}

void LibraryWatch::wait(const std::weak_ptr<LibraryWatch>& weakSelf) {
    while (!isEnding(0)) {
        if (!listen(-1)) continue;
        if (!_isNoted.exchange(true))
            zornic::mainQueue().async([weakSelf] {
                if (const auto self = weakSelf.lock()) self->noteChanges();
            });
        if (isEnding(tellingInterval)) return;
    }
}

void LibraryWatch::noteChanges() {
    _isNoted = false;
    _quiet = RunLoop::main().after(toDuration(quietTime), [this] { scanChanges(); });
    if (!_latest) _latest = RunLoop::main().after(toDuration(longestDelay), [this] { scanChanges(); });
}

void LibraryWatch::scanChanges() {
    _quiet.reset();
    _latest.reset();
    const ScanScope changes = _folders->takeChanges();
    if (!changes.isEmpty()) _scan(changes);
}

}  // namespace helmo

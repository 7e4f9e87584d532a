#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

#include "Host/Library/FolderWatch.h"
#include "Host/Library/MountWatch.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Foundation/Task.h"

namespace helmo {

/** Has the library follow what changes on disk by itself: a second after the last change, and every five
   seconds while there are more. Main thread. */
class LibraryWatch : public zornic::Object {
public:
    static constexpr zornic::Seconds quietTime{1}, longestDelay{5};
    /** How often one looks through everything where not every folder can be watched. */
    static constexpr zornic::Seconds lookingInterval{300};
    /** How often one asks for changes instead of waiting for them. */
    static constexpr zornic::Seconds askingInterval{0.5};

    enum class Way {
        /** A thread waits; nothing is done while nothing happens. */
        Waits,
        /** The run loop's time decides, so that with one that stands still a change is seen at the same
           moment each time. */
        Asks
    };
    /** `scan`: looks through folders again. */
    LibraryWatch(std::shared_ptr<FolderWatch> folders, std::function<void(const ScanScope&)> scan, Way way);
    ~LibraryWatch() override;
    void didMake() override;

private:
    /** Waits until something happens, for so many milliseconds at most, or without limit for -1; whether
       there is something to be scanned. */
    bool listen(int milliseconds);
    void wait(const std::weak_ptr<LibraryWatch>& weakSelf);
    bool isEnding(int milliseconds) const;
    void noteChanges();
    void scanChanges();

    const std::shared_ptr<FolderWatch> _folders;
    const std::function<void(const ScanScope&)> _scan;
    const Way _way;
    MountWatch _mounts;
    zornic::Token _quiet, _latest, _looking, _asking;
    /** Readable at the end. */
    const Descriptor _end;
    std::atomic<bool> _isNoted = false;
    std::thread _thread;
};

}  // namespace helmo

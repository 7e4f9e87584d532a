#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "Host/HostNotices.h"
#include "Host/Library/SqliteMediaLibrary.h"

namespace helmo {

/** Tells the driver what keeps music from being found or stored, and tries again. Main thread. */
class LibraryNotice : public zornic::Object {
public:
    /** How long until what could not be stored is tried again. */
    static constexpr zornic::Seconds retryInterval{300};

    /** `rescan` looks through `folders` again. */
    LibraryNotice(std::shared_ptr<SqliteMediaLibrary> library, std::vector<std::filesystem::path> folders,
                  std::shared_ptr<HostNotices> notices, std::function<void()> rescan);
    ~LibraryNotice() override;
    void didMake() override;

private:
    void note(StorageTrouble trouble);
    void retry();
    void noteUnreachable(const std::vector<std::filesystem::path>& folders);

    const std::shared_ptr<SqliteMediaLibrary> _library;
    const std::vector<std::filesystem::path> _folders;
    const std::shared_ptr<HostNotices> _notices;
    const std::function<void()> _rescan;
    zornic::Token _retry;
};

}  // namespace helmo

#pragma once

#include <cstdint>

#include "Platform/Foundation/Object.h"

namespace zornic {

/** Posted by the defaults, as sender, on any thread, when a setting has changed. */
inline constexpr const char* ApplicationDefaultsDidChangeNotification =
    "ApplicationDefaultsDidChangeNotification";

/** The host's settings that the display follows. The host implements it. Main thread. */
class ApplicationDefaults : public Object {
public:
    virtual bool isSortByArtistEnabled() const = 0;
    virtual bool isGroupByAlbumArtistEnabled() const = 0;
    /** Remembers what the driver chose on the display. */
    virtual void setShuffleType(std::int64_t type) = 0;
    virtual void setRepeatType(std::int64_t type) = 0;
};

}  // namespace zornic

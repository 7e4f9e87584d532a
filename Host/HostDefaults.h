#pragma once

#include "Host/Settings/Settings.h"
#include "Platform/LibraryKit/ApplicationDefaults.h"

namespace helmo {

/** The settings as the library reads them; what the driver chooses on the display is written back. Main
 * thread. */
class HostDefaults final : public zornic::ApplicationDefaults {
public:
    /** `settings` outlives it. */
    explicit HostDefaults(Settings& settings) : _settings(settings) {}

    bool isSortByArtistEnabled() const override { return _settings.values().sortByArtist; }
    bool isGroupByAlbumArtistEnabled() const override { return _settings.values().groupByAlbumArtist; }
    void setShuffleType(std::int64_t type) override;
    void setRepeatType(std::int64_t type) override;

    /** Takes new settings over and tells the lists when what they follow has changed. */
    void setValues(const SettingsValues& values);

private:
    Settings& _settings;
};

}  // namespace helmo

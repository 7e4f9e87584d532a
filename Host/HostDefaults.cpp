#include "Host/HostDefaults.h"

#include "Platform/Foundation/NotificationCenter.h"

namespace helmo {

void HostDefaults::setShuffleType(std::int64_t type) {
    SettingsValues values = _settings.values();
    values.shuffleType = static_cast<int>(type);
    setValues(values);
}

void HostDefaults::setRepeatType(std::int64_t type) {
    SettingsValues values = _settings.values();
    values.repeatType = static_cast<int>(type);
    setValues(values);
}

void HostDefaults::setValues(const SettingsValues& values) {
    const SettingsValues before = _settings.values();
    if (values == before) return;
    _settings.setValues(values);
    if (values.sortByArtist != before.sortByArtist || values.groupByAlbumArtist != before.groupByAlbumArtist)
        zornic::NotificationCenter::defaultCenter().post(zornic::ApplicationDefaultsDidChangeNotification,
                                                         shared_from_this());
}

}  // namespace helmo

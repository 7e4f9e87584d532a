#pragma once

#include "Host/Settings/Settings.h"
#include "Platform/Toolkit/TabBarController.h"

namespace helmo {

/** The tabs as the driver arranged them in the settings, without the mixes where Brivo is off; shows nothing
 * itself. Main thread. */
class HostTabBarController final : public zornic::TabBarController {
public:
    /** `settings` outlives it. */
    explicit HostTabBarController(const Settings& settings) : _settings(settings) {}
    /** The short identifiers, in order, for "visibleViewControllerIdentifiers". */
    std::optional<std::vector<std::string>> textsForKey(const std::string& key) const override;
    /** The tabs are others now. */
    void postOrderDidChange();

private:
    const Settings& _settings;
};

}  // namespace helmo

#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Foundation/Object.h"
#include "Platform/Foundation/StringTable.h"

namespace zornic {

/** A folder of resources: `Images/NAME.svg` and `LANGUAGE/TABLE.strings`. Bundles are known by a
   reverse-domain identifier. Thread-safe. */
class Bundle : public Object {
public:
    Bundle(std::string identifier, std::filesystem::path folder);

    /** Makes `bundle` known under its identifier, replacing an older one. */
    static void registerBundle(const std::shared_ptr<Bundle>& bundle);
    /** The bundle registered under `identifier`; none when there is none. */
    static std::shared_ptr<Bundle> bundleWithIdentifier(const std::string& identifier);
    /** The platform's own bundle, with the texts of tables "Platform"; none before the host has registered
     * one. */
    static std::shared_ptr<Bundle> platformBundle();
    static constexpr const char* platformIdentifier = "org.zornicui.platform";
    /** Languages in the driver's order ("de-AT", "fr"); a region's language is followed by the language
       itself, and English is always asked last. Set by the host at start. */
    static void setPreferredLanguages(std::vector<std::string> languages);

    const std::string& identifier() const { return _identifier; }
    const std::filesystem::path& folder() const { return _folder; }
    /** The text for `key` in `table`, in the first preferred language that has it, else `fallback`. */
    std::string localizedString(std::string_view key, std::string_view fallback,
                                const std::string& table) const;
    /** File of the image called `name`; none when there is none. A name is no path: one with "/" or ".." has
     * none. */
    std::optional<std::filesystem::path> pathForImage(const std::string& name) const;

private:
    /** A table, read when it is first asked for; what is wrong with its file is said once, on standard error.
     */
    const StringTable& table(const std::string& language, const std::string& name) const;

    const std::string _identifier;
    const std::filesystem::path _folder;
    mutable std::mutex _mutex;
    mutable std::map<std::string, StringTable> _tables;
};

}  // namespace zornic

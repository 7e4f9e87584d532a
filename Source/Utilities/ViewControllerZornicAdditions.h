#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Platform/Media/MediaQuery.h"
#include "Utilities/ZRNViewControllerIdentifiers.h"

namespace zornic {

/** Makes the library's screens known to the kit's registry. Once a process; main thread, as all of these. */
void ZRN_registerViewControllerIdentifiers();

/** The display's identifier for one of the host's tab names; nullopt for a tab that the display does not
 * show. */
std::optional<std::string> ZRN_helmoIdentifierForIdentifier(const std::string& identifier);

/** A new query for one of the host's tab names, ordered and grouped by the shared defaults of this moment;
   none for a name that has no query. */
std::shared_ptr<MediaQuery> ZRN_queryForIdentifier(const std::string& identifier);

/** A copy in which all media-type filters are one, with the bits that all of them have; music alone is
   widened to music videos. A copy as it is when there is no such filter. */
std::shared_ptr<MediaQuery> ZRN_sanitizedQueryForQuery(const MediaQuery& query);

}  // namespace zornic

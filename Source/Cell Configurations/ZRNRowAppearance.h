#pragma once

#include "Platform/LibraryKit/BaseCellConfiguration.h"

namespace zornic {

/** The look of the library's lists: dark rows of 44 points with a hairline under each, from its text on. */
TableAppearance ZRNRowAppearance();

}  // namespace zornic

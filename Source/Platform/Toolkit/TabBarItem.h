#pragma once

#include <string>

#include "Platform/Toolkit/Image.h"

namespace zornic {

/** How a screen shows in a tab bar. A value. */
struct TabBarItem {
    std::string title;
    Image image;
    /** None: the image in the tint colour. */
    Image selectedImage;
    friend bool operator==(const TabBarItem&, const TabBarItem&) = default;
};

}  // namespace zornic

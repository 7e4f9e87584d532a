#pragma once

#include "Platform/Foundation/Task.h"
#include "Platform/Toolkit/Geometry.h"

namespace zornic {

/** A finger's present place. A value. */
struct Touch {
    /** In window coordinates, points. */
    Point location;
    TimePoint time;
};

}  // namespace zornic

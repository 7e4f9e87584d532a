#pragma once

#include <memory>
#include <string>

#include "Platform/Toolkit/Image.h"
#include "Platform/Toolkit/Screen.h"

namespace zornic {

/** How the driver works the car's display. */
enum ZRNHelmoUIModeValue : std::int64_t {
    ZRNHelmoUIModeHiTouch = 0,
    ZRNHelmoUIModeLowTouch = 1,
    ZRNHelmoUIModeKnob = 2
};

/** The car's screen; none while there is none. Main thread, as all of these. */
std::shared_ptr<Screen> ZRNHelmoScreen();

/** Asked of the car's screen afresh each time: the knob wins over touch; touch is low when its level is not
 * 0. */
ZRNHelmoUIModeValue ZRNHelmoUIMode();

/** The library's image called `name` for the car screen's traits; none when there is no such image. */
Image ZRNHelmoImage(const std::string& name);

/** What stands for a missing cover: style 0 for rows of one line, 1 for two; none for any other style. */
Image ZRNAlbumPlaceholderImageWithStyle(std::int64_t style);

}  // namespace zornic

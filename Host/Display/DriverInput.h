#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "Platform/Toolkit/Geometry.h"

union SDL_Event;

namespace zornic {
class Window;
}

namespace helmo {

enum class MediaKey { PlayPause, Next, Previous, Stop };

/** Makes touches, knob turns and presses for a window out of mouse, touch screen, wheel and keys. One finger
   counts, the first. Main thread. */
class DriverInput {
public:
    /** None: events are dropped. A touch that is under way ends. */
    void setWindow(std::shared_ptr<zornic::Window> window);
    /** In points and pixels a point. */
    void setGeometry(zornic::Size size, double scale);
    /** Whether the event was one of the driver's. */
    bool handle(const SDL_Event& event);
    /** The screen was taken away: the touch doesn't end where it is. */
    void cancelTouch();

    std::function<void(MediaKey)> onMediaKey;

private:
    enum class Pointer { None, Mouse, Finger };
    bool handleMouse(const SDL_Event& event);
    bool handleFinger(const SDL_Event& event);
    bool handleWheel(const SDL_Event& event);
    bool handleKey(const SDL_Event& event);
    void touch(Pointer pointer, zornic::Point location);

    std::shared_ptr<zornic::Window> _window;
    zornic::Size _size;
    double _scale = 1;
    Pointer _pointer = Pointer::None;
    std::int64_t _finger = 0;
};

}  // namespace helmo

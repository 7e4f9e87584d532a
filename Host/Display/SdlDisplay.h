#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Host/Display/DisplaySurface.h"
#include "Host/Display/DriverInput.h"
#include "Host/Display/InputWatch.h"
#include "Platform/Foundation/RunLoop.h"

struct SDL_Window;
struct SDL_Surface;
union SDL_Event;

namespace helmo {

/** Shows a window of the interface on the screen, hands it the driver's touches and keys, and runs the main
   loop. An idle display draws nothing and sleeps until something is due. Main thread. */
class SdlDisplay {
public:
    struct Options {
        zornic::Size size{800, 480};  // points; ignored in full screen
        double scale = 1;             // pixels a point
        bool isFullscreen = false;
        /** SVG; empty or unreadable: none. */
        std::filesystem::path icon{};
    };

    SdlDisplay(zornic::RunLoop& loop, Options options);
    ~SdlDisplay();
    SdlDisplay(const SdlDisplay&) = delete;
    SdlDisplay& operator=(const SdlDisplay&) = delete;

    /** Opens the screen, or, without a desktop, the bare display. Returns why it could not; empty when it
       could. After this, `surface().size()` is the size to lay out for. */
    std::string open();
    DisplaySurface& surface() { return _surface; }
    /** What is shown from now on. Its screen follows the window's size. */
    void show(std::shared_ptr<zornic::Window> window);
    /** Runs the main loop until `quit`. */
    void run();
    /** Ends `run` after the present turn. Any thread. */
    void quit();

    std::function<void(MediaKey)> onMediaKey;
    /** The window was closed, or the system asks to end. Without it, `run` ends. */
    std::function<void()> onQuit;
    /** Once, after something was first shown. */
    std::function<void()> onFirstFrame;

private:
    void handle(const SDL_Event& event);
    void handleWindowEvent(const SDL_Event& event);
    void setIcon();
    SDL_Surface* screenPixels();
    void adoptSize();
    bool wantsFrame() const;
    void drawFrame();
    void present(const std::vector<DisplaySurface::PixelRect>& rects);
    void presentAll();
    void wait(std::optional<zornic::TimePoint> until);
    void wakeUp();

    zornic::RunLoop& _loop;
    const Options _options;
    DisplaySurface _surface;
    DriverInput _input;
    std::shared_ptr<zornic::Window> _shown;
    SDL_Window* _screen = nullptr;
    unsigned _wakeEvent = 0;
    bool _isOpen = false, _canSleep = false, _hasInput = true, _firstFrameShown = false;
    zornic::TimePoint _nextFrame{};
    std::atomic<bool> _quits = false, _wakes = false;
    /** Where the video driver can't be waited for. */
    InputWatch _inputWatch;
};

}  // namespace helmo

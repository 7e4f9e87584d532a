#include "Host/Display/SdlDisplay.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string_view>

#include <SDL.h>

#include "Host/Display/VectorSource.h"
#include "Platform/Toolkit/Window.h"

namespace helmo {

using zornic::TimePoint;

namespace {

constexpr auto frameInterval = std::chrono::microseconds(16667);
/** How often input is looked at where nothing can wake the program. */
constexpr auto pollInterval = std::chrono::milliseconds(8);

bool driverIs(std::string_view name) {
    const char* const driver = SDL_GetCurrentVideoDriver();
    return driver && driver == name;
}

/** Desktops can be waited for; beside a bare display its input devices are watched. */
bool driverCanSleep() { return driverIs("x11") || driverIs("wayland"); }

using PixelBuffer = std::unique_ptr<SDL_Surface, decltype(&SDL_FreeSurface)>;

/** The surface's pixels as SDL sees them; not copied. */
PixelBuffer wrapped(const Surface& surface, Uint32 format) {
    return {SDL_CreateRGBSurfaceWithFormatFrom(surface.pixels(), surface.width(), surface.height(), 32,
                                               static_cast<int>(surface.stride()), format),
            SDL_FreeSurface};
}

}  // namespace

SdlDisplay::SdlDisplay(zornic::RunLoop& loop, Options options)
    : _loop(loop), _options(std::move(options)), _surface(_options.size, _options.scale) {
    _input.onMediaKey = [this](MediaKey key) {
        if (onMediaKey) onMediaKey(key);
    };
}

SdlDisplay::~SdlDisplay() {
    _loop.setWakeUp(nullptr);
    if (_screen) SDL_DestroyWindow(_screen);
    if (_isOpen) SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

std::string SdlDisplay::open() {
    SDL_SetHint(SDL_HINT_APP_NAME, "helmo");
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0)
        return std::string("No display can be used: ") + SDL_GetError() + ".";
    _isOpen = true;
    if (driverIs("offscreen") && !SDL_GetHint(SDL_HINT_VIDEODRIVER))
        return "No display can be used: there is neither a desktop nor a screen to draw on.";
    _canSleep = driverCanSleep();
    _hasInput = !driverIs("dummy") && !driverIs("offscreen");
    // X11 takes the drawn rectangles as they are; by way of a texture the whole window goes over each frame.
    if (driverIs("x11")) SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    const int width = _surface.pixels().width(), height = _surface.pixels().height();
    const Uint32 flags = _options.isFullscreen ? SDL_WINDOW_FULLSCREEN_DESKTOP : SDL_WINDOW_RESIZABLE;
    _screen = SDL_CreateWindow("helmo", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width, height, flags);
    if (!_screen) return std::string("No window can be opened: ") + SDL_GetError() + ".";
    SDL_SetWindowMinimumSize(_screen, 160, 120);
    if (_options.isFullscreen)
        SDL_ShowCursor(SDL_DISABLE);
    else
        SDL_EnableScreenSaver();
    if (!screenPixels()) return std::string("Nothing can be drawn into the window: ") + SDL_GetError() + ".";
    adoptSize();
    _wakeEvent = SDL_RegisterEvents(1);
    _loop.setWakeUp([this] { wakeUp(); });
    return {};
}

void SdlDisplay::setIcon() {
    std::ifstream stream(_options.icon, std::ios::binary);
    const std::string data{std::istreambuf_iterator<char>(stream), {}};
    const auto source = VectorSource::fromData(data);
    if (!source) return;
    constexpr int side = 128;
    const auto pixels = source->rendered(side, side);
    if (!pixels) return;
    const auto icon = wrapped(pixels, SDL_PIXELFORMAT_ARGB8888);
    if (icon) SDL_SetWindowIcon(_screen, icon.get());
}

void SdlDisplay::show(std::shared_ptr<zornic::Window> window) {
    _shown = std::move(window);
    _input.setWindow(_shown);
    if (_shown) _shown->addDamage(_shown->bounds());
}

// Size

SDL_Surface* SdlDisplay::screenPixels() { return SDL_GetWindowSurface(_screen); }

void SdlDisplay::adoptSize() {
    const auto* const pixels = screenPixels();
    if (!pixels || pixels->w <= 0 || pixels->h <= 0) return;
    const double scale = _surface.scale();
    if (pixels->w != _surface.pixels().width() || pixels->h != _surface.pixels().height())
        _surface.resize({pixels->w / scale, pixels->h / scale}, scale);
    _input.setGeometry(_surface.size(), scale);
    if (!_shown) return;
    if (const auto screen = _shown->screen()) screen->setSize(_surface.size(), scale);
    _shown->screenDidChange();
    _shown->addDamage(_shown->bounds());
}

// Main loop

void SdlDisplay::run() {
    _quits = false;
    while (!_quits) {
        _wakes = false;
        _loop.runDue();
        SDL_Event event;
        while (!_quits && SDL_PollEvent(&event)) handle(event);
        if (_quits) break;
        if (wantsFrame() && _loop.now() >= _nextFrame) drawFrame();
        auto until = _loop.nextDue();
        if (wantsFrame()) until = until ? std::min(*until, _nextFrame) : _nextFrame;
        wait(until);
    }
}

void SdlDisplay::quit() {
    _quits = true;
    wakeUp();
}

bool SdlDisplay::wantsFrame() const { return _loop.wantsFrames() || (_shown && _shown->needsFrame()); }

void SdlDisplay::drawFrame() {
    // Frames keep their beat; after a pause a new one begins.
    const auto now = _loop.now();
    _nextFrame = now - _nextFrame > frameInterval ? now + frameInterval : _nextFrame + frameInterval;
    if (_loop.wantsFrames()) _loop.fireFrame();
    if (!_shown) return;
    const auto window = _shown;
    const auto drawn = _surface.render(*window);
    if (drawn.empty()) return;
    present(drawn);
    if (std::exchange(_firstFrameShown, true)) return;
    setIcon();
    if (onFirstFrame) onFirstFrame();
}

void SdlDisplay::present(const std::vector<DisplaySurface::PixelRect>& rects) {
    auto* const target = screenPixels();
    const auto source = wrapped(_surface.pixels(), SDL_PIXELFORMAT_RGB888);
    if (!target || !source) return;
    SDL_SetSurfaceBlendMode(source.get(), SDL_BLENDMODE_NONE);
    std::vector<SDL_Rect> updated;
    for (const auto& rect : rects) {
        SDL_Rect from{rect.x, rect.y, rect.width, rect.height}, to = from;
        SDL_BlitSurface(source.get(), &from, target, &to);
        if (to.w > 0 && to.h > 0) updated.push_back(to);
    }
    SDL_UpdateWindowSurfaceRects(_screen, updated.data(), static_cast<int>(updated.size()));
}

void SdlDisplay::presentAll() { present({{0, 0, _surface.pixels().width(), _surface.pixels().height()}}); }

void SdlDisplay::wait(std::optional<TimePoint> until) {
    using std::chrono::milliseconds;
    const auto left =
        until ? std::max(zornic::Duration::zero(), *until - _loop.now()) : zornic::Duration::max();
    // A wake-up whose event was already taken out would be slept over.
    if (left == zornic::Duration::zero() || _wakes) return;
    if (!_canSleep) {
        const bool mustLook = _hasInput && !_inputWatch.hearsDevices();
        if (mustLook)
            _inputWatch.wait(std::min<zornic::Duration>(left, pollInterval));
        else
            _inputWatch.wait(until ? std::optional(left) : std::nullopt);
    } else if (!until) {
        SDL_WaitEvent(nullptr);
    } else {
        const auto most = milliseconds(std::chrono::hours(1));
        const auto time =
            std::min(std::chrono::ceil<milliseconds>(std::min<zornic::Duration>(left, most)), most);
        SDL_WaitEventTimeout(nullptr, static_cast<int>(time.count()));
    }
}

void SdlDisplay::wakeUp() {
    if (_wakes.exchange(true)) return;
    if (_canSleep) {
        SDL_Event event{};
        event.type = _wakeEvent;
        SDL_PushEvent(&event);
        return;
    }
    _inputWatch.wake();
}

// Events

void SdlDisplay::handle(const SDL_Event& event) {
    if (_input.handle(event)) return;
    if (event.type == SDL_WINDOWEVENT) {
        handleWindowEvent(event);
    } else if (event.type == SDL_QUIT) {
        if (onQuit)
            onQuit();
        else
            quit();
    }
}

void SdlDisplay::handleWindowEvent(const SDL_Event& event) {
    switch (event.window.event) {
        case SDL_WINDOWEVENT_SIZE_CHANGED:
            adoptSize();
            break;
        case SDL_WINDOWEVENT_EXPOSED:
            presentAll();
            break;
        case SDL_WINDOWEVENT_FOCUS_LOST:
        case SDL_WINDOWEVENT_HIDDEN:
            _input.cancelTouch();
            break;
        default:
            break;
    }
}

}  // namespace helmo

/** Loaded before a program that shows a window, it writes the time (nanoseconds of the steady clock, eight
   bytes) of each frame that came on the screen to the descriptor that HELMO_FRAME_PROBE names. */
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <unistd.h>

struct SDL_Window;
struct SDL_Rect;

namespace {

void note() {
    static const char* const descriptor = std::getenv("HELMO_FRAME_PROBE");
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const std::int64_t time = now.tv_sec * std::int64_t{1'000'000'000} + now.tv_nsec;
    if (descriptor && write(std::atoi(descriptor), &time, sizeof time) < 0) std::abort();
}

template <class Function>
Function* following(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int SDL_UpdateWindowSurface(SDL_Window* window) {
    const int result = following<int(SDL_Window*)>("SDL_UpdateWindowSurface")(window);
    note();
    return result;
}

int SDL_UpdateWindowSurfaceRects(SDL_Window* window, const SDL_Rect* rects, int count) {
    const auto update = following<int(SDL_Window*, const SDL_Rect*, int)>("SDL_UpdateWindowSurfaceRects");
    const int result = update(window, rects, count);
    note();
    return result;
}
}

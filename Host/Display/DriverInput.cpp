#include "Host/Display/DriverInput.h"

#include <SDL.h>

#include "Platform/Toolkit/Window.h"

namespace helmo {

namespace {

std::optional<MediaKey> mediaKey(SDL_Keycode key) {
    switch (key) {
        case SDLK_AUDIOPLAY:
            return MediaKey::PlayPause;
        case SDLK_AUDIONEXT:
            return MediaKey::Next;
        case SDLK_AUDIOPREV:
            return MediaKey::Previous;
        case SDLK_AUDIOSTOP:
            return MediaKey::Stop;
        default:
            return std::nullopt;
    }
}

/** Detents of the knob; 0 for other keys. */
int detents(SDL_Keycode key) {
    switch (key) {
        case SDLK_UP:
        case SDLK_LEFT:
            return -1;
        case SDLK_DOWN:
        case SDLK_RIGHT:
            return 1;
        default:
            return 0;
    }
}

}  // namespace

void DriverInput::setWindow(std::shared_ptr<zornic::Window> window) {
    cancelTouch();
    _window = std::move(window);
}

void DriverInput::setGeometry(zornic::Size size, double scale) {
    cancelTouch();
    _size = size;
    _scale = scale;
}

bool DriverInput::handle(const SDL_Event& event) {
    switch (event.type) {
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
        case SDL_MOUSEMOTION:
            return handleMouse(event);
        case SDL_FINGERDOWN:
        case SDL_FINGERUP:
        case SDL_FINGERMOTION:
            return handleFinger(event);
        case SDL_MOUSEWHEEL:
            return handleWheel(event);
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            return handleKey(event);
        default:
            return false;
    }
}

void DriverInput::cancelTouch() {
    if (std::exchange(_pointer, Pointer::None) != Pointer::None && _window) _window->touchCancel();
}

void DriverInput::touch(Pointer pointer, zornic::Point location) {
    _pointer = pointer;
    if (_window) _window->touchDown(location);
}

bool DriverInput::handleMouse(const SDL_Event& event) {
    // A finger comes a second time, as a mouse.
    const bool isMotion = event.type == SDL_MOUSEMOTION;
    if ((isMotion ? event.motion.which : event.button.which) == SDL_TOUCH_MOUSEID) return true;
    const zornic::Point location = isMotion ? zornic::Point{event.motion.x / _scale, event.motion.y / _scale}
                                            : zornic::Point{event.button.x / _scale, event.button.y / _scale};
    if (isMotion) {
        if (_pointer == Pointer::Mouse && _window) _window->touchMove(location);
        return true;
    }
    if (event.button.button != SDL_BUTTON_LEFT) return true;
    if (event.type == SDL_MOUSEBUTTONDOWN) {
        if (_pointer != Pointer::None) return true;
        SDL_CaptureMouse(SDL_TRUE);
        touch(Pointer::Mouse, location);
    } else if (_pointer == Pointer::Mouse) {
        SDL_CaptureMouse(SDL_FALSE);
        _pointer = Pointer::None;
        if (_window) _window->touchUp(location);
    }
    return true;
}

bool DriverInput::handleFinger(const SDL_Event& event) {
    const auto& finger = event.tfinger;
    const zornic::Point location{static_cast<double>(finger.x) * _size.width,
                                 static_cast<double>(finger.y) * _size.height};
    if (event.type == SDL_FINGERDOWN) {
        if (_pointer != Pointer::None) return true;
        _finger = finger.fingerId;
        touch(Pointer::Finger, location);
        return true;
    }
    if (_pointer != Pointer::Finger || finger.fingerId != _finger) return true;
    if (event.type == SDL_FINGERUP) _pointer = Pointer::None;
    if (!_window) return true;
    if (event.type == SDL_FINGERUP)
        _window->touchUp(location);
    else
        _window->touchMove(location);
    return true;
}

bool DriverInput::handleWheel(const SDL_Event& event) {
    const bool isFlipped = event.wheel.direction == SDL_MOUSEWHEEL_FLIPPED;
    const int turned = isFlipped ? event.wheel.y : -event.wheel.y;
    if (turned != 0 && _window) _window->turnKnob(turned);
    return true;
}

bool DriverInput::handleKey(const SDL_Event& event) {
    const bool isDown = event.type == SDL_KEYDOWN, isRepeat = event.key.repeat != 0;
    const SDL_Keycode key = event.key.keysym.sym;
    if (const int turned = detents(key)) {
        if (isDown && _window) _window->turnKnob(turned);
        return true;
    }
    if (key == SDLK_RETURN || key == SDLK_KP_ENTER) {
        if (!isRepeat && _window) _window->pressKnob(isDown);
        return true;
    }
    if (key == SDLK_ESCAPE || key == SDLK_AC_BACK) {
        if (isDown && !isRepeat && _window) _window->pressBack();
        return true;
    }
    const auto media = mediaKey(key);
    if (media && isDown && !isRepeat && onMediaKey) onMediaKey(*media);
    return media.has_value();
}

}  // namespace helmo

#pragma once

#include <cstddef>
#include <glib-object.h>
#include <memory>
#include <utility>

#include <cairo.h>

namespace helmo {

/** A pixel buffer of Cairo's (ARGB, premultiplied), shared by copying; empty: none. Once drawn it is only
   read, so any thread may hold it. */
class Surface {
public:
    Surface() = default;
    /** A clear buffer of that many pixels; empty where there is no memory for it. */
    Surface(int width, int height)
        : Surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)) {}
    /** Takes over one reference. */
    explicit Surface(cairo_surface_t* owned)
        : _surface(cairo_surface_status(owned) == CAIRO_STATUS_SUCCESS ? owned : nullptr) {
        if (!_surface) cairo_surface_destroy(owned);
    }
    Surface(const Surface& other) : _surface(cairo_surface_reference(other._surface)) {}
    Surface(Surface&& other) noexcept : _surface(std::exchange(other._surface, nullptr)) {}
    Surface& operator=(Surface other) noexcept {
        std::swap(_surface, other._surface);
        return *this;
    }
    ~Surface() { cairo_surface_destroy(_surface); }

    explicit operator bool() const { return _surface != nullptr; }
    cairo_surface_t* get() const { return _surface; }
    int width() const { return _surface ? cairo_image_surface_get_width(_surface) : 0; }
    int height() const { return _surface ? cairo_image_surface_get_height(_surface) : 0; }
    /** From one row to the next, in bytes. */
    std::ptrdiff_t stride() const { return _surface ? cairo_image_surface_get_stride(_surface) : 0; }
    std::size_t bytes() const {
        return static_cast<std::size_t>(stride()) * static_cast<std::size_t>(height());
    }
    /** First pixel, up to date. After writing, call `cairo_surface_mark_dirty`. */
    unsigned char* pixels() const {
        cairo_surface_flush(_surface);
        return cairo_image_surface_get_data(_surface);
    }

private:
    cairo_surface_t* _surface = nullptr;
};

struct CairoRelease {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
/** One owned reference of Cairo's. */
template <class T>
using CairoPointer = std::unique_ptr<T, CairoRelease>;

inline CairoPointer<cairo_t> makeContext(const Surface& surface) {
    return CairoPointer<cairo_t>(cairo_create(surface.get()));
}

struct ObjectRelease {
    void operator()(void* object) const { g_object_unref(object); }
};
/** One owned reference to an object of GLib's. */
template <class T>
using ObjectPointer = std::unique_ptr<T, ObjectRelease>;

}  // namespace helmo

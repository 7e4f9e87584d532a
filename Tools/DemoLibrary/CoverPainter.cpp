#include "Tools/DemoLibrary/CoverPainter.h"

#include <memory>
#include <stdexcept>

#include <cairo.h>
#include <gdk-pixbuf/gdk-pixbuf.h>

#include "Tools/DemoLibrary/CoverMotifs.h"

namespace helmo::demo {

namespace {

struct CairoDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using Surface = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using Context = std::unique_ptr<cairo_t, CairoDeleter>;

struct ObjectDeleter {
    void operator()(void* object) const { g_object_unref(object); }
};

Surface paint(const Cover& cover) {
    Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, CoverPainter::side, CoverPainter::side));
    const Context context(cairo_create(surface.get()));
    cairo_scale(context.get(), CoverPainter::side, CoverPainter::side);
    CoverMotifs(context.get(), cover).paint();
    cairo_surface_flush(surface.get());
    return surface;
}

cairo_status_t append(void* closure, const unsigned char* data, unsigned int length) {
    auto& bytes = *static_cast<Bytes*>(closure);
    bytes.insert(bytes.end(), data, data + length);
    return CAIRO_STATUS_SUCCESS;
}

/** Red, green, blue bytes of a surface, row by row without padding. */
std::vector<guchar> pixelsOf(cairo_surface_t* surface) {
    std::vector<guchar> pixels;
    pixels.reserve(std::size_t{3} * CoverPainter::side * CoverPainter::side);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    for (int y = 0; y < CoverPainter::side; ++y) {
        const auto* row =
            reinterpret_cast<const std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * stride);
        for (int x = 0; x < CoverPainter::side; ++x) {
            for (const int shift : {16, 8, 0}) pixels.push_back(static_cast<guchar>(row[x] >> shift));
        }
    }
    return pixels;
}

}  // namespace

Bytes CoverPainter::png(const Cover& cover) {
    Bytes bytes;
    if (cairo_surface_write_to_png_stream(paint(cover).get(), append, &bytes) != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("can't encode a cover as PNG");
    }
    return bytes;
}

Bytes CoverPainter::jpeg(const Cover& cover) {
    const auto pixels = pixelsOf(paint(cover).get());
    const std::unique_ptr<GdkPixbuf, ObjectDeleter> pixbuf(gdk_pixbuf_new_from_data(
        pixels.data(), GDK_COLORSPACE_RGB, FALSE, 8, side, side, side * 3, nullptr, nullptr));
    gchar* data = nullptr;
    gsize size = 0;
    if (!gdk_pixbuf_save_to_buffer(pixbuf.get(), &data, &size, "jpeg", nullptr, "quality", "90", nullptr)) {
        throw std::runtime_error("can't encode a cover as JPEG");
    }
    Bytes bytes(data, data + size);
    g_free(data);
    return bytes;
}

}  // namespace helmo::demo

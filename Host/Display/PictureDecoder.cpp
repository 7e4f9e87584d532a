#include "Host/Display/PictureDecoder.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include <gdk-pixbuf/gdk-pixbuf.h>

#include "Host/Display/CairoImageSource.h"
#include "Host/Display/PictureSource.h"

namespace helmo {

namespace {

/** The decoder's name of what the bytes begin with; nullptr for what is not taken: some decoders open other
 * files. */
const char* formatOf(std::string_view data) {
    using namespace std::string_view_literals;
    if (data.starts_with("\xFF\xD8\xFF"sv)) return "jpeg";
    if (data.starts_with("\x89PNG\r\n\x1A\n"sv)) return "png";
    if (data.starts_with("GIF8"sv)) return "gif";
    if (data.starts_with("RIFF"sv) && data.substr(0, 12).ends_with("WEBP"sv)) return "webp";
    if (data.starts_with("BM"sv)) return "bmp";
    if (data.starts_with("II*\0"sv) || data.starts_with("MM\0*"sv)) return "tiff";
    return nullptr;
}

/** Part of its size at which a picture just fills `fitting`; 1 at most. */
double fillingFactor(double width, double height, zornic::Size fitting) {
    if (fitting.width <= 0 && fitting.height <= 0) return 1;
    return std::min(1.0, std::max(fitting.width / width, fitting.height / height));
}

int scaled(int length, double factor) { return std::max(1, static_cast<int>(std::lround(length * factor))); }

/** Called once the decoder knows the size: asks for no more pixels than needed, or for none at all. */
void prepareSize(GdkPixbufLoader* loader, int width, int height, gpointer context) {
    if (!CairoImageSource::isWithinLimits(width, height)) {
        gdk_pixbuf_loader_set_size(loader, 0, 0);
        return;
    }
    // Whether it lies on its side is not known yet.
    const auto& fitting = *static_cast<const zornic::Size*>(context);
    const double factor =
        std::max(fillingFactor(width, height, fitting), fillingFactor(height, width, fitting));
    if (factor < 1) gdk_pixbuf_loader_set_size(loader, scaled(width, factor), scaled(height, factor));
}

/** Decoded and upright; none when the decoder found fault with it. */
ObjectPointer<GdkPixbuf> decoded(const std::string& data, zornic::Size fitting) {
    const char* const format = formatOf(data);
    if (!format) return nullptr;
    // The decoder takes a PNG that breaks off, and leaves what is missing to chance.
    if (std::string_view(format) == "png" && data.rfind("IEND") == std::string::npos) return nullptr;
    const ObjectPointer<GdkPixbufLoader> loader(gdk_pixbuf_loader_new_with_type(format, nullptr));
    if (!loader) return nullptr;
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(prepareSize), &fitting);
    bool isWhole = gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(data.data()),
                                           data.size(), nullptr);
    isWhole = gdk_pixbuf_loader_close(loader.get(), nullptr) && isWhole;
    GdkPixbuf* const pixels = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (!pixels || !isWhole) return nullptr;
    return ObjectPointer<GdkPixbuf>(gdk_pixbuf_apply_embedded_orientation(pixels));
}

Surface premultiplied(const GdkPixbuf* pixels) {
    const int width = gdk_pixbuf_get_width(pixels), height = gdk_pixbuf_get_height(pixels);
    const int channels = gdk_pixbuf_get_n_channels(pixels), stride = gdk_pixbuf_get_rowstride(pixels);
    if (!CairoImageSource::isWithinLimits(width, height) || channels < 3) return {};
    Surface result(width, height);
    if (!result) return result;
    const guint8* from = gdk_pixbuf_read_pixels(pixels);
    unsigned char* to = result.pixels();
    for (int y = 0; y < height; ++y, from += stride, to += result.stride()) {
        const guint8* pixel = from;
        auto* target = reinterpret_cast<std::uint32_t*>(to);
        for (int x = 0; x < width; ++x, pixel += channels) {
            const std::uint32_t alpha = channels == 4 ? pixel[3] : 255;
            const auto part = [&](int channel) { return (pixel[channel] * alpha + 127) / 255; };
            target[x] = alpha << 24 | part(0) << 16 | part(1) << 8 | part(2);
        }
    }
    cairo_surface_mark_dirty(result.get());
    return result;
}

}  // namespace

Surface decodedPicture(const std::string& data, zornic::Size fitting) {
    const auto pixels = decoded(data, fitting);
    if (!pixels) return {};
    const auto surface = premultiplied(pixels.get());
    if (!surface) return {};
    const double factor = fillingFactor(surface.width(), surface.height(), fitting);
    const int width = scaled(surface.width(), factor), height = scaled(surface.height(), factor);
    return PictureSource(surface, {1, 1}, 1).rendered(width, height);
}

}  // namespace helmo

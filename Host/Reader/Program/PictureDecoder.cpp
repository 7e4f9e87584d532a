#include "Host/Reader/Program/PictureDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <memory>
#include <new>
#include <utility>

#include <gdk-pixbuf/gdk-pixbuf.h>

namespace helmo {

namespace {

struct Unreference {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class T>
using ObjectPointer = std::unique_ptr<T, Unreference>;

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

bool isWithinLimits(int width, int height) {
    return width > 0 && height > 0 && width <= maximumPictureSide && height <= maximumPictureSide &&
           std::int64_t{width} * height <= maximumPicturePixels;
}

/** Part of its size at which a picture just fills `fitting`; 1 at most. */
double fillingFactor(double width, double height, PixelSize fitting) {
    if (fitting.width <= 0 && fitting.height <= 0) return 1;
    return std::min(1.0, std::max(fitting.width / width, fitting.height / height));
}

int scaled(int length, double factor) { return std::max(1, static_cast<int>(std::lround(length * factor))); }

/** What the decoder is told, and tells, once it knows the size. */
struct Preparation {
    PixelSize fitting;
    std::string problem;
};

/** Asks for no more pixels than needed, or for none at all. */
void prepareSize(GdkPixbufLoader* loader, int width, int height, gpointer context) {
    auto& preparation = *static_cast<Preparation*>(context);
    if (!isWithinLimits(width, height)) {
        preparation.problem = "the picture claims " + std::to_string(width) + " x " + std::to_string(height) +
                              " pixels, more than are taken";
        gdk_pixbuf_loader_set_size(loader, 0, 0);
        return;
    }
    // Whether it lies on its side is not known yet.
    const double factor = std::max(fillingFactor(width, height, preparation.fitting),
                                   fillingFactor(height, width, preparation.fitting));
    if (factor < 1) gdk_pixbuf_loader_set_size(loader, scaled(width, factor), scaled(height, factor));
}

/** Takes `error` over: what it says, empty without one. */
std::string textOf(GError* error) {
    if (!error) return {};
    const std::unique_ptr<GError, decltype(&g_error_free)> owned(error, g_error_free);
    if (g_error_matches(error, GDK_PIXBUF_ERROR, GDK_PIXBUF_ERROR_INSUFFICIENT_MEMORY))
        throw std::bad_alloc();
    return error->message;
}

/** In pieces: a picture that claims too much is not unpacked any further. */
void feed(GdkPixbufLoader* loader, std::string_view data, const Preparation& preparation, GError** error) {
    constexpr std::size_t pieceSize = 16 << 10;
    while (!data.empty() && preparation.problem.empty()) {
        const auto piece = data.substr(0, pieceSize);
        if (!gdk_pixbuf_loader_write(loader, reinterpret_cast<const guchar*>(piece.data()), piece.size(),
                                     error))
            return;
        data.remove_prefix(piece.size());
    }
}

/** Decoded and upright; none when the decoder found fault with it, which is then in `problem`. */
ObjectPointer<GdkPixbuf> decoded(const std::string& data, PixelSize fitting, std::string& problem) {
    const char* const format = formatOf(data);
    problem = "the picture is of no kind that can be read";
    if (!format) return nullptr;
    problem = "the picture is cut off";
    // The decoder takes a PNG that breaks off, and leaves what is missing to chance.
    if (std::string_view(format) == "png" && data.rfind("IEND") == std::string::npos) return nullptr;
    GError* error = nullptr;
    const ObjectPointer<GdkPixbufLoader> loader(gdk_pixbuf_loader_new_with_type(format, &error));
    problem = textOf(error);
    if (!loader) return nullptr;
    Preparation preparation{fitting, {}};
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(prepareSize), &preparation);
    feed(loader.get(), data, preparation, &error);
    std::string fault = textOf(std::exchange(error, nullptr));
    gdk_pixbuf_loader_close(loader.get(), fault.empty() ? &error : nullptr);
    if (fault.empty()) fault = textOf(error);
    GdkPixbuf* const pixels = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (fault.empty() && !pixels) fault = "it breaks off";
    problem = preparation.problem.empty() ? "the picture is damaged: " + fault : preparation.problem;
    if (!fault.empty() || !preparation.problem.empty()) return nullptr;
    ObjectPointer<GdkPixbuf> upright(gdk_pixbuf_apply_embedded_orientation(pixels));
    if (!upright) throw std::bad_alloc();
    return upright;
}

Picture premultiplied(const GdkPixbuf* pixels) {
    Picture result;
    const int channels = gdk_pixbuf_get_n_channels(pixels), stride = gdk_pixbuf_get_rowstride(pixels);
    result.width = gdk_pixbuf_get_width(pixels);
    result.height = gdk_pixbuf_get_height(pixels);
    result.pixels.resize(static_cast<std::size_t>(result.width) * static_cast<std::size_t>(result.height));
    const guint8* row = gdk_pixbuf_read_pixels(pixels);
    auto target = result.pixels.begin();
    for (int y = 0; y < result.height; ++y, row += stride) {
        const guint8* pixel = row;
        for (int x = 0; x < result.width; ++x, pixel += channels) {
            const std::uint32_t alpha = channels == 4 ? pixel[3] : 255;
            const auto part = [&](int channel) { return (pixel[channel] * alpha + 127) / 255; };
            *target++ = alpha << 24 | part(0) << 16 | part(1) << 8 | part(2);
        }
    }
    return result;
}

}  // namespace

bool isPictureData(std::string_view data) { return formatOf(data) != nullptr; }

std::string beginningOf(const std::filesystem::path& file) {
    std::array<char, 16> bytes;
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), bytes.size());
    return std::string(bytes.data(), static_cast<std::size_t>(stream.gcount()));
}

PictureReading decodedPicture(const std::string& data, PixelSize fitting) {
    PictureReading reading;
    auto pixels = decoded(data, fitting, reading.problem);
    if (!pixels) return reading;
    const int width = gdk_pixbuf_get_width(pixels.get()), height = gdk_pixbuf_get_height(pixels.get());
    const double factor = fillingFactor(width, height, fitting);
    const int fittedWidth = scaled(width, factor), fittedHeight = scaled(height, factor);
    const bool isWhole = isWithinLimits(width, height) && gdk_pixbuf_get_n_channels(pixels.get()) >= 3;
    if (!isWhole || std::int64_t{fittedWidth} * fittedHeight > maximumFittedPixels)
        return {{}, "the picture has more pixels than are taken"};
    if (fittedWidth != width || fittedHeight != height)
        pixels.reset(gdk_pixbuf_scale_simple(pixels.get(), fittedWidth, fittedHeight, GDK_INTERP_BILINEAR));
    if (!pixels) throw std::bad_alloc();
    return {premultiplied(pixels.get()), {}};
}

}  // namespace helmo

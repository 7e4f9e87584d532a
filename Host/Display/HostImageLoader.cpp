#include "Host/Display/HostImageLoader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "Host/Display/CairoCanvas.h"
#include "Host/Display/PictureSource.h"
#include "Host/Display/VectorSource.h"

namespace helmo {

namespace {

constexpr std::size_t fileCacheLimit = 16 << 20, drawnCacheLimit = 4 << 20;  // bytes

/** Empty when it can't be read or is too large. */
std::string contentOf(const std::filesystem::path& file) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    if (error || size > HostImageLoader::maxBytes) return {};
    std::string data(size, '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(data.data(), static_cast<std::streamsize>(size));
    data.resize(static_cast<std::size_t>(stream.gcount()));
    return data;
}

bool looksLikeMarkup(const std::string& data) {
    const auto first = data.find_first_not_of("\xEF\xBB\xBF \t\r\n");
    return first != std::string::npos && data[first] == '<';
}

/** Pixels that cover `points`. */
int pixelsFor(double points, double scale) {
    const double pixels = std::ceil(points * scale - 1e-6);
    return static_cast<int>(std::clamp(pixels, 1.0, CairoImageSource::maxSide + 1.0));
}

PixelSize pixelsFor(zornic::Size points, double scale) {
    const auto pixels = [scale](double length) {
        return static_cast<int>(std::clamp(std::ceil(length * scale - 1e-6), 0.0, 1.0 * maximumPictureSide));
    };
    return {pixels(points.width), pixels(points.height)};
}

std::shared_ptr<const zornic::ImageSource> sourceOf(const Picture& picture, double scale) {
    if (picture.empty()) return nullptr;
    Surface surface(picture.width, picture.height);
    if (!surface) return nullptr;
    const auto width = static_cast<std::size_t>(picture.width);
    unsigned char* row = surface.pixels();
    for (std::size_t at = 0; at < picture.pixels.size(); at += width, row += surface.stride())
        std::memcpy(row, &picture.pixels[at], width * sizeof(std::uint32_t));
    cairo_surface_mark_dirty(surface.get());
    const zornic::Size size{picture.width / scale, picture.height / scale};
    return std::make_shared<const PictureSource>(std::move(surface), size, scale);
}

}  // namespace

HostImageLoader::HostImageLoader(std::shared_ptr<PictureReader> pictures)
    : _pictures(std::move(pictures)), _files(fileCacheLimit), _drawn(drawnCacheLimit, drawnCacheLimit) {}

std::shared_ptr<const zornic::ImageSource> HostImageLoader::sourceFromFile(
    const std::filesystem::path& file) {
    if (const auto known = _files.get(file.string())) return *known;
    const auto data = contentOf(file);
    std::shared_ptr<const zornic::ImageSource> source;
    if (looksLikeMarkup(data))
        source = VectorSource::fromData(data);
    else if (!data.empty() && _pictures)
        source = sourceOf(_pictures->pictureOfFile(file, {}).picture, 1);
    if (source) _files.set(file.string(), source, source->cost());
    return source;
}

std::shared_ptr<const zornic::ImageSource> HostImageLoader::sourceFromData(const std::string& data,
                                                                           zornic::Size fittingSize,
                                                                           double scale) {
    if (data.empty() || !_pictures) return nullptr;
    if (!(scale > 0)) scale = 1;
    return sourceOf(_pictures->pictureOfBytes(data, pixelsFor(fittingSize, scale)).picture, scale);
}

CoverReading HostImageLoader::cover(const std::filesystem::path& file, zornic::Size fittingSize,
                                    double scale) {
    if (!_pictures) return {};
    if (!(scale > 0)) scale = 1;
    auto reading = _pictures->pictureOfFile(file, pixelsFor(fittingSize, scale));
    return {sourceOf(reading.picture, scale), std::move(reading.problem)};
}

std::shared_ptr<const zornic::ImageSource> HostImageLoader::sourceByDrawing(
    zornic::Size size, bool opaque, double scale, const std::function<void(zornic::Canvas&)>& draw) {
    if (!(scale > 0)) scale = 1;
    const int width = pixelsFor(size.width, scale), height = pixelsFor(size.height, scale);
    if (!CairoImageSource::isWithinLimits(width, height)) return nullptr;
    // Without alpha it is copied, not blended, wherever it is drawn.
    Surface pixels(
        cairo_image_surface_create(opaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, width, height));
    if (!pixels) return nullptr;
    const auto context = makeContext(pixels);
    if (opaque) {
        cairo_set_source_rgb(context.get(), 0, 0, 0);
        cairo_paint(context.get());
    }
    CairoCanvas canvas(context.get(), scale, _drawn);
    draw(canvas);
    return std::make_shared<const PictureSource>(std::move(pixels), size, scale);
}

}  // namespace helmo

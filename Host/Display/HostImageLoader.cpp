#include "Host/Display/HostImageLoader.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "Host/Display/CairoCanvas.h"
#include "Host/Display/PictureDecoder.h"
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

}  // namespace

HostImageLoader::HostImageLoader() : _files(fileCacheLimit), _drawn(drawnCacheLimit, drawnCacheLimit) {}

std::shared_ptr<const zornic::ImageSource> HostImageLoader::sourceFromFile(
    const std::filesystem::path& file) {
    if (const auto known = _files.get(file.string())) return *known;
    const auto data = contentOf(file);
    std::shared_ptr<const zornic::ImageSource> source;
    if (looksLikeMarkup(data))
        source = VectorSource::fromData(data);
    else
        source = sourceFromData(data, {}, 1);
    if (source) _files.set(file.string(), source, source->cost());
    return source;
}

std::shared_ptr<const zornic::ImageSource> HostImageLoader::sourceFromData(const std::string& data,
                                                                           zornic::Size fittingSize,
                                                                           double scale) {
    if (data.size() > maxBytes) return nullptr;
    if (!(scale > 0)) scale = 1;
    auto pixels = decodedPicture(data, {fittingSize.width * scale, fittingSize.height * scale});
    if (!pixels) return nullptr;
    const zornic::Size size{pixels.width() / scale, pixels.height() / scale};
    return std::make_shared<const PictureSource>(std::move(pixels), size, scale);
}

std::shared_ptr<const zornic::ImageSource> HostImageLoader::sourceByDrawing(
    zornic::Size size, bool opaque, double scale, const std::function<void(zornic::Canvas&)>& draw) {
    if (!(scale > 0)) scale = 1;
    const int width = pixelsFor(size.width, scale), height = pixelsFor(size.height, scale);
    if (!CairoImageSource::isWithinLimits(width, height)) return nullptr;
    Surface pixels(width, height);
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

#include "Platform/Toolkit/Image.h"

#include <map>
#include <utility>

namespace zornic {

namespace {

std::shared_ptr<ImageLoader>& installedLoader() {
    static auto& loader = *new std::shared_ptr<ImageLoader>;
    return loader;
}

/** Named images by file: a list asks for the same few with every row. */
std::map<std::filesystem::path, std::shared_ptr<const ImageSource>>& namedSources() {
    static auto& sources = *new std::map<std::filesystem::path, std::shared_ptr<const ImageSource>>;
    return sources;
}

}  // namespace

ImageLoader* ImageLoader::current() { return installedLoader().get(); }

void ImageLoader::install(std::shared_ptr<ImageLoader> loader) {
    namedSources().clear();
    installedLoader() = std::move(loader);
}

Image::Image(std::shared_ptr<const ImageSource> source, std::string name)
    : _source(std::move(source)), _name(std::move(name)) {}

Image Image::named(const std::string& name, const std::shared_ptr<Bundle>& bundle, const DisplayTraits&) {
    auto* const loader = ImageLoader::current();
    if (!bundle || !loader) return {};
    const auto file = bundle->pathForImage(name);
    if (!file) return {};
    auto& source = namedSources()[*file];
    if (!source) source = loader->sourceFromFile(*file);
    return source ? Image(source, name) : Image();
}

Size Image::size() const { return _source ? _source->size() : Size(); }

double Image::scale() const { return _source ? _source->scale() : 1; }

Image Image::withRenderingMode(ImageRenderingMode mode) const {
    auto copy = *this;
    copy._mode = mode;
    return copy;
}

Image Image::flattenedWithColor(Color color) const {
    auto copy = *this;
    copy._flatColor = color;
    return copy;
}

Image Image::resizableWithCapInsets(EdgeInsets insets) const {
    auto copy = *this;
    copy._capInsets = insets;
    return copy;
}

}  // namespace zornic

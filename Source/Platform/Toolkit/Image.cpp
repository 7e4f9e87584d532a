#include "Platform/Toolkit/Image.h"

#include <map>
#include <utility>

namespace zornic {

namespace {

std::shared_ptr<ImageLoader>& installedLoader() {
    static auto& loader = *new std::shared_ptr<ImageLoader>;
    return loader;
}

/** Images that were found, by bundle and name: rows and each second's redraw ask for the same few. */
using NamedSources =
    std::map<std::pair<std::shared_ptr<Bundle>, std::string>, std::shared_ptr<const ImageSource>>;

NamedSources& namedSources() {
    static auto& sources = *new NamedSources;
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
    const std::pair key(bundle, name);
    if (const auto known = namedSources().find(key); known != namedSources().end())
        return Image(known->second, name);
    const auto file = bundle->pathForImage(name);
    const auto source = file ? loader->sourceFromFile(*file) : nullptr;
    if (source) namedSources()[key] = source;
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

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Foundation/Bundle.h"
#include "Platform/Toolkit/Color.h"
#include "Platform/Toolkit/Geometry.h"

namespace zornic {

class Canvas;

/** What an image is drawn from: pixels or a drawing, kept by the host in its own form. Immutable; any thread.
 */
class ImageSource {
public:
    virtual ~ImageSource() = default;
    /** In points. */
    virtual Size size() const = 0;
    /** Pixels a point for pixels, 0 for a drawing that is sharp at any scale. */
    virtual double scale() const = 0;
    /** Memory that it holds, in bytes, for caches. */
    virtual std::size_t cost() const = 0;
};

/** How the car display wants its images: opaque, passed on to the look-up. */
struct DisplayTraits {
    double scale = 1;
    friend bool operator==(const DisplayTraits&, const DisplayTraits&) = default;
};

enum class ImageRenderingMode { Automatic = 0, AlwaysOriginal = 1, AlwaysTemplate = 2 };

/** A picture with how it is to be drawn: as it is, tinted as a template, flattened to one colour, stretched
   by cap insets. A value, cheap to copy; a default-made one is "no image". */
class Image {
public:
    Image() = default;
    explicit Image(std::shared_ptr<const ImageSource> source, std::string name = {});

    /** The bundle's image called `name`; none when the bundle is none or has no such image. Main thread. */
    static Image named(const std::string& name, const std::shared_ptr<Bundle>& bundle,
                       const DisplayTraits& traits);

    explicit operator bool() const { return _source != nullptr; }
    bool operator!() const { return _source == nullptr; }
    /** In points; zero for no image. */
    Size size() const;
    double scale() const;
    /** Name that it was looked up by; empty for pictures. */
    const std::string& name() const { return _name; }
    const std::shared_ptr<const ImageSource>& source() const { return _source; }

    ImageRenderingMode renderingMode() const { return _mode; }
    Image withRenderingMode(ImageRenderingMode mode) const;
    /** Its shape in one colour. */
    Image flattenedWithColor(Color color) const;
    const std::optional<Color>& flatColor() const { return _flatColor; }
    /** Parts within the insets keep their size when stretched. */
    Image resizableWithCapInsets(EdgeInsets insets) const;
    const std::optional<EdgeInsets>& capInsets() const { return _capInsets; }

    friend bool operator==(const Image&, const Image&) = default;

private:
    std::shared_ptr<const ImageSource> _source;
    std::string _name;
    ImageRenderingMode _mode = ImageRenderingMode::Automatic;
    std::optional<Color> _flatColor;
    std::optional<EdgeInsets> _capInsets;
};

/** Makes image sources; the host's. */
class ImageLoader {
public:
    virtual ~ImageLoader() = default;
    /** The loader in use; none before a host has installed one. */
    static ImageLoader* current();
    static void install(std::shared_ptr<ImageLoader> loader);

    /** Reads the drawing or picture in a file. None when it can't be read. Main thread; kept by the loader.
     */
    virtual std::shared_ptr<const ImageSource> sourceFromFile(const std::filesystem::path& file) = 0;
    /** Decodes a picture no larger than it will be shown: it fills `fittingSize` points at `scale`, keeping
       its shape, never scaled up. None when the bytes are no picture. Any thread. */
    virtual std::shared_ptr<const ImageSource> sourceFromData(const std::string& data, Size fittingSize,
                                                              double scale) = 0;
    /** A picture of `size` points drawn by `draw`; black where nothing is drawn when `opaque`. Any thread. */
    virtual std::shared_ptr<const ImageSource> sourceByDrawing(Size size, bool opaque, double scale,
                                                               const std::function<void(Canvas&)>& draw) = 0;
};

}  // namespace zornic

#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Host/Display/CairoHandles.h"
#include "Host/Display/CairoImageSource.h"
#include "Platform/Foundation/EvictingCache.h"
#include "Platform/Toolkit/Canvas.h"

namespace helmo {

class PangoTextLayout;

/** What has been scaled, rasterised or filtered once, ready to be copied: a frame does none of it twice. Any
   thread for images. */
class RenderCache {
public:
    /** How an image is wanted, in pixels. */
    struct ImageForm {
        int width = 0, height = 0;
        /** Corners and edges that keep their size at `scale` pixels a point. */
        std::optional<zornic::EdgeInsets> caps{};
        double scale = 1;
        std::vector<zornic::ColorFilter> filters{};
    };
    /** A part of a text, and where its pixels lie seen from the left end of its first baseline. */
    struct TextPart {
        Surface pixels;
        int left = 0, top = 0;
        /** Its pixels are only coverage, to be filled with its own or else the text's colour. */
        bool isMask = true;
        std::optional<zornic::Color> color{};
    };
    using Text = std::shared_ptr<const std::vector<TextPart>>;

    /** Limits in bytes. */
    explicit RenderCache(std::size_t imageLimit = 32 << 20, std::size_t textLimit = 12 << 20);

    /** Empty where there is no memory, or the form is beyond all displays. */
    Surface image(const CairoImageSource& source, const ImageForm& form);
    /** None for a text that is too large to be kept. */
    Text text(const PangoTextLayout& layout, zornic::Color color, double scale);

private:
    using Key = std::vector<double>;
    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    const std::size_t _largestImage;
    zornic::EvictingCache<Key, Surface, KeyHash> _images;
    zornic::EvictingCache<Key, Text, KeyHash> _texts;
};

}  // namespace helmo

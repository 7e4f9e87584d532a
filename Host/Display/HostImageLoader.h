#pragma once

#include "Host/Display/RenderCache.h"
#include "Platform/Foundation/EvictingCache.h"
#include "Platform/Toolkit/Image.h"

namespace helmo {

/** Reads drawings (SVG) and pictures (JPEG, PNG, GIF, WebP, BMP, TIFF). What is no image, larger than
   `maxBytes` or than the limits of `CairoImageSource` is none. Any thread. */
class HostImageLoader final : public zornic::ImageLoader {
public:
    static constexpr std::size_t maxBytes = 16 << 20;

    HostImageLoader();

    std::shared_ptr<const zornic::ImageSource> sourceFromFile(const std::filesystem::path& file) override;
    /** A picture that its camera held sideways is put upright. */
    std::shared_ptr<const zornic::ImageSource> sourceFromData(const std::string& data,
                                                              zornic::Size fittingSize,
                                                              double scale) override;
    /** Texts can be drawn on the main thread only. */
    std::shared_ptr<const zornic::ImageSource> sourceByDrawing(
        zornic::Size size, bool opaque, double scale,
        const std::function<void(zornic::Canvas&)>& draw) override;

private:
    zornic::EvictingCache<std::string, std::shared_ptr<const zornic::ImageSource>> _files;
    RenderCache _drawn;
};

}  // namespace helmo

#pragma once

#include "Host/Display/RenderCache.h"
#include "Host/Library/CoverReader.h"
#include "Host/Reader/PictureReader.h"
#include "Platform/Foundation/EvictingCache.h"
#include "Platform/Toolkit/Image.h"

namespace helmo {

/** Draws helmo's own drawings (SVG), and has pictures (JPEG, PNG, GIF, WebP, BMP, TIFF) decoded outside this
   process. What is no image, larger than `maxBytes` or than the limits of `CairoImageSource` is none. Any
   thread. */
class HostImageLoader final : public zornic::ImageLoader, public CoverReader {
public:
    static constexpr std::size_t maxBytes = 16 << 20;

    /** `pictures` none: only drawings can be read. */
    explicit HostImageLoader(std::shared_ptr<PictureReader> pictures = nullptr);

    std::shared_ptr<const zornic::ImageSource> sourceFromFile(const std::filesystem::path& file) override;
    /** A picture that its camera held sideways is put upright. */
    std::shared_ptr<const zornic::ImageSource> sourceFromData(const std::string& data,
                                                              zornic::Size fittingSize,
                                                              double scale) override;
    CoverReading cover(const std::filesystem::path& file, zornic::Size fittingSize, double scale) override;
    /** Texts can be drawn on the main thread only. */
    std::shared_ptr<const zornic::ImageSource> sourceByDrawing(
        zornic::Size size, bool opaque, double scale,
        const std::function<void(zornic::Canvas&)>& draw) override;

private:
    const std::shared_ptr<PictureReader> _pictures;
    zornic::EvictingCache<std::string, std::shared_ptr<const zornic::ImageSource>> _files;
    RenderCache _drawn;
};

}  // namespace helmo

#include "Host/Display/VectorSource.h"

#include <librsvg/rsvg.h>

namespace helmo {

namespace {

/** From width and height, else from the view box; zero where it has none. */
zornic::Size intrinsicSize(RsvgHandle* handle) {
    zornic::Size size;
    if (rsvg_handle_get_intrinsic_size_in_pixels(handle, &size.width, &size.height)) return size;
    gboolean hasWidth = FALSE, hasHeight = FALSE, hasBox = FALSE;
    RsvgLength width, height;
    RsvgRectangle box{};
    rsvg_handle_get_intrinsic_dimensions(handle, &hasWidth, &width, &hasHeight, &height, &hasBox, &box);
    return hasBox ? zornic::Size{box.width, box.height} : zornic::Size{};
}

}  // namespace

std::shared_ptr<const VectorSource> VectorSource::fromData(const std::string& data) {
    ObjectPointer<RsvgHandle> handle(
        rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(data.data()), data.size(), nullptr));
    if (!handle) return nullptr;
    rsvg_handle_set_dpi(handle.get(), 96);
    const auto size = intrinsicSize(handle.get());
    if (!isWithinLimits(size.width, size.height)) return nullptr;
    return std::make_shared<const VectorSource>(std::move(handle), size, data.size());
}

VectorSource::VectorSource(ObjectPointer<_RsvgHandle> handle, zornic::Size size, std::size_t bytes)
    : _handle(std::move(handle)), _size(size), _cost(bytes) {}

VectorSource::~VectorSource() = default;

Surface VectorSource::rendered(int width, int height) const {
    Surface result(width, height);
    if (!result) return result;
    const auto context = makeContext(result);
    // Drawn at its own size under a stretching scale, since a viewport of another shape would add margins.
    cairo_scale(context.get(), width / _size.width, height / _size.height);
    const RsvgRectangle viewport{0, 0, _size.width, _size.height};
    const std::lock_guard lock(_mutex);
    rsvg_handle_render_document(_handle.get(), context.get(), &viewport, nullptr);
    return result;
}

}  // namespace helmo

#pragma once

#include <mutex>
#include <string>

#include "Host/Display/CairoImageSource.h"

struct _RsvgHandle;

namespace helmo {

/** A drawing, sharp at any size. One pixel of the file is a point. */
class VectorSource final : public CairoImageSource {
public:
    /** Reads an SVG; nothing that it refers to is opened. None when it is none or has no size. */
    static std::shared_ptr<const VectorSource> fromData(const std::string& data);

    VectorSource(ObjectPointer<_RsvgHandle> handle, zornic::Size size, std::size_t bytes);
    ~VectorSource() override;
    zornic::Size size() const override { return _size; }
    double scale() const override { return 0; }
    std::size_t cost() const override { return _cost; }
    Surface rendered(int width, int height) const override;

private:
    mutable std::mutex _mutex;  // the library draws one handle on one thread at a time
    const ObjectPointer<_RsvgHandle> _handle;
    const zornic::Size _size;
    const std::size_t _cost;
};

}  // namespace helmo

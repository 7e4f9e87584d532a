#pragma once

#include <string>

#include "Host/Display/CairoHandles.h"

typedef struct _PangoContext PangoContext;
typedef struct _PangoLayout PangoLayout;

namespace helmo::benchmarks {

/** Lays out short texts with Pango, each time anew, in one font with figures of equal width. */
class BareText {
public:
    explicit BareText(double size);
    /** Centred around `x`, white, the baseline at `y`. */
    void draw(cairo_t* context, const std::string& text, double x, double y) const;

private:
    ObjectPointer<PangoContext> _context;
};

}  // namespace helmo::benchmarks

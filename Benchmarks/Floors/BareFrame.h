#pragma once

#include <memory>
#include <variant>
#include <vector>

#include "Host/Display/CairoHandles.h"
#include "Host/Display/PangoTextLayout.h"
#include "Platform/Toolkit/Color.h"

namespace helmo::benchmarks {

/** A frame as a plain list of what is seen in it, drawn with nothing but Cairo and Pango: layouts, scaled and
   tinted pictures are kept. In pixels. */
class BareFrame {
public:
    struct Box {
        int x = 0, y = 0, width = 0, height = 0;
        bool contains(const Box& other) const;
        bool intersects(const Box& other) const;
    };
    static const Box wholeDisplay;
    struct Fill {
        Box box;
        double radius = 0;
        zornic::Color color;
    };
    struct Picture {
        Box box;
        Surface pixels;
    };
    /** `box` encloses its ink; `x` and `y` are the left end of its first baseline. */
    struct Text {
        Box box;
        std::shared_ptr<const PangoTextLayout> layout;
        zornic::Color color;
        int x = 0, y = 0;
    };
    using Mark = std::variant<Fill, Picture, Text>;

    /** Above what was added before. Only what lies within `clip` is seen; its part is cut out now. */
    void add(Mark mark, const Box& clip);
    /** Leaves only what has to be drawn to fill `area`: no ground that is covered or lies on its like. */
    void reduce(const Box& area);
    std::vector<Mark>& marks() { return _marks; }
    void draw(cairo_t* context) const;
    /** By way of a context made for it, as a frame is drawn. */
    void draw(const Surface& pixels) const { draw(clippedContext(pixels, wholeDisplay).get()); }
    static CairoPointer<cairo_t> clippedContext(const Surface& pixels, const Box& clip);

private:
    void dropRepeated();
    void dropCovered(const Box& area);

    std::vector<Mark> _marks;
};

inline constexpr BareFrame::Box BareFrame::wholeDisplay{0, 0, 800, 480};

}  // namespace helmo::benchmarks

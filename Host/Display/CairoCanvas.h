#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Host/Display/CairoHandles.h"
#include "Host/Display/RenderCache.h"
#include "Platform/Toolkit/Canvas.h"

namespace helmo {

/** Draws on pixels with Cairo. Rectangles, clips and images keep to whole pixels, so that edges are crisp at
   any scale; nothing that is filled gets thinner than a pixel. The thread that made it; texts on the main
   thread only. */
class CairoCanvas final : public zornic::Canvas {
public:
    /** `context` is of an ARGB surface, has no transformation and is kept; so is `cache`. `scale`: pixels a
     * point. */
    CairoCanvas(cairo_t* context, double scale, RenderCache& cache);
    ~CairoCanvas() override;

    void save() override;
    void restore() override;
    void translate(zornic::Point by) override;
    void clip(const zornic::Rect& area) override;
    void clipRounded(const zornic::Rect& area, double radius) override;
    zornic::Rect clipBounds() const override;
    double scale() const override { return _scale; }

    void fillRect(const zornic::Rect& area, zornic::Color color) override;
    void fillRoundedRect(const zornic::Rect& area, double radius, zornic::Color color) override;
    void fillGradient(const zornic::Rect& area, const std::vector<zornic::Color>& colors) override;
    void drawImage(const zornic::Image& image, const zornic::Rect& area, zornic::Color tint) override;
    void drawText(const zornic::TextLayout& text, zornic::Point topLeft, zornic::Color color) override;

    void beginGroup(const zornic::Rect& bounds) override;
    void endGroup(double opacity, const std::vector<zornic::ColorFilter>& filters,
                  zornic::CompositingMode mode) override;

private:
    struct PixelRect {
        int x = 0, y = 0, width = 0, height = 0;
    };
    /** How an image is laid over what is below. */
    struct Blending {
        double opacity = 1;
        cairo_operator_t mode = CAIRO_OPERATOR_OVER;
        std::vector<zornic::ColorFilter> filters{};
    };
    /** A group that holds a single image needs no surface of its own: what happens in it is done and noted
       until something else is drawn, and then repeated on a surface, or at the end, with the image blended in
       directly. */
    struct Group {
        zornic::Rect bounds;
        bool deferred = true;
        int saves = 0;
        std::vector<std::function<void()>> steps{};
        std::optional<zornic::Image> image{};
    };

    /** Makes a change now, and again should the group that is open get a surface. */
    template <class Change>
    void changeState(Change change) {
        change();
        if (!_groups.empty() && _groups.back().deferred) _groups.back().steps.emplace_back(std::move(change));
    }
    /** Gives a deferred group its surface. */
    void settle();
    void rewind(Group& group);
    void clipToGroup(const Group& group);
    void endDeferredGroup(Group group, Blending blending);
    void paintImage(const zornic::Image& image, const zornic::Rect& area, zornic::Color tint);

    zornic::Point toPixels(zornic::Point point) const;
    PixelRect snapped(const zornic::Rect& area) const;
    bool isVisible(const zornic::Rect& pixels) const;
    void setColor(zornic::Color color);
    void addRoundedPath(const zornic::Rect& area, double radius);

    cairo_t* const _context;
    const double _scale;
    RenderCache& _cache;
    Blending _blending;
    std::vector<Group> _groups;
};

}  // namespace helmo

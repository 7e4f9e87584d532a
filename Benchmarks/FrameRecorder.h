#pragma once

#include <vector>

#include "Benchmarks/Floors/BareFrame.h"
#include "Host/Display/RenderCache.h"
#include "Platform/Toolkit/Canvas.h"
#include "Platform/Toolkit/Window.h"

namespace helmo::benchmarks {

/** Notes what a window shows as a bare frame, at one pixel a point: where each text, picture and ground lies
   on the display. Throws at what a bare frame can't show. */
class FrameRecorder final : public zornic::Canvas {
public:
    /** Notes what lies within `area`. */
    explicit FrameRecorder(const BareFrame::Box& area) : _states{{{}, area}} {}
    BareFrame takeFrame() { return std::move(_frame); }

    void save() override { _states.push_back(_states.back()); }
    void restore() override { _states.pop_back(); }
    void translate(zornic::Point by) override { _states.back().origin = _states.back().origin + by; }
    void clip(const zornic::Rect& area) override;
    void clipRounded(const zornic::Rect& area, double radius) override;
    zornic::Rect clipBounds() const override;
    double scale() const override { return 1; }
    void fillRect(const zornic::Rect& area, zornic::Color color) override;
    void fillRoundedRect(const zornic::Rect& area, double radius, zornic::Color color) override;
    void fillGradient(const zornic::Rect& area, const std::vector<zornic::Color>& colors) override;
    void drawImage(const zornic::Image& image, const zornic::Rect& area, zornic::Color tint) override;
    void drawText(const zornic::TextLayout& text, zornic::Point topLeft, zornic::Color color) override;
    void beginGroup(const zornic::Rect& bounds) override;
    void endGroup(double opacity, const std::vector<zornic::ColorFilter>& filters,
                  zornic::CompositingMode mode) override;

private:
    struct State {
        zornic::Point origin;
        BareFrame::Box clip;
    };
    BareFrame::Box placed(const zornic::Rect& area) const;

    std::vector<State> _states;
    BareFrame _frame;
    RenderCache _renders;
};

/** What is seen of a window within `area`, as a bare frame with nothing in it that needn't be drawn. */
BareFrame recordedFrame(zornic::Window& window, const BareFrame::Box& area);

}  // namespace helmo::benchmarks

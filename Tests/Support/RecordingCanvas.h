#pragma once

#include <string>
#include <vector>

#include "Platform/Toolkit/Canvas.h"

namespace zornic {

/** Writes down what is drawn instead of drawing it, in the coordinates of what was rendered (a window's),
   leaving out what the clip hides altogether. `step` counts all drawings and groups, so that their order can
   be compared. */
class RecordingCanvas : public Canvas {
public:
    explicit RecordingCanvas(const Rect& area = {0, 0, 800, 480}, double scale = 1);

    struct Fill {
        Rect area;
        Color color;
        double radius = 0;
        int step = 0;
    };
    struct DrawnImage {
        std::string name;
        Image image;
        Rect area;
        Color tint;
        int step = 0;
    };
    struct DrawnText {
        /** As it is shown: with the ellipsis where it is truncated, lines parted by newlines. */
        std::string text;
        /** The text's own box, not the room that it was aligned in. */
        Rect area;
        double firstBaseline = 0;
        Color color;
        std::shared_ptr<const TextRequest> request;
        int step = 0;
    };
    struct Group {
        Rect bounds;
        double opacity = 1;
        std::vector<ColorFilter> filters;
        CompositingMode mode = CompositingMode::SourceOver;
        int beginStep = 0, endStep = 0;
        bool holds(int step) const { return step > beginStep && step < endStep; }
    };
    std::vector<Fill> fills;
    std::vector<DrawnImage> images;
    std::vector<DrawnText> texts;
    /** In the order in which they ended: inner ones first. */
    std::vector<Group> groups;

    /** The first text or image so called; none when it was not drawn. */
    const DrawnText* text(const std::string& text) const;
    const DrawnImage* image(const std::string& name) const;
    /** All texts in the order of drawing. */
    std::vector<std::string> shownTexts() const;
    /** Whether every save and group was closed. */
    bool isBalanced() const { return _states.size() == 1 && _open.empty(); }

    void save() override { _states.push_back(_states.back()); }
    void restore() override { _states.pop_back(); }
    void translate(Point by) override { _states.back().origin = _states.back().origin + by; }
    void clip(const Rect& area) override;
    void clipRounded(const Rect& area, double) override { clip(area); }
    Rect clipBounds() const override;
    double scale() const override { return _scale; }
    void fillRect(const Rect& area, Color color) override { fillRoundedRect(area, 0, color); }
    void fillRoundedRect(const Rect& area, double radius, Color color) override;
    void fillGradient(const Rect&, const std::vector<Color>&) override {}
    void drawImage(const Image& image, const Rect& area, Color tint) override;
    void drawText(const TextLayout& text, Point topLeft, Color color) override;
    void beginGroup(const Rect& bounds) override;
    void endGroup(double opacity, const std::vector<ColorFilter>& filters, CompositingMode mode) override;

private:
    struct State {
        Point origin;
        Rect clip;
    };
    Rect placed(const Rect& area) const { return area.offset(_states.back().origin); }
    bool isHidden(const Rect& area) const { return !placed(area).intersects(_states.back().clip); }

    const double _scale;
    std::vector<State> _states;
    std::vector<Group> _open;
    int _step = 0;
};

}  // namespace zornic

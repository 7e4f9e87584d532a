#pragma once

#include <memory>
#include <string>

#include "Platform/Foundation/Object.h"
#include "Platform/Toolkit/Geometry.h"
#include "Platform/Toolkit/Image.h"

namespace zornic {

enum class ScreenCapability { InteractionModels, TouchLevels };
namespace InteractionModel {
inline constexpr std::int64_t Touch = 1, Knob = 2;
}

/** A display: its size and what the car says of it. Main thread. */
class Screen : public Object {
public:
    Screen(Size size, double scale) : _size(size), _scale(scale) {}

    /** The car's display; none while there is none. */
    static std::shared_ptr<Screen> carScreen();
    static void setCarScreen(std::shared_ptr<Screen> screen);

    Rect bounds() const { return {{0, 0}, _size}; }
    /** Pixels a point. */
    double scale() const { return _scale; }
    void setSize(Size size, double scale);
    DisplayTraits traits() const { return {_scale}; }
    /** Interaction models: a bit set; touch levels: 0 full, more: reduced. May change between calls. */
    std::int64_t integerCapability(ScreenCapability capability) const;
    void setIntegerCapability(ScreenCapability capability, std::int64_t value);

private:
    Size _size;
    double _scale;
    std::int64_t _interactionModels = InteractionModel::Touch;
    std::int64_t _touchLevels = 0;
};

}  // namespace zornic

#pragma once

#include "Tools/DemoLibrary/Score.h"
#include "Tools/DemoLibrary/StereoBuffer.h"

namespace helmo::demo {

/** Piano, electric piano, bell and marimba: partials that start together and die away each at its own pace.
 */
class StruckInstrument {
public:
    /** Adds the note to `out`; what would sound past its end is dropped. */
    static void play(const Note& note, StereoBuffer& out);
};

}  // namespace helmo::demo

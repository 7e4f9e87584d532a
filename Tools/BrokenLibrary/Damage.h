#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Tools/BrokenLibrary/Samples.h"
#include "Tools/DemoLibrary/Random.h"

namespace helmo::broken {

/** What a library is to make of a file. */
enum class Outcome {
    /** No track, and a line that says why. */
    LeftOut,
    /** A track, and a line that says what of its tags was left out. */
    KeptWithLine,
    /** A track; nothing shows that anything is wrong before it is played or its cover is wanted. */
    Kept,
};
/** "left out", "kept with a line", "kept". */
std::string_view nameOf(Outcome outcome);

/** A way in which a file is broken. */
struct Damage {
    std::string name;
    std::string extension;
    Outcome outcome;
    /** Content of a file whose title, where it has one, is `title`. */
    std::function<std::string(const Samples&, demo::Random&, const std::string& title)> make;
};

const std::vector<Damage>& allDamages();

/** A sound file of `extension` with nothing wrong: titled where its tags are simple to write (mp3, flac). */
std::string goodFile(const Samples& samples, std::string_view extension, const std::string& title);

}  // namespace helmo::broken

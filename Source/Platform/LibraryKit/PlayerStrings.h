#pragma once

#include <cstdint>
#include <string>

namespace zornic {

/** How long a mode's text may be: a row of a menu or the label of a button. Labels mark an emphasised word by
 * "#". */
namespace PlayerStringStyle {
inline constexpr int Row = 0, Label = 2;
}

/** Text for a shuffle type; empty without the platform's texts. Main thread, as all of these. */
std::string shuffleTypeString(std::int64_t type, int style);

/** Text for a repeat type. `mediaType`: bits of what plays, all ones when unknown; `contextKind`: where the
   queue comes from, 1 an album, 2 an artist, 3 a playlist, 0 anything else. */
std::string repeatTypeString(std::int64_t type, std::int64_t mediaType, int contextKind, int style);

/** What a clock text tells. */
enum class ProgressKind {
    /** A time; negative: what remains. */
    Time = 0,
    /** How long something is, never with a sign. */
    Length = 1,
    /** What remains, with its sign for 0 too. */
    Remaining = 2
};

/** Clock text of whole seconds, "3:07", "1:02:45" or, for what remains, "-0:42". */
std::string progressString(std::int64_t seconds, ProgressKind kind);

}  // namespace zornic

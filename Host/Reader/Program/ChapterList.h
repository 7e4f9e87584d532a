#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "Host/Library/TagReader.h"

namespace helmo {

/** A chapter as a file has it, whatever sense that makes. */
struct FoundChapter {
    std::chrono::milliseconds start{0};
    /** None that makes sense: where the next one starts, or the file ends. */
    std::chrono::milliseconds end{-1};
    std::string title;
};

/** Brings the chapters of a file that lasts so long (0: nobody knows) into order: sorted by start, what lies
   outside the file left out, what reaches into the next one cut there, `maximumChapters` at most. */
class ChapterList {
public:
    ChapterList(std::vector<FoundChapter> found, std::chrono::milliseconds length);

    std::vector<TrackChapter>& chapters() { return _chapters; }
    /** What was wrong with them, in plain words; empty when nothing was. */
    const std::string& remarks() const { return _remarks; }

private:
    void note(const char* remark) { _remarks += std::string(_remarks.empty() ? "" : "; ") + remark; }

    std::vector<TrackChapter> _chapters;
    std::string _remarks;
};

}  // namespace helmo

#include "Host/Reader/Program/ChapterList.h"

#include <algorithm>

#include "Host/Library/TagText.h"

namespace helmo {

namespace {

using std::chrono::milliseconds;

/** Ends are often a few frames off, which is nothing to speak of. */
constexpr milliseconds tolerance{500};

}  // namespace

ChapterList::ChapterList(std::vector<FoundChapter> found, milliseconds length) {
    const auto isOutside = [&](const FoundChapter& chapter) {
        return chapter.start.count() < 0 || (length.count() > 0 && chapter.start >= length);
    };
    if (std::erase_if(found, isOutside) > 0) note("chapters outside of it are left out");
    if (!std::ranges::is_sorted(found, {}, &FoundChapter::start)) {
        note("its chapters are out of order");
        std::ranges::stable_sort(found, {}, &FoundChapter::start);
    }
    const auto isSameStart = [](const auto& one, const auto& next) { return one.start == next.start; };
    const auto twins = std::unique(found.begin(), found.end(), isSameStart);
    bool doOverlap = twins != found.end();
    found.erase(twins, found.end());
    for (std::size_t at = 0; at < found.size() && at < maximumChapters; ++at) {
        const auto& [start, end, title] = found[at];
        const bool isLast = at + 1 == found.size();
        const milliseconds limit = isLast ? std::max(length, start) : found[at + 1].start;
        doOverlap = doOverlap || (!isLast && end > limit + tolerance);
        if (isLast && length.count() > 0 && end > length + tolerance)
            note("its last chapter is cut where the file ends");
        const bool hasEnd = end > start && (end < limit || (isLast && length.count() == 0));
        _chapters.push_back({start, (hasEnd ? end : limit) - start, cleanTagText(title)});
    }
    if (doOverlap) note("chapters that overlap are cut");
    if (found.size() > maximumChapters) note("what follows its first 2000 chapters is left out");
}

}  // namespace helmo

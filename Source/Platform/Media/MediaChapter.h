#pragma once

#include <cstdint>
#include <string>

#include "Platform/Foundation/Task.h"

namespace zornic {

/** What a mark inside an item stands for. */
enum class MediaChapterType : std::int64_t { Chapter = 1 };

/** A mark inside an item, as a chapter that it holds of a book. A value. */
struct MediaChapter {
    /** Place among the chapters of its type, from 0. It counts on from one item to the next where they are
        parts of one whole. */
    std::uint64_t indexInChaptersWithSameType = 0;
    /** Inside its item. */
    Seconds startTime{0}, duration{0};
    std::string title{};
    friend bool operator==(const MediaChapter&, const MediaChapter&) = default;
};

}  // namespace zornic

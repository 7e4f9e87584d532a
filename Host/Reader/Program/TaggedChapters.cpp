#include "Host/Reader/Program/TaggedChapters.h"

#include <aifffile.h>
#include <chapterframe.h>
#include <cstdio>
#include <id3v2tag.h>
#include <map>
#include <mpegfile.h>
#include <optional>
#include <set>
#include <tableofcontentsframe.h>
#include <tpropertymap.h>
#include <wavfile.h>

#include "Host/Library/TagText.h"

namespace helmo {

namespace {

using std::chrono::milliseconds;
using TagLib::ID3v2::ChapterFrame;
using TagLib::ID3v2::TableOfContentsFrame;

const TagLib::ID3v2::Tag* id3v2Tag(TagLib::File& file) {
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file))
        return mpeg->hasID3v2Tag() ? mpeg->ID3v2Tag() : nullptr;
    if (auto* wave = dynamic_cast<TagLib::RIFF::WAV::File*>(&file))
        return wave->hasID3v2Tag() ? wave->ID3v2Tag() : nullptr;
    auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(&file);
    return aiff && aiff->hasID3v2Tag() ? aiff->tag() : nullptr;
}

/** Names of all that the main table of contents leads to, through tables inside it too; empty without one.
   Tables may name each other in circles. */
std::set<TagLib::ByteVector> contents(const TagLib::ID3v2::Tag& tag) {
    std::set<TagLib::ByteVector> names;
    std::vector<const TableOfContentsFrame*> tables, waiting;
    for (const auto* frame : tag.frameList("CTOC"))
        if (const auto* table = dynamic_cast<const TableOfContentsFrame*>(frame)) {
            tables.push_back(table);
            if (table->isTopLevel() && waiting.empty()) waiting.push_back(table);
        }
    while (!waiting.empty()) {
        const TagLib::ByteVectorList children = waiting.back()->childElements();
        waiting.pop_back();
        for (const auto& child : children) {
            if (!names.insert(child).second) continue;
            for (const auto* table : tables)
                if (table->elementID() == child) waiting.push_back(table);
        }
    }
    return names;
}

FoundChapter foundChapter(const ChapterFrame& frame) {
    constexpr auto untold = 0xffffffffu;  // then the place in the file says it, which nobody writes alone
    FoundChapter chapter;
    chapter.start = milliseconds(frame.startTime() == untold ? -1 : std::int64_t{frame.startTime()});
    if (frame.endTime() != untold) chapter.end = milliseconds(frame.endTime());
    if (const auto& titles = frame.embeddedFrameList("TIT2"); !titles.isEmpty())
        chapter.title = titles.front()->toString().to8Bit(true);
    return chapter;
}

std::vector<FoundChapter> chaptersOfFrames(const TagLib::ID3v2::Tag& tag) {
    const auto names = contents(tag);
    std::vector<FoundChapter> listed, all;
    for (const auto* frame : tag.frameList("CHAP")) {
        const auto* chapter = dynamic_cast<const ChapterFrame*>(frame);
        if (!chapter) continue;
        all.push_back(foundChapter(*chapter));
        if (names.contains(chapter->elementID())) listed.push_back(all.back());
    }
    constexpr std::size_t mostListed = 255;  // a table has no room for more
    return listed.empty() || all.size() > mostListed ? all : listed;
}

/** Of "01:02:03.500" or "02:03"; before the beginning when it is no time. */
milliseconds timeOf(const std::string& text) {
    unsigned hours = 0, minutes = 0;
    double seconds = 0;
    if (std::sscanf(text.c_str(), "%4u:%2u:%9lf", &hours, &minutes, &seconds) != 3) {
        hours = 0;
        if (std::sscanf(text.c_str(), "%5u:%9lf", &minutes, &seconds) != 2) return milliseconds(-1);
    }
    if (!(seconds >= 0 && seconds < 60)) return milliseconds(-1);
    return std::chrono::hours(hours) + std::chrono::minutes(minutes) +
           milliseconds(static_cast<std::int64_t>(seconds * 1000));
}

/** In the order of their numbers, which are written with and without leading zeros. */
std::vector<FoundChapter> chaptersOfComments(const TagLib::PropertyMap& properties) {
    constexpr std::string_view prefix = "CHAPTER";
    std::map<int, FoundChapter> chapters;
    for (const auto& [name, values] : properties) {
        const std::string key = name.to8Bit(true);
        const bool isNumbered = key.starts_with(prefix) && key.size() > prefix.size() &&
                                key.find_first_not_of("0123456789", prefix.size()) == std::string::npos;
        if (!isNumbered || values.isEmpty()) continue;
        const auto title = properties.find(name + "NAME");
        const bool hasTitle = title != properties.end() && !title->second.isEmpty();
        chapters[firstNumber(key)] = {timeOf(values.front().to8Bit(true)), milliseconds(-1),
                                      hasTitle ? title->second.front().to8Bit(true) : std::string()};
    }
    std::vector<FoundChapter> list;
    for (auto& [number, chapter] : chapters) list.push_back(std::move(chapter));
    return list;
}

}  // namespace

std::vector<FoundChapter> taggedChapters(TagLib::File& file, const TagLib::PropertyMap& properties) {
    const auto* tag = id3v2Tag(file);
    auto chapters = tag ? chaptersOfFrames(*tag) : std::vector<FoundChapter>();
    return chapters.empty() ? chaptersOfComments(properties) : chapters;
}

}  // namespace helmo

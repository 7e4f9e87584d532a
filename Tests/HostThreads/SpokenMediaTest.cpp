#include <chapterframe.h>
#include <flacfile.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <tableofcontentsframe.h>
#include <textidentificationframe.h>

#include "Tests/HostThreads/TaggedScanFixture.h"

namespace helmo {
namespace {

namespace Item = zornic::MediaItemProperty;
namespace Type = zornic::MediaType;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using SoundFiles::big;
using SoundFiles::flac;

std::string box(const std::string& name, const std::string& content) {
    return big(content.size() + 8, 4) + name + content;
}

struct Mark {
    int second;
    std::string title;
};

std::string handler(const char* kind) { return box("hdlr", big(0, 8) + kind + std::string(13, '\0')); }

std::string track(int id, const char* kind, const std::string& codec, const std::string& samples, int seconds,
                  const std::string& references = "") {
    const std::string length = big(0, 12) + big(1000, 4) + big(seconds * 1000u, 4) + big(0, 4);
    const std::string table = box("stsd", big(0, 4) + big(1, 4) + codec) + samples;
    return box("trak",
               box("tkhd", big(0, 12) + big(static_cast<unsigned>(id), 4)) + references +
                   box("mdia", handler(kind) + box("mdhd", length) + box("minf", box("stbl", table))));
}

/** A minute of sound; `list`: chapters in a list, `texts`: in a track that lies at the end, two samples in
   its first chunk. */
std::string mp4(const std::vector<Mark>& list, const std::vector<Mark>& texts, bool hasVideo = false) {
    const std::string sound = big(0, 16) + big(1, 2) + big(16, 2) + big(0, 4) + big(1000, 2) + big(0, 2);
    std::string entries, sizes, durations, samples, chunks;
    for (const auto& [second, title] : list)
        entries += big(second * 10'000'000ull, 8) + big(title.size(), 1) + title;
    for (std::size_t at = 0; at < texts.size(); ++at) {
        const std::string sample = big(texts[at].title.size(), 2) + texts[at].title;
        if (at != 1) chunks += big(8 + samples.size(), 4);  // counted from the head of the box they lie in
        samples += sample;
        sizes += big(sample.size(), 4);
        const int next = at + 1 < texts.size() ? texts[at + 1].second : 60;
        durations += big(1, 4) + big(static_cast<unsigned>(next - texts[at].second) * 1000u, 4);
    }
    const std::string grouping =
        big(0, 4) + big(2, 4) + big(1, 4) + big(2, 4) + big(1, 4) + big(2, 4) + big(1, 4) + big(1, 4);
    const std::string lead = box("mdat", samples);
    const std::string shift = box("ftyp", "M4A " + big(0, 4));
    for (std::size_t at = 0; at < chunks.size(); at += 4)
        chunks.replace(at, 4, big(shift.size() + static_cast<unsigned char>(chunks[at + 3]), 4));
    const std::string table = box("stts", big(0, 4) + big(texts.size(), 4) + durations) +
                              box("stsz", big(0, 8) + big(texts.size(), 4) + sizes) + box("stsc", grouping) +
                              box("stco", big(0, 4) + big(chunks.size() / 4, 4) + chunks);
    std::string movie = track(1, "soun", box("mp4a", sound), "", 60,
                              texts.empty() ? "" : box("tref", box("chap", big(2, 4))));
    if (!texts.empty()) movie += track(2, "text", box("text", ""), table, 60);
    if (hasVideo) movie += track(3, "vide", box("avc1", ""), "", 60);
    if (!list.empty())
        movie += box("udta", box("chpl", big(0x01000000, 4) + big(0, 4) + big(list.size(), 1) + entries));
    return shift + lead + box("moov", movie);
}

std::string element(std::uint32_t id, const std::string& content) {
    const int bytes = id > 0xffffff ? 4 : id > 0xffff ? 3 : id > 0xff ? 2 : 1;
    return big(id, bytes) + big(0x10000000 | content.size(), 4) + content;
}

std::string matroska(bool hasSound, bool hasVideo, const std::string& genre) {
    const auto trackOf = [](int type) {
        return element(0xAE, element(0x83, big(static_cast<unsigned>(type), 1)));
    };
    const auto chapter = [](std::uint64_t seconds, const std::string& title) {
        return element(0xB6,
                       element(0x91, big(seconds * 1'000'000'000, 8)) + element(0x80, element(0x85, title)));
    };
    const auto tag = [](const std::string& name, const std::string& value) {
        return element(0x67C8, element(0x45A3, name) + element(0x4487, value));
    };
    return element(0x1A45DFA3, "") +
           element(
               0x18538067,
               element(0x1549A966, element(0x7BA9, "Film") + element(0x4489, big(0x40F86A0000000000, 8))) +
                   element(0x1654AE6B, (hasSound ? trackOf(2) : "") + (hasVideo ? trackOf(1) : "")) +
                   element(0x1043A770, element(0x45B9, chapter(0, "Start") + chapter(60, "Rest"))) +
                   element(0x1254C367, element(0x7373, tag("ARTIST", "Band") + tag("genre", genre))));
}

struct Chapter {
    unsigned start, end;
    std::string title;
};

class SpokenMedia : public TaggedScanFixture {
protected:
    void song(const fs::path& name, const Properties& properties) {
        tagged<TagLib::FLAC::File>(name, flac(), properties);
    }
    /** An MP3 file of a minute with these chapters in its tag; named in its contents, except "hidden". */
    void book(const fs::path& name, const Properties& properties, const std::vector<Chapter>& chapters) {
        tagged<TagLib::MPEG::File>(name, SoundFiles::mpeg(60), properties);
        TagLib::MPEG::File file((music() / name).c_str());
        auto* tag = file.ID3v2Tag(true);
        TagLib::ByteVectorList children;
        int number = 0;
        for (const auto& [start, end, title] : chapters) {
            const std::string id = "c" + std::to_string(number++);
            const TagLib::ByteVector bytes(id.c_str());
            auto* frame = new TagLib::ID3v2::ChapterFrame(bytes, start, end, ~0u, ~0u);
            auto* text = new TagLib::ID3v2::TextIdentificationFrame("TIT2", TagLib::String::UTF8);
            text->setText(TagLib::String(title, TagLib::String::UTF8));
            frame->addEmbeddedFrame(text);
            tag->addFrame(frame);
            if (title != "hidden") children.append(bytes);
        }
        children.append("toc");  // a circle
        auto* contents = new TagLib::ID3v2::TableOfContentsFrame("toc", children);
        contents->setIsTopLevel(true);
        tag->addFrame(contents);
        EXPECT_TRUE(file.save());
    }
    std::int64_t kindOf(const std::string& title) const {
        const auto found = named(title);
        return found ? found->mediaType() : -1;
    }
    /** "1 0+10 Title": index, start, length. */
    std::vector<std::string> chapters(const std::string& title) const {
        std::vector<std::string> result;
        for (const auto& chapter : named(title)->chaptersOfType(zornic::MediaChapterType::Chapter))
            result.push_back(std::to_string(chapter.indexInChaptersWithSameType) + " " +
                             std::to_string(std::lround(chapter.startTime.count())) + "+" +
                             std::to_string(std::lround(chapter.duration.count())) + " " + chapter.title);
        return result;
    }
};

TEST_F(SpokenMedia, KindsAreToldByTagsThenByFoldersThenByFiles) {
    song("a.flac", {{"TITLE", "Song"}, {"GENRE", "Jazz"}});
    song("b.flac", {{"TITLE", "Genre"}, {"GENRE", "Hörspiel"}, {"ALBUM", "Krimi"}});
    song("c.flac", {{"TITLE", "Second genre"}, {"GENRE", "Science; Lecture"}, {"ALBUM", "Stars"}});
    song("Podcasts/Daily/d.flac", {{"TITLE", "By folder"}, {"DATE", "2024"}, {"RELEASEDATE", "2024-05-17"}});
    song("Podcasts/Daily/e.flac", {{"TITLE", "Tags win"}, {"PODCASTURL", ""}, {"GENRE", "Audiobook"}});
    song("Podcasts/Lo\xcc\x88se/Vorlesungen/f.flac", {{"TITLE", "Innermost"}});
    song(
        "Ho\xcc\x88rbu\xcc\x88"
        "cher/Saga/CD 2/g.flac",
        {{"TITLE", "Part"}, {"DISCNUMBER", "2"}});
    song("AUDIO-BOOKS/h.flac", {{"TITLE", "Lone book"}});
    song("i.flac", {{"TITLE", "Told"}, {"PODCAST", "1"}, {"ALBUM", "News"}});
    song("j.flac", {{"TITLE", "Told by a word"}, {"XMEDIATYPE", "Audiobook"}, {"ALBUM", "Tale"}});
    write("AudioBooks/untagged.flac", flac());
    tagged<TagLib::MP4::File>("k.m4b", mp4({}, {}), {{"TITLE", "Ending"}});
    tagged<TagLib::MP4::File>("l.mp4", mp4({}, {}, true), {{"TITLE", "Clip"}, {"ARTIST", "Band"}});
    tagged<TagLib::MP4::File>("m.mp4", mp4({}, {}), {{"TITLE", "No pictures"}});
    write("n.mkv", matroska(true, true, "Pop"));
    write("mute.webm", matroska(false, true, "Pop"));
    EXPECT_THAT(scan(), HasSubstr("mute.webm: no music can be found in it"));

    const std::map<std::string, std::int64_t> kinds = {
        {"Song", Type::Music},         {"Genre", Type::Audiobook},          {"Second genre", Type::Lecture},
        {"By folder", Type::Podcast},  {"Tags win", Type::Audiobook},       {"Innermost", Type::Lecture},
        {"Part", Type::Audiobook},     {"Lone book", Type::Audiobook},      {"Told", Type::Podcast},
        {"untagged", Type::Audiobook}, {"Told by a word", Type::Audiobook}, {"Ending", Type::Audiobook},
        {"Clip", Type::MusicVideo},    {"No pictures", Type::Music},        {"Film", Type::MusicVideo}};
    for (const auto& [title, kind] : kinds) EXPECT_EQ(kindOf(title), kind) << title;
    EXPECT_EQ(query()->_countOfItems(), kinds.size());

    EXPECT_EQ(named("By folder")->podcastTitle(), "Daily") << "what no tag says, its folder does";
    EXPECT_EQ(named("By folder")->valueForProperty(Item::ReleaseDate).asDate(),
              zornic::Date(std::chrono::sys_days(std::chrono::year(2024) / 5 / 17) + std::chrono::hours(12)));
    EXPECT_EQ(named("Part")->albumTitle(), "Saga");
    EXPECT_EQ(named("Lone book")->albumTitle(), "Lone book") << "not a book called like the folder of all";
    EXPECT_EQ(named("untagged")->albumTitle(), "untagged");
    EXPECT_EQ(named("Film")->artist(), "Band");
    EXPECT_EQ(named("Film")->playbackDuration(), 100);
    const auto lecture = named("Second genre");
    EXPECT_TRUE(lecture->valueForProperty(Item::IsSonvaleU).asBool());
    EXPECT_TRUE(lecture->valueForProperty(Item::RememberBookmarkTime).asBool());
    EXPECT_FALSE(named("Song")->valueForProperty(Item::RememberBookmarkTime).asBool());
    EXPECT_EQ(query({}, {zornic::MediaPredicate::property(Item::IsSonvaleU, true)})->_countOfItems(), 2u);
}

TEST_F(SpokenMedia, ChaptersComeFromEveryKindOfFileAndCountOnThroughTheParts) {
    const Properties saga = {{"ALBUM", "Saga"}, {"ARTIST", "Ann"}, {"GENRE", "Audiobook"}};
    const auto part = [&](const char* title, const char* number) {
        Properties properties = saga;
        properties["TITLE"] = title;
        properties["TRACKNUMBER"] = number;
        return properties;
    };
    book("1.mp3", part("One", "1"), {{0, 20'000, "Zwölf"}, {20'000, 60'000, "Dreizehn"}, {5, 9, "hidden"}});
    tagged<TagLib::MP4::File>(
        "2.m4b", mp4({{0, "not this one"}}, {{0, "a"}, {10, "b"}, {25, "c"}, {40, "d"}}), part("Two", "2"));
    tagged<TagLib::MP4::File>("3.m4b", mp4({{0, "x"}, {30, "y"}}, {}), part("Three", "3"));
    song("song.flac", {{"TITLE", "Comments"},
                       {"CHAPTER9", "00:00:00.250"},
                       {"CHAPTER9NAME", "Nine"},
                       {"CHAPTER10", "00:00.5"},
                       {"CHAPTERNOTE", "none"}});
    write("film.mkv", matroska(true, true, "Pop"));
    EXPECT_EQ(scan(), "");

    EXPECT_THAT(chapters("One"), ElementsAre("0 0+20 Zwölf", "1 20+40 Dreizehn"));
    EXPECT_THAT(chapters("Two"), ElementsAre("2 0+10 a", "3 10+15 b", "4 25+15 c", "5 40+20 d"));
    EXPECT_THAT(chapters("Three"), ElementsAre("6 0+30 x", "7 30+30 y"));
    EXPECT_THAT(chapters("Comments"), ElementsAre("0 0+0 Nine", "1 1+1 "));
    EXPECT_THAT(chapters("Film"), ElementsAre("0 0+60 Start", "1 60+40 Rest"));

    book("1.mp3", part("One", "1"), {});
    scan();
    EXPECT_THAT(chapters("One"), IsEmpty()) << "what a file no longer holds";
    EXPECT_THAT(chapters("Three"), ElementsAre("4 0+30 x", "5 30+30 y"));
}

TEST_F(SpokenMedia, BrokenChaptersAreMendedAndTheirFileNamed) {
    const auto broken = [&](const std::string& name, const std::vector<Chapter>& chapters) {
        book(name + ".mp3", {{"TITLE", name}}, chapters);
    };
    broken("Turned", {{30'000, 60'000, "b"}, {0, 30'000, "a"}});
    broken("Overlap",
           {{0, 50'000, "a"}, {10'000, 5'000, "b"}, {10'000, 20'000, "again"}, {30'000, 31'000, "c"}});
    broken("Late", {{0, 30'000, "a"}, {30'000, 90'000, "b"}});
    broken("Outside", {{0, 10'000, "a"}, {900'000, 910'000, "b"}, {~0u, ~0u, "c"}});
    Properties many = {{"TITLE", "Many"}};
    for (int at = 0; at < 2100; ++at)
        many["CHAPTER" + std::to_string(at)] =
            "00:" + std::to_string(at / 60) + ":" + std::to_string(at % 60);
    tagged<TagLib::FLAC::File>("Many.flac", flac(3600), many);
    std::string cut = mp4({{0, "x"}, {30, "y"}}, {});
    cut.replace(cut.find("chpl") + 12, 1, "\xff");  // more than there are
    tagged<TagLib::MP4::File>("cut.m4b", cut, {{"TITLE", "Cut"}});
    const std::string log = scan();

    const std::string folder = "scan: " + music().string() + "/";
    for (const char* line :
         {"Turned.mp3: its chapters are out of order\n", "Overlap.mp3: chapters that overlap are cut\n",
          "Late.mp3: its last chapter is cut where the file ends\n",
          "Outside.mp3: chapters outside of it are left out\n",
          "Many.flac: what follows its first 2000 chapters is left out\n"})
        EXPECT_THAT(log, HasSubstr(folder + line));
    EXPECT_EQ(std::ranges::count(log, '\n'), 5) << log;
    EXPECT_THAT(chapters("Late"), ElementsAre("0 0+30 a", "1 30+30 b"));
    EXPECT_THAT(chapters("Turned"), ElementsAre("0 0+30 a", "1 30+30 b"));
    EXPECT_THAT(chapters("Overlap"), ElementsAre("0 0+10 a", "1 10+20 b", "2 30+1 c"));
    EXPECT_THAT(chapters("Outside"), ElementsAre("0 0+10 a"));
    EXPECT_EQ(chapters("Many").size(), 2000u);
    EXPECT_THAT(chapters("Cut"), ElementsAre("0 0+30 x", "1 30+30 y"));
}

}  // namespace
}  // namespace helmo

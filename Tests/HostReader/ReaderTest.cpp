#include <cerrno>
#include <cmath>
#include <filesystem>
#include <sys/wait.h>

#include "Host/Reader/PictureReader.h"
#include "Host/Reader/ReaderMessage.h"
#include "Host/Reader/ReaderTagReader.h"

namespace helmo {
namespace {

using namespace std::chrono_literals;

std::shared_ptr<ReaderProgram> hostileReader() {
    return std::make_shared<ReaderProgram>(FAKE_READER, 3s);  // a busy machine takes a while to start one
}

bool hasNoChildLeft() { return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

TEST(ReaderTest, NamesTheFileAtWhichAReaderFailsAndReadsAllOthers) {
    const std::map<int, std::pair<std::string, std::string>> hostile = {
        {0, {"crash", "the reader crashed at it (signal 6)"}},
        {20, {"crash", "the reader crashed at it (signal 6)"}},
        {21, {"crash", "the reader crashed at it (signal 6)"}},
        {55, {"hang", "reading took longer than 3 s"}},
        {80, {"memory", "reading needed more memory than allowed"}},
        {120, {"rubbish", "the reader gave no sensible answer"}},
        {121, {"exception", "it can't be read: told so"}},
        {199, {"exit", "the reader crashed at it (exit status 3)"}}};
    constexpr int count = 200, ahead = 60;
    const auto nameOf = [&](int at) {
        if (const auto found = hostile.find(at); found != hostile.end()) return found->second.first;
        return at == 150 ? std::string("damage") : "song " + std::to_string(at);
    };
    {
        ReaderTagReader reader(hostileReader());
        const auto stream = reader.stream();
        EXPECT_FALSE(stream->take(true)) << "nothing was asked for";
        int asked = 0;
        for (int at = 0; at < count; ++at) {
            for (; asked < count && stream->pending() < ahead; ++asked)
                stream->ask("/m/" + nameOf(asked) + ".mp3");
            auto reading = at % 3 ? stream->take(true) : stream->take(false);
            if (!reading) reading = stream->take(true);
            ASSERT_TRUE(reading) << at;
            const bool isHostile = hostile.contains(at);
            EXPECT_EQ(reading->isTrack, !isHostile) << at << ": " << reading->problem;
            EXPECT_EQ(reading->problem, isHostile ? hostile.at(at).second : "") << at;
            EXPECT_EQ(reading->tags.title, isHostile ? "" : nameOf(at));
        }
        EXPECT_EQ(stream->pending(), 0u);
    }
    EXPECT_TRUE(hasNoChildLeft());
}

TEST(ReaderTest, WithoutAReaderFilesAreTracksWithoutTags) {
    for (const char* const program : {"/nowhere/at/all", "/bin/false", "/dev/null"}) {
        ReaderTagReader reader(std::make_shared<ReaderProgram>(program));
        testing::internal::CaptureStderr();
        const auto stream = reader.stream();
        for (int at = 0; at < 20; ++at) stream->ask("/m/" + std::to_string(at));
        while (const auto reading = stream->take(true)) {
            EXPECT_TRUE(reading->isTrack);
            EXPECT_EQ(reading->tags.title + reading->problem, "");
        }
        EXPECT_TRUE(reader.read("/m/one").isTrack);
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
        EXPECT_THAT(log, testing::HasSubstr(program));
    }
    EXPECT_TRUE(hasNoChildLeft());
}

ReaderReply sampleReply() {
    TagReading reading;
    reading.problem = "half of it";
    reading.tags.title = "Ärger im Zug \xf0\x9f\x8e\xb5";
    reading.tags.albumArtist = std::string(1024, 'x');
    reading.tags.trackNumber = 99'999;
    reading.tags.year = 1999;
    reading.tags.mediaType = zornic::MediaType::MusicVideo;
    reading.tags.isExplicit = true;
    reading.tags.duration = 61.25;
    reading.tags.releaseDate = zornic::Date(std::chrono::sys_days(std::chrono::year(1812) / 3 / 4));
    reading.tags.picture = 0x7fffffffffffffff;
    reading.tags.hasVideo = true;
    reading.tags.chapters = {{0ms, 1500ms, "Eins"}, {1500ms, 10h, ""}};
    return {7, reading};
}

TEST(ReaderMessageTest, WhatIsSentArrivesAndWhatIsDamagedIsNoticed) {
    std::string stream;
    append(sampleReply(), stream);
    const std::size_t sizeOfTags = stream.size();
    append(ReaderReply{8, PictureReading{{2, 1, {0xff112233, 0x80402010}}, {}}}, stream);
    std::string_view rest = stream;
    ReaderReply reply;
    ASSERT_EQ(take(rest, reply, largestTagReply), MessageState::Whole);
    const auto& tags = std::get<TagReading>(reply.reading).tags;
    const auto sent = std::get<TagReading>(sampleReply().reading).tags;
    EXPECT_EQ(std::tie(tags.title, tags.albumArtist, tags.trackNumber, tags.year, tags.mediaType,
                       tags.isExplicit, tags.isCompilation, tags.duration, tags.releaseDate, tags.picture,
                       tags.hasVideo, tags.chapters),
              std::tie(sent.title, sent.albumArtist, sent.trackNumber, sent.year, sent.mediaType,
                       sent.isExplicit, sent.isCompilation, sent.duration, sent.releaseDate, sent.picture,
                       sent.hasVideo, sent.chapters));
    ASSERT_EQ(take(rest, reply, largestTagReply), MessageState::Whole);
    EXPECT_EQ(std::get<PictureReading>(reply.reading).picture.pixels[1], 0x80402010);
    EXPECT_EQ(take(rest, reply, largestTagReply), MessageState::Incomplete);

    for (std::size_t size = 0; size < sizeOfTags; ++size) {
        std::string_view cut = std::string_view(stream).substr(0, size);
        EXPECT_EQ(take(cut, reply, largestTagReply), MessageState::Incomplete) << size;
    }
    const auto stateWith = [&](std::size_t at, std::string_view bytes) {
        std::string damaged = stream;
        damaged.replace(at, bytes.size(), bytes);
        std::string_view view = damaged;
        return take(view, reply, largestTagReply);
    };
    const auto title = stream.find("rger");
    EXPECT_EQ(stateWith(0, "\xff\xff\xff\x7f"), MessageState::Rubbish) << "a length beyond all lengths";
    EXPECT_EQ(stateWith(4, std::string_view("\0\0\0\0", 4)), MessageState::Rubbish) << "no number";
    EXPECT_EQ(stateWith(8, "\x7"), MessageState::Rubbish) << "no kind";
    EXPECT_EQ(stateWith(title, "\xff"), MessageState::Rubbish) << "no UTF-8";
    EXPECT_EQ(stateWith(title, "\n"), MessageState::Rubbish) << "a text that would break a line";
    EXPECT_EQ(stateWith(title - 3, "\x7f"), MessageState::Rubbish) << "a text longer than it is";

    const auto stateOf = [&](const ReaderReply& wrong) {
        std::string bytes;
        append(wrong, bytes);
        std::string_view view = bytes;
        return take(view, reply, largestTagReply);
    };
    ReaderReply wrong = sampleReply();
    std::get<TagReading>(wrong.reading).tags.duration = std::nan("");
    EXPECT_EQ(stateOf(wrong), MessageState::Rubbish);
    wrong = sampleReply();
    auto& chapters = std::get<TagReading>(wrong.reading).tags.chapters;
    chapters[0].duration = 1501ms;
    EXPECT_EQ(stateOf(wrong), MessageState::Rubbish) << "a chapter that reaches into the next";
    chapters.clear();
    for (int at = 0; at < 3000; ++at) chapters.push_back({at * 1ms, 1ms, std::string(500, 'x')});
    ASSERT_EQ(stateOf(wrong), MessageState::Whole) << "what is too much is left out";
    EXPECT_EQ(std::get<TagReading>(reply.reading).tags.chapters.size(), maximumChapters);
    EXPECT_EQ(stateOf({1, PictureReading{{3, 3, std::vector<std::uint32_t>(8)}, {}}}), MessageState::Rubbish);
    EXPECT_EQ(stateOf({1, PictureReading{}}), MessageState::Rubbish) << "neither a picture nor a reason";
}

}  // namespace
}  // namespace helmo

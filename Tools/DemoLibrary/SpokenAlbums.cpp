#include "Tools/DemoLibrary/Catalogue.h"

namespace helmo::demo {

std::vector<Album> spokenAlbums() {
    using enum Mood;
    return {
        {.title = "The Cartographer's Orchard",
         .artist = "Harriet Penmoor",
         .genre = "Audiobook",
         .year = 2015,
         .style = Style::Story,
         .format = Format::M4a,
         .cover = {CoverPlace::Embedded, Motif::Orchard, {0xf1e3c6, 0xe2c799, 0x5b7f3a, 0xb5452c}},
         .kind = Kind::Audiobook,
         .tracks = {{.title = "Chapter 1: A Map with No Edge", .mood = Warm, .seconds = 28},
                    {.title = "Chapter 2: Windfall", .mood = Wistful, .seconds = 26},
                    {.title = "Chapter 3: What the Surveyor Kept", .mood = Nocturnal, .seconds = 24}}},
        {.title = "The Keeper of Quiet Hours",
         .artist = "Osric Fennimore",
         .genre = "Audiobook",
         .year = 2018,
         .style = Style::Story,
         .format = Format::Mp3,
         .cover = {CoverPlace::Embedded, Motif::Moon, {0x1d2b4f, 0x3c4f76, 0xe9d8a6, 0xf6f1e1}},
         .kind = Kind::Audiobook,
         .tracks =
             {{.title = "The Keeper of Quiet Hours, Part 1",
               .mood = Nocturnal,
               .seconds = 60,
               .chapters = {{"The Stopped Clock", 0}, {"A Guest at Midnight", 18}, {"Oil and Wick", 41}}},
              {.title = "The Keeper of Quiet Hours, Part 2",
               .mood = Wistful,
               .seconds = 54,
               .chapters = {{"Low Lamps", 0}, {"The Second Key", 20}, {"Daybreak", 38}}}}},
        {.title = "Salt & Static",
         .artist = "Wren Halloway",
         .genre = "Podcast",
         .year = 2024,
         .style = Style::Story,
         .format = Format::Mp3,
         .cover = {CoverPlace::Embedded, Motif::Harbour, {0x123c4a, 0x2b7a78, 0xdef2f1, 0xff9f6e}},
         .kind = Kind::Podcast,
         .tracks =
             {{.title = "1: The Foghorn That Answered", .mood = Warm, .seconds = 30, .date = "2024-02-06"},
              {.title = "2: Letters from the Lightship",
               .mood = Wistful,
               .seconds = 28,
               .date = "2024-02-20"},
              {.title = "3: Who Tunes the Buoys?", .mood = Bright, .seconds = 26, .date = "2024-03-05"}}},
        {.title = "Reading the Night Sky",
         .artist = "Idris Quennell",
         .genre = "Lecture",
         .year = 2020,
         .style = Style::Story,
         .format = Format::Opus,
         .cover = {CoverPlace::CoverJpeg, Motif::Star, {0x0b1026, 0x2b1b54, 0xf4e9cd, 0x8ab6f9}},
         .kind = Kind::Lecture,
         .tracks = {{.title = "What a Constellation Is", .mood = Nocturnal, .seconds = 26},
                    {.title = "Steering by Three Stars", .mood = Warm, .seconds = 24},
                    {.title = "Distances, and How to Doubt Them", .mood = Wistful, .seconds = 25}}},
    };
}

}  // namespace helmo::demo

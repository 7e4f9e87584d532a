#include "Benchmarks/FrameLibrary.h"

#include <fstream>
#include <stdexcept>
#include <string>

#include "Host/Display/CairoHandles.h"
#include "Host/Library/MediaFiles.h"
#include "Host/Library/SqliteMediaLibrary.h"

namespace helmo::benchmarks {

namespace fs = std::filesystem;

namespace {

constexpr int songsAnAlbum = 10, differentCovers = 12;
constexpr double songLength = 3600;

const char* const words[] = {"Amber", "River", "Slow",   "Window", "Äther", "Night", "Harbour", "Lantern",
                             "Train", "Blue",  "Summer", "Déjà",   "North", "Paper", "Circle",  "Winter"};

std::string name(int number, int count) {
    std::string result;
    for (int i = 0; i < count; ++i, number = number / 16 + 7 * i + 5)
        result += (i > 0 ? " " : "") + std::string(words[number % 16]);
    return result;
}

/** Light and dark circles on a ground of its own. */
void paintCover(const fs::path& file, int number) {
    constexpr int side = 600;
    const Surface pixels(cairo_image_surface_create(CAIRO_FORMAT_RGB24, side, side));
    const auto context = makeContext(pixels);
    const double hue = number / static_cast<double>(differentCovers);
    cairo_set_source_rgb(context.get(), hue, 0.35, 1 - hue);
    cairo_paint(context.get());
    for (int ring = 8; ring > 0; --ring) {
        cairo_set_source_rgb(context.get(), ring % 2, hue, 0.2 + ring * 0.1);
        cairo_arc(context.get(), side * (0.3 + hue / 3), side * 0.5, ring * side / 18.0, 0, 6.2832);
        cairo_fill(context.get());
    }
    cairo_surface_write_to_png(pixels.get(), file.c_str());
}

void addAlbum(TrackStore& store, const fs::path& music, int album) {
    const fs::path folder = music / std::to_string(album);
    fs::create_directories(folder);
    const fs::path cover = folder / "cover.png";
    if (album < differentCovers)
        paintCover(cover, album);
    else
        fs::create_hard_link(music / std::to_string(album % differentCovers) / "cover.png", cover);
    store.setFolderPicture(store.folderId(folder), "cover.png", FileStamp::of(cover).value().mtime);
    for (int song = 0; song < songsAnAlbum; ++song) {
        MusicFile file{folder, std::to_string(song) + ".ogg"};
        std::ofstream(file.path()).flush();
        const auto stamp = FileStamp::of(file.path()).value();
        file.size = stamp.size;
        file.mtime = stamp.mtime;
        TrackTags tags;
        tags.title = name(album * songsAnAlbum + song, 2 + song % 3);
        tags.artist = name(album / 3 * 5, 2);
        tags.albumTitle = name(album * 11, 3) + " " + std::to_string(album);
        tags.trackNumber = song + 1;
        tags.duration = songLength;
        store.store(file, tags);
    }
}

}  // namespace

FrameLibrary::FrameLibrary(int albums) {
    const auto library = SqliteMediaLibrary::open(data() / "library.sqlite");
    const bool isKept = library && library->write([&](TrackStore& store) {
        for (int album = 0; album < albums; ++album) addAlbum(store, music(), album);
    });
    if (!isKept) throw std::runtime_error("the library for the benchmarks can't be written");
}

}  // namespace helmo::benchmarks

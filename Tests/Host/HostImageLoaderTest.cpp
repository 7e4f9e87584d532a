#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <gdk-pixbuf/gdk-pixbuf.h>

#include "Host/Display/HostImageLoader.h"
#include "Host/TemporaryFolder.h"

namespace helmo {
namespace {

/** A picture, red in its left half and blue in its right, encoded. */
std::string encoded(int width, int height, const char* format) {
    const ObjectPointer<GdkPixbuf> picture(gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, width, height));
    gdk_pixbuf_fill(picture.get(), 0xFF0000FF);
    const ObjectPointer<GdkPixbuf> right(
        gdk_pixbuf_new_subpixbuf(picture.get(), width / 2, 0, width - width / 2, height));
    gdk_pixbuf_fill(right.get(), 0x0000FFFF);
    gchar* bytes = nullptr;
    gsize size = 0;
    gdk_pixbuf_save_to_buffer(picture.get(), &bytes, &size, format, nullptr, nullptr);
    std::string result(bytes, size);
    g_free(bytes);
    return result;
}

/** One that has pictures decoded. */
HostImageLoader& pictureLoader() {
    static HostImageLoader loader(
        std::make_shared<PictureReader>(std::make_shared<ReaderProgram>(HELMO_READER)));
    return loader;
}

std::uint32_t pixel(const zornic::ImageSource& source, int width, int height, int x, int y) {
    const auto surface = dynamic_cast<const CairoImageSource&>(source).rendered(width, height);
    std::uint32_t value;
    std::memcpy(&value, surface.pixels() + y * surface.stride() + x * 4, 4);
    return value;
}

bool isRed(std::uint32_t value) { return (value >> 16 & 255) > 200 && (value & 255) < 60; }
bool isBlue(std::uint32_t value) { return (value >> 16 & 255) < 60 && (value & 255) > 200; }

TEST(HostImageLoaderTest, DrawingsHaveTheirSizeInPointsAndAreSharpAtAnyScale) {
    HostImageLoader loader;
    const std::filesystem::path icons = std::filesystem::path(ZORNIC_RESOURCES) / "Images";
    const auto source = loader.sourceFromFile(icons / "HelmoPlayButton.svg");
    ASSERT_TRUE(source);
    EXPECT_EQ(source->size(), (zornic::Size{44, 44}));
    EXPECT_EQ(source->scale(), 0);
    EXPECT_EQ(loader.sourceFromFile(icons / "HelmoPlayButton.svg"), source) << "read once";
    // The edge of a shape is one pixel wide at 4x, not four.
    int soft = 0;
    for (int x = 0; x < 176; ++x) {
        const auto alpha = pixel(*source, 176, 176, x, 88) >> 24;
        soft += alpha > 0 && alpha < 255;
    }
    EXPECT_LE(soft, 4);
    EXPECT_EQ(pixel(*source, 176, 176, 80, 88), 0xFFFFFFFF);
}

TEST(HostImageLoaderTest, PicturesFillTheirRoomAndAreNeverScaledUp) {
    HostImageLoader& loader = pictureLoader();
    for (const char* const format : {"jpeg", "png"}) {
        const auto data = encoded(800, 400, format);
        const auto source = loader.sourceFromData(data, {50, 50}, 2);
        ASSERT_TRUE(source) << format;
        EXPECT_EQ(source->size(), (zornic::Size{100, 50})) << format;
        EXPECT_EQ(source->scale(), 2);
        EXPECT_EQ(source->cost(), 200U * 100 * 4);
        EXPECT_TRUE(isRed(pixel(*source, 200, 100, 20, 50)));
        EXPECT_TRUE(isBlue(pixel(*source, 200, 100, 180, 50)));
        EXPECT_EQ(loader.sourceFromData(data, {5000, 5000}, 1)->size(), (zornic::Size{800, 400}));
        EXPECT_EQ(loader.sourceFromData(data, {}, 1)->size(), (zornic::Size{800, 400}));
    }
}

TEST(HostImageLoaderTest, PicturesTakenSidewaysStandUpright) {
    using namespace std::string_literals;
    auto data = encoded(80, 40, "jpeg");
    // Orientation 6: the camera's top is on the right.
    data.insert(2, "\xFF\xE1\x00\x22"s + "Exif\0\0"s + "MM\0\x2A\0\0\0\x08"s + "\0\x01"s +
                       "\x01\x12\0\x03\0\0\0\x01\0\x06\0\0"s + "\0\0\0\0"s);
    const auto source = pictureLoader().sourceFromData(data, {20, 20}, 1);
    ASSERT_TRUE(source);
    EXPECT_EQ(source->size(), (zornic::Size{20, 40}));
    EXPECT_TRUE(isRed(pixel(*source, 20, 40, 10, 5)));
    EXPECT_TRUE(isBlue(pixel(*source, 20, 40, 10, 35)));
}

TEST(HostImageLoaderTest, WhatIsNoPictureIsNone) {
    using namespace std::string_literals;
    HostImageLoader& loader = pictureLoader();
    const auto png = encoded(80, 40, "png");
    auto giant = png;
    giant.replace(16, 8, "\0\0\x4E\x20\0\0\x4E\x20"s);  // its header claims 20,000 x 20,000
    const std::string hostile[] = {"",
                                   "no picture",
                                   "\xFF\xD8\xFF"s,
                                   png.substr(0, png.size() / 2),
                                   giant,
                                   "GIF89a\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
                                   "BM" + std::string(60, '\xFF'),
                                   "RIFF\xFF\xFF\xFF\xFFWEBPVP8 ",
                                   "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>",
                                   png + std::string(HostImageLoader::maxBytes, '\0')};
    for (const auto& data : hostile)
        EXPECT_FALSE(loader.sourceFromData(data, {50, 50}, 1)) << data.substr(0, 20);
    EXPECT_TRUE(loader.sourceFromData(png, {50, 50}, 1)) << "after all those";
    EXPECT_FALSE(loader.sourceFromFile("/nowhere/at/all.svg"));
    EXPECT_FALSE(loader.sourceFromFile("/"));
}

TEST(HostImageLoaderTest, CoversSayWhatIsWrongWithThem) {
    const TemporaryFolder temporary;
    const auto& folder = temporary.path();
    const auto problem = [&](const char* name, const std::string& bytes) {
        const auto file = folder / name;
        std::ofstream(file, std::ios::binary) << bytes;
        const auto reading = pictureLoader().cover(file, {50, 50}, 2);
        EXPECT_NE(reading.problem.empty(), !reading.image);
        return reading.problem;
    };
    const auto png = encoded(80, 40, "png"), jpeg = encoded(80, 40, "jpeg");
    EXPECT_EQ(problem("whole.png", png), "");
    EXPECT_EQ(problem("called.jpg", png), "");
    EXPECT_EQ(problem("cut.png", png.substr(0, png.size() / 2)), "the picture is cut off");
    EXPECT_THAT(problem("rubbish.jpg", jpeg.substr(0, 4) + std::string(400, 'x')),
                testing::HasSubstr("the picture is damaged: "));
    auto giant = encoded(80, 40, "bmp");
    giant.replace(18, 4, std::string("\x20\x4E\0\0", 4));
    EXPECT_EQ(problem("giant.bmp", giant), "the picture claims 20000 x 40 pixels, more than are taken");
    EXPECT_EQ(problem("none.mp3", "no music"), "it holds no picture");
    EXPECT_EQ(problem("empty.png", ""), "the file is empty");
    EXPECT_THAT(pictureLoader().cover(folder / "gone.png", {50, 50}, 1).problem,
                testing::HasSubstr("can't be opened: No such file"));
}

TEST(HostImageLoaderTest, DrawnPicturesAreBlackWhereOpaqueAndUnpainted) {
    HostImageLoader loader;
    const auto draw = [](zornic::Canvas& canvas) {
        canvas.fillRect({0, 0, 5, 5}, zornic::Color::whiteColor());
    };
    const auto opaque = loader.sourceByDrawing({10, 10}, true, 2, draw);
    EXPECT_EQ(pixel(*opaque, 20, 20, 9, 9), 0xFFFFFFFF);
    EXPECT_EQ(pixel(*opaque, 20, 20, 10, 10), 0xFF000000);
    EXPECT_EQ(pixel(*loader.sourceByDrawing({10, 10}, false, 2, draw), 20, 20, 10, 10), 0U);
    EXPECT_TRUE(loader.sourceByDrawing({10, 0}, false, 2, draw)) << "without height, but an image";
    EXPECT_FALSE(loader.sourceByDrawing({1e9, 1e9}, false, 2, draw));
}

}  // namespace
}  // namespace helmo

#include <cstdlib>

#include <cairo.h>

#include "Tests/Journeys/JourneyFixture.h"

namespace {

namespace fs = std::filesystem;

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

Surface readPng(const fs::path& file) {
    return {cairo_image_surface_create_from_png(file.c_str()), cairo_surface_destroy};
}

struct Difference {
    /** Of a channel, 0 to 255. */
    double mean = 0;
    /** Part of the pixels that anybody would call different. */
    double share = 0;
};

/** Compares two surfaces of one size. */
Difference difference(cairo_surface_t* left, cairo_surface_t* right) {
    constexpr int clearly = 48;
    const int width = cairo_image_surface_get_width(left), height = cairo_image_surface_get_height(left);
    double sum = 0, different = 0;
    for (int y = 0; y < height; ++y) {
        const auto* a = cairo_image_surface_get_data(left) + y * cairo_image_surface_get_stride(left);
        const auto* b = cairo_image_surface_get_data(right) + y * cairo_image_surface_get_stride(right);
        for (int x = 0; x < width; ++x) {
            int most = 0;
            for (int byte = x * 4; byte < x * 4 + 3; ++byte) {
                const int by = std::abs(a[byte] - b[byte]);
                sum += by;
                most = std::max(most, by);
            }
            different += most > clearly;
        }
    }
    return {sum / (3.0 * width * height), different / (width * height)};
}

class PictureTest : public JourneyFixture, public testing::WithParamInterface<const char*> {
protected:
    /** Compares the display with a reference. HELMO_WRITE_REFERENCES=1 in the environment writes it anew. */
    void compare(const std::string& name) {
        const fs::path reference = fs::path(ZORNIC_TESTS) / "Journeys" / "References" / (name + ".png");
        const bool writes = std::getenv("HELMO_WRITE_REFERENCES");
        const fs::path taken = writes ? reference : fs::temp_directory_path() / ("helmo-" + name + ".png");
        perform({{"do", "screenshot"}, {"file", taken.string()}});
        const auto expected = readPng(reference), seen = readPng(taken);
        ASSERT_EQ(cairo_surface_status(expected.get()), CAIRO_STATUS_SUCCESS) << reference;
        ASSERT_EQ(cairo_surface_status(seen.get()), CAIRO_STATUS_SUCCESS) << taken;
        ASSERT_EQ(cairo_image_surface_get_width(seen.get()), 400);
        ASSERT_EQ(cairo_image_surface_get_height(seen.get()), 240);
        const Difference found = difference(expected.get(), seen.get());
        EXPECT_LT(found.mean, 1) << "see " << taken;
        EXPECT_LT(found.share, 0.004) << "see " << taken;
        if (!writes && !HasFailure()) fs::remove(taken);
    }
};

TEST_P(PictureTest, SongsAndNowPlayingLookAsTheyDid) {
    const std::string mode = GetParam();
    start({"--screen", "400x240", "--mode", mode});
    openSongs();
    if (mode == "knob") {
        turn(2);
        compare("knob-songs");
        press();
    } else {
        tap("Amber Road");
        back();
        compare(mode + "-songs");
        tap("Now Playing");
    }
    advance(4);
    compare(mode + "-now-playing");
}

INSTANTIATE_TEST_SUITE_P(Modes, PictureTest, testing::Values("touch", "lowtouch", "knob"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace

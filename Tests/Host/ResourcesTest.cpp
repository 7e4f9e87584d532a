#include <cstring>
#include <filesystem>
#include <set>

#include "Host/Display/CairoImageSource.h"
#include "Host/Display/HostImageLoader.h"
#include "Host/Resources.h"
#include "Utilities/ZRNGenreImage.h"

namespace helmo {
namespace {

using namespace zornic;

constexpr int side = 36;

/** Where, line by line, a tile isn't the colour of its corner; none at all when that one is transparent. */
std::vector<bool> glyphOf(const Image& tile) {
    const auto surface = dynamic_cast<const CairoImageSource&>(*tile.source()).rendered(side, side);
    std::vector<bool> glyph;
    std::uint32_t ground = 0;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            std::uint32_t colour;
            std::memcpy(&colour, surface.pixels() + y * surface.stride() + x * 4, 4);
            if (glyph.empty()) ground = colour;
            glyph.push_back(colour != ground);
        }
    return ground >> 24 == 255 ? glyph : std::vector<bool>();
}

TEST(ResourcesTest, EveryKindOfMusicHasAPictureThatFillsItsTileAndIsNoOthers) {
    registerResources(ZORNIC_RESOURCES);
    ImageLoader::install(std::make_shared<HostImageLoader>());
    const auto bundle = Bundle::bundleWithIdentifier(ZRNHostMusicBundleIdentifier);
    ASSERT_TRUE(bundle);
    std::set<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator(bundle->folder() / "Images"))
        files.insert(file.path().stem());
    EXPECT_THAT(ZRNGenreImageNames(), testing::UnorderedElementsAreArray(files));

    std::map<std::string, std::vector<bool>> glyphs;
    for (const auto& name : ZRNGenreImageNames()) {
        const Image image = Image::named(name, bundle, {});
        ASSERT_TRUE(image) << name;
        EXPECT_EQ(image.size(), (Size{side, side})) << name;
        const auto glyph = glyphOf(image);
        ASSERT_FALSE(glyph.empty()) << name << " leaves its corner empty";
        int inMargin = 0;
        for (int place = 0; place < side * side; ++place) {
            const int x = place % side, y = place / side;
            inMargin += glyph[place] && std::min({x, y, side - 1 - x, side - 1 - y}) < 2;
        }
        EXPECT_EQ(inMargin, 0) << name << " looks cut off";
        for (const auto& [other, known] : glyphs) {
            int different = 0;
            for (int place = 0; place < side * side; ++place) different += glyph[place] != known[place];
            EXPECT_GT(different, side * side / 16) << name << " looks like " << other;
        }
        glyphs[name] = glyph;
    }
    ImageLoader::install(nullptr);
}

}  // namespace
}  // namespace helmo

#include "Platform/Toolkit/Image.h"
#include "Tests/Support/FakeMediaLibrary.h"

namespace zornic {
namespace {

class CountingLoader final : public ImageLoader {
public:
    std::shared_ptr<const ImageSource> sourceFromFile(const std::filesystem::path&) override {
        ++reads;
        return readable ? std::make_shared<FakeImageSource>(Size{20, 20}, 0) : nullptr;
    }
    std::shared_ptr<const ImageSource> sourceFromData(const std::string&, Size, double) override {
        return nullptr;
    }
    std::shared_ptr<const ImageSource> sourceByDrawing(Size, bool, double,
                                                       const std::function<void(Canvas&)>&) override {
        return nullptr;
    }
    int reads = 0;
    bool readable = true;
};

TEST(Image, NamedImagesAreReadOnceAndAreNoneWhenAnythingLacks) {
    const auto bundle = make<Bundle>("org.example.images", ZORNIC_RESOURCES);
    ImageLoader::install(nullptr);
    EXPECT_FALSE(Image::named("HelmoPlayButton", bundle, {}));
    const auto loader = std::make_shared<CountingLoader>();
    ImageLoader::install(loader);
    EXPECT_FALSE(Image::named("HelmoPlayButton", nullptr, {}));
    EXPECT_FALSE(Image::named("NoSuchImage", bundle, {}));

    loader->readable = false;
    EXPECT_FALSE(Image::named("HelmoPlayButton", bundle, {}));
    loader->readable = true;
    const auto image = Image::named("HelmoPlayButton", bundle, {});
    EXPECT_EQ(image.size(), (Size{20, 20}));
    EXPECT_EQ(image, Image::named("HelmoPlayButton", bundle, {}));
    EXPECT_EQ(loader->reads, 2);
    EXPECT_NE(image.flattenedWithColor(Color::whiteColor()), image);
    EXPECT_EQ(image.flattenedWithColor(Color::whiteColor()).source(), image.source());

    ImageLoader::install(std::make_shared<CountingLoader>());
    EXPECT_NE(Image::named("HelmoPlayButton", bundle, {}).source(), image.source())
        << "another loader reads anew";
    ImageLoader::install(nullptr);
}

}  // namespace
}  // namespace zornic

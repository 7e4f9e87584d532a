#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "Platform/Foundation/Bundle.h"

using namespace zornic;

namespace {

class BundleTest : public testing::Test {
protected:
    void SetUp() override { std::filesystem::remove_all(folder); }
    void TearDown() override {
        std::filesystem::remove_all(folder);
        Bundle::setPreferredLanguages({});
    }
    void write(const std::filesystem::path& file, const std::string& text) const {
        std::filesystem::create_directories((folder / file).parent_path());
        std::ofstream(folder / file, std::ios::binary) << text;
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("bundle-test-" + std::to_string(getpid()));
    const std::shared_ptr<Bundle> bundle = make<Bundle>("org.example.texts", folder);
};

}  // namespace

TEST_F(BundleTest, AsksTheDriversLanguagesInOrderThenEnglish) {
    write("en/Main.strings", "\"a\" = \"A\";\"b\" = \"B\";\"c\" = \"C\";");
    write("de/Main.strings", "\"a\" = \"A de\";\"b\" = \"B de\";");
    write("de-AT/Main.strings", "\"a\" = \"A at\";");
    write("fr/Main.strings", "\"b\" = \"B fr\";");
    const auto texts = [&] {
        std::string all;
        for (const char* key : {"a", "b", "c", "d"})
            all += bundle->localizedString(key, "none", "Main") + ",";
        return all;
    };
    EXPECT_EQ(texts(), "A,B,C,none,");
    Bundle::setPreferredLanguages({"de_AT", "fr"});
    EXPECT_EQ(texts(), "A at,B de,C,none,");
    Bundle::setPreferredLanguages({"../de", "fr-CA"});
    EXPECT_EQ(texts(), "A,B fr,C,none,");
    EXPECT_EQ(bundle->localizedString("a", "none", "../en/Main"), "none");
    EXPECT_EQ(bundle->localizedString("a", "none", "Other"), "none");

    Bundle::registerBundle(bundle);
    EXPECT_EQ(Bundle::bundleWithIdentifier("org.example.texts"), bundle);
    EXPECT_EQ(Bundle::bundleWithIdentifier("org.example.none"), nullptr);
}

TEST_F(BundleTest, SaysOnceWhereAFileIsBroken) {
    write("en/Broken.strings", "\"a\" = \"A\";\n\"b\" = ;\n");
    std::filesystem::create_directories(folder / "en/Folder.strings");
    testing::internal::CaptureStderr();
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(bundle->localizedString("a", "none", "Broken"), "A");
        EXPECT_EQ(bundle->localizedString("a", "none", "Folder"), "none");
    }
    const auto said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(said, '\n'), 2) << said;
    EXPECT_NE(said.find("Broken.strings:2: "), std::string::npos) << said;
    EXPECT_NE(said.find("Folder.strings: "), std::string::npos) << said;
}

TEST_F(BundleTest, AnImageNameLeadsNowhereElse) {
    write("Images/play.svg", "<svg/>");
    write("secret.svg", "<svg/>");
    EXPECT_EQ(bundle->pathForImage("play"), folder / "Images" / "play.svg");
    EXPECT_EQ(bundle->pathForImage("stop"), std::nullopt);
    EXPECT_EQ(bundle->pathForImage("../secret"), std::nullopt);
    EXPECT_EQ(bundle->pathForImage("sub/play"), std::nullopt);
    EXPECT_EQ(bundle->pathForImage(""), std::nullopt);
}


#include "Host/Library/Articles.h"
#include "Host/Library/SortNames.h"
#include "Tests/Host/LibraryFixture.h"

namespace helmo {
namespace {

using zornic::MediaQuerySection;
using Texts = std::vector<std::string>;

class LibrarySort : public LibraryFixture {};

TEST(LibraryArticles, AreStrippedAsWholeWordsAndNeverToNothing) {
    for (const auto& [name, sorted] :
         std::vector<std::pair<std::string, std::string>>{{"The Wall", "Wall"},
                                                          {"THE WALL", "WALL"},
                                                          {"A Day", "Day"},
                                                          {"Theatre", "Theatre"},
                                                          {"The", "The"},
                                                          {"The ...", "The ..."},
                                                          {"A-Team", "A-Team"},
                                                          {"L'Aventura", "Aventura"},
                                                          {"L’été", "été"},
                                                          {"Der Mond", "Mond"},
                                                          {"Los Lobos", "Lobos"},
                                                          {"Die Another Day", "Die Another Day"},
                                                          {"I Will Survive", "I Will Survive"},
                                                          {"", ""}})
        EXPECT_EQ(withoutArticle(name, "en"), sorted) << name;
    EXPECT_EQ(withoutArticle("Die Brücke", "de"), "Brücke");
    EXPECT_EQ(withoutArticle("I Pooh", "it"), "Pooh");
    EXPECT_EQ(withoutArticle("الليل", "ar-EG"), "ليل");
}

TEST(LibraryLanguages, EachReaderFindsATitleWhereHisLanguageHasIt) {
    // Titles in order, each behind the letter under which it stands.
    const std::vector<std::pair<const char*, Texts>> expected{
        {"en", {"A Ábaco 2",    "A Abaco 10", "A The Abacus",     "A Ångström", "A Apfel",
                "B ‘Bout Time", "E a Éclair", "E éclair au café", "O Öl",       "Z Zebra",
                "Ω Ωμέγα",      "Ж Жук",      "М Москва",         "ㅅ 서울",    "か カメラ",
                "か きもの",    "さ サクラ",  "漢 北京",          "# 7 Years",  "# 99 Luftballons"}},
        {"de-AT", {"A Ähre", "A Apfel", "B Die Brücke", "O Öl", "S Straße", "Z Zebra"}},
        {"fr", {"E Été", "E L’étoile", "E Étranger", "O Œuvre", "Z Zèbre"}},
        {"sv", {"A Apfel", "Z Zebra", "Å Ångström", "Ä Äpple", "Ö Öl", "Ж Жук"}},
        {"ja", {"A Abend", "あ あさ", "か カメラ", "さ さくら", "漢 東京", "# 7 Years"}},
        {"zh", {"A Abend", "B 北京", "S 上海", "Z Zebra", "Ж Жук"}},
        {"ko", {"ㄱ 가나", "ㄴ 나무", "A Abend"}},
        {"ar", {"ب بيت", "ل الليل", "A Abend"}},
        {"ru", {"Е Ёлка", "Ж Жук", "М Москва", "A Abend", "# 1"}}};
    for (const auto& [language, titles] : expected) {
        const SortKey keys(language);
        std::string before;
        for (const std::string& line : titles) {
            const auto blank = line.find(' ');
            const std::string key = keys.make(line.substr(blank + 1));
            EXPECT_LT(before, key) << language << ": " << line;
            const auto& letters = keys.indexTitles().titles();
            const auto letter = std::ranges::find(letters, key.substr(0, 2), &IndexTitles::Title::section);
            ASSERT_NE(letter, letters.end());
            EXPECT_EQ(letter->text, line.substr(0, blank)) << language << ": " << line;
            before = key;
        }
    }
    const SortKey keys("en");
    EXPECT_EQ(keys.make("東京", "とうきょう"), keys.make("とうきょう")) << "read as its file says";
}

TEST(LibraryLanguages, ArticlesAreThoseOfTheFilesLanguageWhereItNamesOne) {
    const auto sorted = [](const std::string& title, const std::string& language,
                           const std::string& own = "") {
        TrackTags tags;
        tags.title = title;
        tags.language = language;
        tags.sortTitle = own;
        completeSortNames(tags);
        return tags.sortTitle;
    };
    for (const char* language : {"deu", "GER", "de-AT", "German", "Deutsch"})
        EXPECT_EQ(sorted("Die Brücke", language), "Brücke") << language;
    EXPECT_EQ(sorted("Die Another Day", "eng"), "Die Another Day") << "also for a German driver";
    EXPECT_EQ(sorted("Weather", "eng"), "");
    EXPECT_EQ(sorted("Die Brücke", "jpn"), "");
    EXPECT_EQ(sorted("Die Brücke", ""), "");
    EXPECT_EQ(sorted("Die Brücke", "deu", "Bruecke"), "Bruecke") << "as the file says itself";
}

TEST_F(LibrarySort, SectionsFollowTheScriptsAndCoverTheList) {
    auto zulu = tags("Zulu");
    zulu.sortTitle = "Aardvark";
    add({tags(""), tags("Alpha"), tags("The Apple"), tags("Beta"), tags("Мир"), tags("さくら"), tags("漢字"),
         tags("12"), zulu});
    const auto all = query();
    EXPECT_EQ(titles(*all), (Texts{"Zulu", "Alpha", "The Apple", "Beta", "Мир", "さくら", "漢字", "12", ""}));
    EXPECT_EQ(
        all->itemSections(),
        (std::vector<MediaQuerySection>{
            {"A", {0, 3}}, {"B", {3, 1}}, {"М", {4, 1}}, {"さ", {5, 1}}, {"漢", {6, 1}}, {"#", {7, 2}}}));
    const auto info = all->itemSectionInfo();
    EXPECT_EQ(info.sectionIndexTitles(), (Texts{"A", "B", "М", "さ", "漢", "#"}));
    EXPECT_EQ(info.indexOfSectionForSectionIndexTitleAtIndex(3), 3u);

    all->setUseSections(false);
    EXPECT_TRUE(all->itemSections().empty());
    EXPECT_TRUE(all->itemSectionInfo().sectionIndexTitles().empty());
}

TEST_F(LibrarySort, ALaterSortNameMovesEverythingOfThatArtist) {
    add({tags("One", "Zed", "First"), tags("Two", "Mid", "Second")});
    const Texts byArtist{zornic::MediaItemProperty::Artist, zornic::MediaItemProperty::AlbumTitle};
    EXPECT_EQ(titles(*query({}, {}, byArtist)), (Texts{"Two", "One"}));
    auto third = tags("Three", "Zed", "First");
    third.sortArtist = "Able";
    add({third});
    EXPECT_EQ(titles(*query({}, {}, byArtist)), (Texts{"One", "Three", "Two"}));
    EXPECT_EQ(texts(*query(zornic::MediaGrouping::Artist)->collections(),
                    zornic::MediaCollectionProperty::ArtistName),
              (Texts{"Zed", "Mid"}));
    EXPECT_EQ(query({}, {}, byArtist)->itemSections().front(), (MediaQuerySection{"A", {0, 2}}));
}

}  // namespace
}  // namespace helmo

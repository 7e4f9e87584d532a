#include "Tools/LargeLibrary/GeneratedMusic.h"

#include <array>
#include <cmath>
#include <vector>

namespace helmo::large {

/** Common words first: they are taken most often. Rarer words are put together from syllables. */
struct GeneratedMusic::Language {
    std::vector<std::string> words;
    std::vector<std::string> syllables;
    const char* between = " ";
};

namespace {

using Texts = std::vector<std::string>;

/** Some of them never come up. */
constexpr std::size_t artistCount = 32'000;
/** One album of so many is one. */
constexpr std::size_t compilations = 40, audiobooks = 200;

}  // namespace

const GeneratedMusic::Language& GeneratedMusic::someLanguage() {
    static const std::array<Language, 7> languages{
        Language{
            Texts{"Love",   "You",    "My",      "The",     "I",     "Don't",  "Night", "Time",   "Heart",
                  "Baby",   "One",    "All",     "Blue",    "Girl",  "World",  "Life",  "Dream",  "Sweet",
                  "Little", "Man",    "Song",    "Fire",    "Home",  "Rain",   "Down",  "Light",  "Black",
                  "Dance",  "Sun",    "Good",    "Lost",    "Never", "Street", "Moon",  "Rock",   "Road",
                  "Day",    "Back",   "Summer",  "When",    "Where", "Stay",   "Take",  "Come",   "Wild",
                  "Old",    "River",  "Star",    "Free",    "Gone",  "Hold",   "Train", "Angel",  "Red",
                  "Crazy",  "Higher", "Kiss",    "Magic",   "Power", "Queen",  "Under", "Voodoo", "Yellow",
                  "Zero",   "Jump",   "X-Ray",   "Echo",    "Intro", "Outro",  "2",     "1999",   "99",
                  "Golden", "Only",   "Velvet",  "Shadows", "Sing",  "So",     "This",  "Too",    "We",
                  "What",   "Who",    "Without", "Winter",  "Young", "Your",   "In",    "It's",   "On"},
            Texts{"an",  "ber", "car", "dol", "el",  "fan", "gar", "hal", "il",  "jo",  "kin", "lan",
                  "mar", "nor", "or",  "per", "qui", "ran", "san", "tor", "un",  "val", "wes", "xan",
                  "yel", "zon", "sto", "tri", "sha", "bri", "cla", "dre", "fle", "gro"}},
        Language{
            Texts{"Liebe", "Nacht",  "Ich",  "Du",   "Herz",   "Leben", "Ein",    "Zeit", "Mein",  "Über",
                  "Schön", "Sommer", "Welt", "Kein", "Straße", "Feuer", "Morgen", "Wind", "Alles", "Engel"},
            Texts{"ge", "ber", "auf", "ver", "schlag", "tag", "licht", "stern", "haus", "lied", "traum",
                  "ufer"}},
        Language{
            Texts{"Amour", "La",    "Je",   "Nuit",    "Mon",   "Petite", "Été",   "Rue",  "Coeur", "Chanson",
                  "Vie",   "Belle", "Amor", "Corazón", "Noche", "Mi",     "Cielo", "Vida", "Ojos",  "Quiero"},
            Texts{"ma", "ri", "lo", "ne", "sou", "ven", "tré", "jar", "din", "ço", "ña", "lu", "ciel"}},
        Language{Texts{"Любовь", "Ночь", "Я", "Ты", "Город", "Зима", "Небо", "Дорога", "Сердце", "Весна"},
                 Texts{"по", "ле", "го", "ра", "ми", "ро", "сне", "жин", "ка", "бе", "ре", "за"}},
        Language{Texts{"Αγάπη", "Νύχτα", "Θάλασσα", "Καρδιά", "Φως"},
                 Texts{"μα", "λο", "ρι", "δα", "κα", "στε"}},
        Language{Texts{"さくら", "夜の歌", "恋", "花", "ありがとう", "東京", "夢", "月"},
                 Texts{"ア", "キ", "サ", "テ", "ナ", "ハ", "マ", "ラ", "ユ"}, ""},
        Language{Texts{"사랑", "밤", "하늘", "봄날", "너에게", "비"},
                 Texts{"가", "나", "다", "마", "바", "사"}, ""}};
    // Of a hundred.
    static constexpr std::array share{70, 80, 90, 95, 96, 99, 100};
    const auto drawn = static_cast<int>(evenly(100));
    std::size_t at = 0;
    while (drawn >= share[at]) ++at;
    return languages[at];
}

std::size_t GeneratedMusic::commonly(std::size_t below) {
    const double drawn = static_cast<double>(_random()) / 4294967296.0;
    return static_cast<std::size_t>(drawn * drawn * static_cast<double>(below));
}

std::string GeneratedMusic::word(const Language& language) {
    if (evenly(10) < 6) return language.words[commonly(language.words.size())];
    std::string made;
    for (auto left = 1 + evenly(3); left > 0; --left)
        made += language.syllables[evenly(language.syllables.size())];
    if (made[0] >= 'a' && made[0] <= 'z') made[0] = static_cast<char>(made[0] - 'a' + 'A');
    return made;
}

std::string GeneratedMusic::words(const Language& language, int most) {
    std::string text;
    for (auto left = 1 + evenly(static_cast<std::size_t>(most)); left > 0; --left)
        text += (text.empty() ? "" : language.between) + word(language);
    return text;
}

std::string GeneratedMusic::artistNamed(std::uint32_t number) {
    // An artist's name comes from his number alone.
    GeneratedMusic naming(number * 2654435761U + 17);
    const std::string name = naming.words(naming.someLanguage(), 2);
    return number % 4 == 0 ? "The " + name : name + ' ' + std::to_string(number % 97);
}

std::string GeneratedMusic::someArtist() {
    return artistNamed(static_cast<std::uint32_t>(commonly(artistCount)));
}

void GeneratedMusic::startAlbum() {
    static const std::array genres{"Rock",        "Pop",   "Jazz",    "Classical", "Electronic", "Hip-Hop",
                                   "Metal",       "Blues", "Country", "Folk",      "Soundtrack", "Reggae",
                                   "Alternative", "Punk",  "Soul",    "Funk",      "Latin",      "World",
                                   "Ambient",     "House", "Techno",  "Chanson",   "Schlager",   "J-Pop"};
    _language = &someLanguage();
    _album = {};
    _album.artist = someArtist();
    _album.albumTitle = words(*_language, 3);
    _album.genre = genres[commonly(genres.size())];
    _album.year = 1960 + static_cast<int>(evenly(65));
    _album.trackCount = 8 + static_cast<int>(evenly(10));
    _album.discNumber = 1;
    _album.picture = evenly(10) < 8 ? static_cast<std::int64_t>(_random()) + 1 : 0;
    if (evenly(5) == 0) _album.composer = someArtist();
    _album.isCompilation = evenly(compilations) == 0;
    if (evenly(audiobooks) != 0) return;
    _album.mediaType = zornic::MediaType::Audiobook;
    _album.genre = "Audiobook";
}

TrackTags GeneratedMusic::next() {
    if (!_language || _album.trackNumber >= _album.trackCount) startAlbum();
    ++_album.trackNumber;
    TrackTags track = _album;
    track.title = words(*_language, 4);
    if (evenly(20) == 0) track.title += " (Live)";
    if (evenly(30) == 0) track.title = "Track " + std::to_string(track.trackNumber);
    if (track.isCompilation) track.artist = someArtist();
    track.duration = 120 + static_cast<double>(evenly(240));
    return track;
}

}  // namespace helmo::large

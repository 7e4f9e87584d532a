#include "Host/Library/MediaKindWord.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "Platform/Media/MediaProperty.h"

namespace helmo {

namespace {

using zornic::MediaType::Audiobook;
using zornic::MediaType::Lecture;
using zornic::MediaType::Podcast;

struct Word {
    std::string_view word;
    std::int64_t kind;
};

/** In English, German, French, Spanish and Swedish, as `folded` leaves them. */
constexpr Word words[] = {
    {"podcast", Podcast},         {"podcasts", Podcast},      {"poddar", Podcast},
    {"audiobook", Audiobook},     {"audiobooks", Audiobook},  {"audiotheatre", Audiobook},
    {"speech", Audiobook},        {"spokenword", Audiobook},  {"booksspoken", Audiobook},
    {"horbuch", Audiobook},       {"horbucher", Audiobook},   {"horspiel", Audiobook},
    {"horspiele", Audiobook},     {"livreaudio", Audiobook},  {"livresaudio", Audiobook},
    {"audiolibro", Audiobook},    {"audiolibros", Audiobook}, {"ljudbok", Audiobook},
    {"ljudbocker", Audiobook},    {"lecture", Lecture},       {"lectures", Lecture},
    {"vorlesung", Lecture},       {"vorlesungen", Lecture},   {"coursmagistral", Lecture},
    {"coursmagistraux", Lecture}, {"leccion", Lecture},       {"lecciones", Lecture},
    {"forelasning", Lecture},     {"forelasningar", Lecture}};

/** What the letters from U+00C0 to U+00FF are without what is above and below them. */
constexpr std::string_view plainLetters = "aaaaaaaceeeeiiiidnooooo*ouuuuytsaaaaaaaceeeeiiiidnooooo/ouuuuyty";
constexpr char latinLead = '\xc3';
constexpr std::size_t longestWord = 24;

/** Small letters and digits without accents; everything else, marks that stand for themselves included, is
   left out. */
std::string folded(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size() && result.size() <= longestWord; ++at) {
        const char byte = text[at];
        if ((byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9')) {
            result += byte;
        } else if (byte >= 'A' && byte <= 'Z') {
            result += static_cast<char>(byte + ('a' - 'A'));
        } else if (byte == latinLead && at + 1 < text.size()) {
            const auto letter = static_cast<unsigned char>(text[++at]) & 0x3f;
            result += plainLetters[letter];
        }
    }
    return result;
}

}  // namespace

std::int64_t mediaKindOfWord(std::string_view word) {
    const std::string plain = folded(word);
    const auto* found = std::ranges::find(words, plain, &Word::word);
    return found == std::end(words) ? 0 : found->kind;
}

}  // namespace helmo

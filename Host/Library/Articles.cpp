#include "Host/Library/Articles.h"

#include <algorithm>
#include <iterator>

#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace helmo {

namespace {

struct Article {
    const char16_t* word;
    /** The only language in which it is stripped; empty: always. */
    std::string_view language;
};

constexpr Article articles[] = {
    {u"the", ""},   {u"a", ""},     {u"an", ""},     {u"der", ""},  {u"das", ""},   {u"die", "de"},
    {u"den", "de"}, {u"ein", "de"}, {u"eine", "de"}, {u"le", ""},   {u"la", ""},    {u"les", ""},
    {u"un", "fr"},  {u"une", "fr"}, {u"el", ""},     {u"los", ""},  {u"las", ""},   {u"un", "es"},
    {u"una", "es"}, {u"il", ""},    {u"gli", ""},    {u"lo", "it"}, {u"i", "it"},   {u"un", "it"},
    {u"una", "it"}, {u"het", ""},   {u"een", ""},    {u"de", "nl"}, {u"o", "pt"},   {u"os", "pt"},
    {u"as", "pt"},  {u"um", "pt"},  {u"uma", "pt"},  {u"en", "sv"}, {u"ett", "sv"},
};

bool isApostrophe(char16_t unit) { return unit == u'\'' || unit == u'\u2019'; }

bool hasLetterOrDigit(const icu::UnicodeString& text) {
    for (int at = 0; at < text.length(); at = text.moveIndex32(at, 1))
        if (u_isalnum(text.char32At(at))) return true;
    return false;
}

}  // namespace

std::string withoutArticle(std::string_view text, std::string_view language) {
    const icu::StringPiece piece(text.data(), static_cast<int>(text.size()));
    const auto whole = icu::UnicodeString::fromUTF8(piece).trim();
    int end = 0;  // of the first word, elided articles with their apostrophe
    while (end < whole.length() && u_isalpha(whole.charAt(end))) ++end;
    auto word = whole.tempSubString(0, end);
    word.foldCase();
    const bool elided =
        end < whole.length() && isApostrophe(whole.charAt(end)) && word == icu::UnicodeString(u"l");
    constexpr int longestArticle = 4;
    const bool stripped =
        elided || (end <= longestArticle && end < whole.length() && u_isUWhiteSpace(whole.charAt(end)) &&
                   std::any_of(std::begin(articles), std::end(articles), [&](const Article& article) {
                       return word == icu::UnicodeString(article.word) &&
                              (article.language.empty() || article.language == language);
                   }));
    auto rest = icu::UnicodeString(whole, end + (elided ? 1 : 0)).trim();
    std::string result;
    (stripped && hasLetterOrDigit(rest) ? rest : whole).toUTF8String(result);
    return result;
}

}  // namespace helmo

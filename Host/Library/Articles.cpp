#include "Host/Library/Articles.h"

#include <algorithm>

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
    {u"as", "pt"},  {u"um", "pt"},  {u"uma", "pt"},  {u"en", "sv"}, {u"ett", "sv"}, {u"den", "sv"},
    {u"det", "sv"},
};

bool isApostrophe(char16_t unit) { return unit == u'\'' || unit == u'\u2019'; }

constexpr std::string_view anyLanguage = "*";

bool isOf(std::string_view language, std::string_view wanted) {
    return language.empty() || wanted == anyLanguage || language == wanted;
}

/** Of the article at the start of `text`, in units; 0 without one. */
int lengthOfArticle(const icu::UnicodeString& text, std::string_view language) {
    constexpr int longest = 4;
    const icu::UnicodeString arabic(u"\u0627\u0644");  // written as one word with what follows
    if (isOf("ar", language) && text.startsWith(arabic) && text.length() > arabic.length() + 1)
        return u_isalpha(text.charAt(arabic.length())) ? arabic.length() : 0;
    int end = 0;
    while (end < text.length() && u_isalpha(text.charAt(end))) ++end;
    if (end == 0 || end > longest || end == text.length()) return 0;
    auto word = text.tempSubString(0, end);
    word.foldCase();
    if (isApostrophe(text.charAt(end))) return word == icu::UnicodeString(u"l") ? end + 1 : 0;
    const bool isArticle = std::ranges::any_of(articles, [&](const Article& article) {
        return word == icu::UnicodeString(article.word) && isOf(article.language, language);
    });
    return isArticle && u_isUWhiteSpace(text.charAt(end)) ? end : 0;
}

bool hasLetterOrDigit(const icu::UnicodeString& text) {
    for (int at = 0; at < text.length(); at = text.moveIndex32(at, 1))
        if (u_isalnum(text.char32At(at))) return true;
    return false;
}

}  // namespace

bool mayBeginWithArticle(std::string_view text) {
    const icu::StringPiece piece(text.data(), static_cast<int>(text.size()));
    return lengthOfArticle(icu::UnicodeString::fromUTF8(piece).trim(), anyLanguage) > 0;
}

std::string withoutArticle(std::string_view text, std::string_view locale) {
    const auto language = locale.substr(0, locale.find_first_of("-_"));
    const icu::StringPiece piece(text.data(), static_cast<int>(text.size()));
    const auto whole = icu::UnicodeString::fromUTF8(piece).trim();
    const int length = lengthOfArticle(whole, language);
    const auto rest = icu::UnicodeString(whole, length).trim();
    std::string result;
    (length > 0 && hasLetterOrDigit(rest) ? rest : whole).toUTF8String(result);
    return result;
}

}  // namespace helmo

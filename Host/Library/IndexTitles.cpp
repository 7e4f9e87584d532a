#include "Host/Library/IndexTitles.h"

#include <unicode/alphaindex.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>

namespace helmo {

namespace {

/** Languages whose letters make up the index, beside the driver's. */
constexpr const char* indexLanguages[] = {"en", "el", "ru", "uk", "ka", "hy",
                                          "he", "ar", "hi", "th", "ja", "ko"};

constexpr int maximumLabels = 1000;
const std::string hanSection = "\xff\xfd";

std::string sectionBytes(int number) {
    return {static_cast<char>(number >> 8 & 0xff), static_cast<char>(number & 0xff)};
}

UScriptCode firstScript(const icu::UnicodeString& text) {
    UErrorCode code = U_ZERO_ERROR;
    return uscript_getScript(text.char32At(0), &code);
}

int scriptOf(const icu::UnicodeString& label) {
    const auto script = firstScript(label);
    return script == USCRIPT_LATIN ? 0 : static_cast<int>(script);
}

}  // namespace

struct IndexTitles::Buckets {
    std::unique_ptr<icu::AlphabeticIndex::ImmutableIndex> index;
};

IndexTitles::IndexTitles(const std::string& language) : _buckets(std::make_unique<Buckets>()) {
    UErrorCode code = U_ZERO_ERROR;
    icu::AlphabeticIndex index(icu::Locale(language.c_str()), code);
    if (U_SUCCESS(code)) index.setMaxLabelCount(maximumLabels, code);
    for (const char* other : indexLanguages)
        if (U_SUCCESS(code)) index.addLabels(icu::Locale(other), code);
    if (U_SUCCESS(code)) _buckets->index.reset(index.buildImmutableIndex(code));
    if (U_FAILURE(code)) _buckets->index.reset();
    const int count = _buckets->index ? _buckets->index->getBucketCount() : 0;
    for (int at = 0; at < count; ++at) {
        const auto* bucket = _buckets->index->getBucket(at);
        if (bucket->getLabelType() != U_ALPHAINDEX_NORMAL) continue;
        std::string text;
        bucket->getLabel().toUTF8String(text);
        _titles.push_back({sectionBytes(at), scriptOf(bucket->getLabel()), text});
    }
    _titles.push_back({hanSection, USCRIPT_HAN, "漢"});
    _titles.push_back({otherSection(), -1, "#"});
}

IndexTitles::~IndexTitles() = default;

std::string IndexTitles::sectionOf(const std::string& text) const {
    if (!_buckets->index || text.empty()) return otherSection();
    UErrorCode code = U_ZERO_ERROR;
    auto letters = icu::UnicodeString::fromUTF8(text);
    int start = 0;  // "'Bout Time" stands under B
    while (start < letters.length() && !u_isalnum(letters.char32At(start)))
        start = letters.moveIndex32(start, 1);
    letters.remove(0, start);
    const int at = _buckets->index->getBucketIndex(letters, code);
    if (U_FAILURE(code)) return otherSection();
    const auto* bucket = _buckets->index->getBucket(at);
    if (bucket && bucket->getLabelType() == U_ALPHAINDEX_NORMAL) return sectionBytes(at);
    return firstScript(letters) == USCRIPT_HAN ? hanSection : otherSection();
}

}  // namespace helmo

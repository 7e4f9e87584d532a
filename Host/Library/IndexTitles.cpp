#include "Host/Library/IndexTitles.h"

#include <unicode/alphaindex.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>

namespace helmo {

namespace {

/** Languages whose letters make up the index, beside the Latin ones. */
constexpr const char* indexLanguages[] = {"el", "ru", "uk", "ka", "hy", "he", "ar", "hi", "th", "ja", "ko"};

constexpr int maximumLabels = 1000;

std::string sectionBytes(int number) {
    return {static_cast<char>(number >> 8 & 0xff), static_cast<char>(number & 0xff)};
}

int scriptOf(const icu::UnicodeString& label) {
    UErrorCode code = U_ZERO_ERROR;
    const auto script = uscript_getScript(label.char32At(0), &code);
    return script == USCRIPT_LATIN ? 0 : static_cast<int>(script);
}

}  // namespace

struct IndexTitles::Buckets {
    std::unique_ptr<icu::AlphabeticIndex::ImmutableIndex> index;
};

IndexTitles::IndexTitles() : _buckets(std::make_unique<Buckets>()) {
    UErrorCode code = U_ZERO_ERROR;
    icu::AlphabeticIndex index(icu::Locale::getEnglish(), code);
    if (U_SUCCESS(code)) index.setMaxLabelCount(maximumLabels, code);
    for (const char* language : indexLanguages)
        if (U_SUCCESS(code)) index.addLabels(icu::Locale(language), code);
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
    return bucket && bucket->getLabelType() == U_ALPHAINDEX_NORMAL ? sectionBytes(at) : otherSection();
}

}  // namespace helmo

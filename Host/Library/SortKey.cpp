#include "Host/Library/SortKey.h"

#include <algorithm>
#include <array>
#include <optional>

#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/uversion.h>

#include "Host/Library/Articles.h"
#include "Host/Log.h"

namespace helmo {

namespace {

/** Enough to tell real titles apart; every order keeps a copy of the key in its index. */
constexpr std::size_t maximumCollationBytes = 64;
constexpr char hasText = 1, hasNone = 2;
constexpr const char* rules = "4";

icu::UnicodeString unicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int>(text.size())));
}

/** Folded, when it is of plain letters and signs only, as most names are. */
std::optional<std::string> foldedPlain(std::string_view name) {
    std::string result(name);
    for (char& c : result) {
        if (c < ' ' || c > '~') return std::nullopt;
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    }
    result.erase(result.find_last_not_of(' ') + 1);
    result.erase(0, std::min(result.find_first_not_of(' '), result.size()));
    return result;
}

}  // namespace

struct SortKey::Collation {
    std::unique_ptr<icu::Collator> collator;

    std::string bytes(const icu::UnicodeString& text) const {
        if (!collator) return {};
        std::array<std::uint8_t, 256> buffer;
        const int needed = collator->getSortKey(text, buffer.data(), buffer.size());
        // Without the terminating zero byte.
        const auto length = needed > 0 ? static_cast<std::size_t>(needed - 1) : 0;
        const auto kept = std::min(length, maximumCollationBytes);
        return {reinterpret_cast<const char*>(buffer.data()), kept};
    }
};

SortKey::SortKey(std::string language)
    : _language(std::move(language)),
      _titles(_language),
      _collation(std::make_unique<Collation>()),
      _stamp(std::string("icu ") + U_ICU_VERSION + ", rules " + rules + ", " + _language) {
    UErrorCode code = U_ZERO_ERROR;
    _collation->collator.reset(icu::Collator::createInstance(icu::Locale(_language.c_str()), code));
    if (U_FAILURE(code)) {
        _collation->collator.reset();
        logLine(std::string("library: no collation, lists are sorted by bytes: ") + u_errorName(code));
        return;
    }
    _collation->collator->setStrength(icu::Collator::TERTIARY);
    _collation->collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, code);
    _collation->collator->setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_SHIFTED, code);
}

SortKey::~SortKey() = default;

std::string SortKey::make(std::string_view name, std::string_view sortName) const {
    const std::string text = sortName.empty() ? withoutArticle(name, _language) : std::string(sortName);
    if (text.empty()) return IndexTitles::otherSection() + hasNone;
    std::string bytes = _collation->bytes(unicode(text));
    // A text of nothing but punctuation has no collation of its own.
    if (bytes.find_first_not_of(std::string_view("\x01\x00", 2)) == std::string::npos)
        bytes = text.substr(0, maximumCollationBytes);
    return _titles.sectionOf(text) + hasText + bytes;
}

std::string SortKey::folded(std::string_view name) {
    if (auto plain = foldedPlain(name)) return *std::move(plain);
    UErrorCode code = U_ZERO_ERROR;
    const auto* normalizer = icu::Normalizer2::getNFKCCasefoldInstance(code);
    if (U_FAILURE(code)) return std::string(name);
    std::string result;
    normalizer->normalize(unicode(name), code).trim().toUTF8String(result);
    return U_SUCCESS(code) ? result : std::string(name);
}

}  // namespace helmo

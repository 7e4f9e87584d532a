#include "Platform/Media/MediaPredicate.h"

#include <utility>

namespace zornic {

MediaPredicate MediaPredicate::property(std::string property, Value value, MediaComparison comparison) {
    MediaPredicate predicate;
    predicate._property = std::move(property);
    predicate._value = std::move(value);
    predicate._comparison = comparison;
    return predicate;
}

MediaPredicate MediaPredicate::anyOf(std::vector<MediaPredicate> alternatives) {
    MediaPredicate predicate;
    predicate._alternatives = std::move(alternatives);
    // Nothing has a property without a name, so that a choice of nothing is met by nothing.
    if (predicate._alternatives.empty()) predicate._alternatives.push_back(property({}, true));
    return predicate;
}

}  // namespace zornic

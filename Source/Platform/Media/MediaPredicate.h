#pragma once

#include <string>
#include <vector>

#include "Platform/Foundation/Value.h"

namespace zornic {

enum class MediaComparison { EqualTo = 0, Contains = 1 };

/** A condition on items or playlists: a property compared with a value, or any of several conditions. A
 * value. */
class MediaPredicate {
public:
    /** Property compared with a value. */
    static MediaPredicate property(std::string property, Value value,
                                   MediaComparison comparison = MediaComparison::EqualTo);
    /** Met when at least one of `alternatives` is. */
    static MediaPredicate anyOf(std::vector<MediaPredicate> alternatives);

    bool isPropertyPredicate() const { return _alternatives.empty(); }
    /** Empty for another kind of predicate, as is the value none. */
    const std::string& property() const { return _property; }
    const Value& value() const { return _value; }
    MediaComparison comparison() const { return _comparison; }
    const std::vector<MediaPredicate>& alternatives() const { return _alternatives; }

    friend bool operator==(const MediaPredicate&, const MediaPredicate&) = default;

private:
    std::string _property;
    Value _value;
    MediaComparison _comparison = MediaComparison::EqualTo;
    std::vector<MediaPredicate> _alternatives;
};

}  // namespace zornic

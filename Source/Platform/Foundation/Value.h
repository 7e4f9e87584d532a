#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "Platform/Foundation/Object.h"

namespace zornic {

/** A moment of civil time, for release dates and the like: of any year that people write, unlike the clock's
   own, which ends in 2262. */
using Date = std::chrono::time_point<std::chrono::system_clock, std::chrono::microseconds>;

/** A property's value: nothing, a truth, a whole number, a number, a text, a date or an object. Whole numbers
   compare by value whatever their signedness, and truths as 0 and 1. */
class Value {
public:
    Value() = default;
    Value(bool value) : _value(value) {}
    Value(int value) : _value(static_cast<std::int64_t>(value)) {}
    Value(std::int64_t value) : _value(value) {}
    Value(std::uint64_t value) : _value(value) {}
    Value(double value) : _value(value) {}
    Value(std::string value) : _value(std::move(value)) {}
    Value(const char* value) : _value(std::string(value)) {}
    Value(Date value) : _value(value) {}
    Value(std::shared_ptr<Object> value) : _value(std::move(value)) {}

    bool isNone() const { return std::holds_alternative<std::monostate>(_value); }
    explicit operator bool() const { return !isNone(); }
    /** Whole number, truncated from a number, parsed from nothing else; 0 when it is none. */
    std::int64_t asInteger() const;
    std::uint64_t asUnsigned() const;
    /** Number; 0 when it is none. */
    double asNumber() const;
    bool asBool() const { return asInteger() != 0; }
    /** Text; empty when it is none. */
    const std::string& asText() const;
    bool isText() const { return std::holds_alternative<std::string>(_value); }
    bool isNumeric() const;
    /** Date; the epoch when it is none. */
    Date asDate() const;
    std::shared_ptr<Object> asObject() const;

    friend bool operator==(const Value& left, const Value& right);

private:
    std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, std::string, Date,
                 std::shared_ptr<Object>>
        _value;
};

/** Values by name: options, user infos, a row's properties. A missing key is told from an empty value. */
using Dictionary = std::map<std::string, Value, std::less<>>;

/** The value for `key`; none when it is missing. */
const Value& valueForKey(const Dictionary& dictionary, std::string_view key);

}  // namespace zornic

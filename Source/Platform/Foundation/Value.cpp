#include "Platform/Foundation/Value.h"

#include <cmath>
#include <optional>
#include <utility>

namespace zornic {

namespace {

constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;

std::int64_t truncated(double number) {
    if (std::isnan(number)) return 0;
    if (number >= twoTo63) return std::numeric_limits<std::int64_t>::max();
    if (number < -twoTo63) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(number);
}

/** Whether a number is exactly this whole number: no detour over double, which would join neighbours beyond
 * 2^53. */
template <class Whole>
bool isExactly(double number, Whole whole) {
    if (std::trunc(number) != number || number < -twoTo63 || number >= twoTo64) return false;
    if (number < 0) return std::cmp_equal(static_cast<std::int64_t>(number), whole);
    return std::cmp_equal(static_cast<std::uint64_t>(number), whole);
}

}  // namespace

std::int64_t Value::asInteger() const {
    if (const auto* truth = std::get_if<bool>(&_value)) return *truth ? 1 : 0;
    if (const auto* whole = std::get_if<std::int64_t>(&_value)) return *whole;
    if (const auto* whole = std::get_if<std::uint64_t>(&_value)) return static_cast<std::int64_t>(*whole);
    if (const auto* number = std::get_if<double>(&_value)) return truncated(*number);
    return 0;
}

std::uint64_t Value::asUnsigned() const {
    const auto* number = std::get_if<double>(&_value);
    if (!number || !(*number >= twoTo63)) return static_cast<std::uint64_t>(asInteger());
    return *number >= twoTo64 ? std::numeric_limits<std::uint64_t>::max()
                              : static_cast<std::uint64_t>(*number);
}

double Value::asNumber() const {
    if (const auto* number = std::get_if<double>(&_value)) return *number;
    if (const auto* whole = std::get_if<std::uint64_t>(&_value)) return static_cast<double>(*whole);
    return static_cast<double>(asInteger());
}

const std::string& Value::asText() const {
    static const auto& none = *new std::string;
    const auto* text = std::get_if<std::string>(&_value);
    return text ? *text : none;
}

bool Value::isNumeric() const {
    return std::holds_alternative<bool>(_value) || std::holds_alternative<std::int64_t>(_value) ||
           std::holds_alternative<std::uint64_t>(_value) || std::holds_alternative<double>(_value);
}

Date Value::asDate() const {
    const auto* date = std::get_if<Date>(&_value);
    return date ? *date : Date();
}

std::shared_ptr<Object> Value::asObject() const {
    const auto* object = std::get_if<std::shared_ptr<Object>>(&_value);
    return object ? *object : nullptr;
}

bool operator==(const Value& left, const Value& right) {
    if (!left.isNumeric() || !right.isNumeric()) return left._value == right._value;
    const auto equal = [](auto first, auto second) {
        constexpr bool firstIsNumber = std::is_same_v<decltype(first), double>;
        constexpr bool secondIsNumber = std::is_same_v<decltype(second), double>;
        if constexpr (firstIsNumber && secondIsNumber)
            return first == second;
        else if constexpr (firstIsNumber)
            return isExactly(first, second);
        else if constexpr (secondIsNumber)
            return isExactly(second, first);
        else
            return std::cmp_equal(first, second);
    };
    const auto visitNumeric = [](const Value& value, const auto& visit) {
        if (const auto* number = std::get_if<double>(&value._value)) return visit(*number);
        if (const auto* whole = std::get_if<std::uint64_t>(&value._value)) return visit(*whole);
        return visit(value.asInteger());
    };
    return visitNumeric(left, [&](auto first) {
        return visitNumeric(right, [&](auto second) { return equal(first, second); });
    });
}

const Value& valueForKey(const Dictionary& dictionary, std::string_view key) {
    static const auto& none = *new Value;
    const auto found = dictionary.find(key);
    return found == dictionary.end() ? none : found->second;
}

}  // namespace zornic

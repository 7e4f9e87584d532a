#pragma once

#include <cstdint>
#include <string>

#include "Platform/Foundation/Value.h"

namespace zornic {

/** What went wrong, for an alert. A value. */
class Error {
public:
    static constexpr const char* LocalizedDescriptionKey = "LocalizedDescription";
    static constexpr const char* LocalizedFailureReasonKey = "LocalizedFailureReason";

    Error(std::string domain, std::int64_t code, Dictionary userInfo = {})
        : _domain(std::move(domain)), _code(code), _userInfo(std::move(userInfo)) {}

    const std::string& domain() const { return _domain; }
    std::int64_t code() const { return _code; }
    const Dictionary& userInfo() const { return _userInfo; }
    /** The user info's text, or domain and code. */
    std::string localizedDescription() const;
    /** The user info's text; empty when there is none. */
    std::string localizedFailureReason() const;

private:
    std::string _domain;
    std::int64_t _code;
    Dictionary _userInfo;
};

}  // namespace zornic
